// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/mixer.h"

#include <cstdint>
#include <string>
#include <string_view>

// Volume and level of wave playback, through the platform's mixer (sound/mixer.h).
//
// Set DefaultMixerName, then call Init_MixerControl, then Init_VolumeControl and
// Init_VUMeterControl; after that bounds and values mean something. Nothing raises: failures are
// false or 0. Used from one thread.

namespace ov {

class clsMixer {
public:
    clsMixer() = default;
    ~clsMixer();
    clsMixer(const clsMixer&) = delete;
    clsMixer& operator=(const clsMixer&) = delete;

    // Opens the device of that name, letter case ignored, or the first one when there is none or
    // no name was set. False when there is no device. The device stays open for the life of the
    // process.
    bool Init_MixerControl();
    // Within the bounds of the volume; the mixer refuses other values.
    bool SetVolumeValue(std::int32_t value) const;

    std::int32_t VUMeterMaximum() const noexcept { return peakMeterBounds_.maximum; }
    std::int32_t VolumeMaximum() const noexcept { return volumeBounds_.maximum; }
    std::int32_t VUMeterMinimum() const noexcept { return peakMeterBounds_.minimum; }
    std::int32_t VolumeMinimum() const noexcept { return volumeBounds_.minimum; }

    std::int32_t GetVolumeValue();
    // Signed: the level is its magnitude.
    std::int32_t GetVUMeterValue();

    // Find the control on the wave-output line, else on that of the speakers.
    bool Init_VolumeControl();
    bool Init_VUMeterControl();

    // Of the open device, "" before.
    const std::string& CurrentMixerName() const noexcept { return currentMixerName_; }
    const std::string& DefaultMixerName() const noexcept { return defaultMixerName_; }
    void DefaultMixerName(std::string_view name) { defaultMixerName_ = name; }

private:
    struct Bounds {
        std::int32_t minimum = 0;
        std::int32_t maximum = 0;
    };

    void openDefault();
    void prepareDetails();
    bool findControl(std::uint32_t component, std::uint32_t type,
                     sound::MixerControl& control) const;
    bool initControl(std::uint32_t type, sound::MixerControl& control, Bounds& bounds) const;
    std::int32_t value(const sound::MixerControl& control);

    std::string defaultMixerName_;
    std::string currentMixerName_;
    sound::MixerHandle handle_ = 0;
    sound::MixerControl volume_;
    sound::MixerControl peakMeter_;
    Bounds volumeBounds_;
    Bounds peakMeterBounds_;
    sound::MixerControlDetails details_; // for reading values
};

} // namespace ov
