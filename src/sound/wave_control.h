// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/effects/sound_shape.h"
#include "sound/wave_timeline.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

// Volume, shape and peak meter of everything that this process plays. From any thread.

namespace ov::sound {

constexpr std::uint32_t fullVolume = 65535;

class WaveControl {
public:
    static WaveControl& instance();

    // 0 to fullVolume, linear.
    std::uint32_t volume() const noexcept { return volume_.load(std::memory_order_relaxed); }
    void setVolume(std::uint32_t volume) noexcept { volume_.store(volume); }

    // A boost beyond what it may be is moved to its bound.
    SoundShape shape() const noexcept;
    void setShape(const SoundShape& shape) noexcept;

    // Of all timelines that are there, over the last 50 ms: -32768 to 32767.
    std::int32_t peak();
    void add(const WaveTimeline& timeline);
    void remove(const WaveTimeline& timeline);

private:
    std::atomic<std::uint32_t> volume_{fullVolume};
    std::atomic<int> boost_{SoundShape::usualBoost};
    std::atomic<bool> evensOut_{false};
    std::atomic<bool> cutsRumble_{false};
    std::atomic<bool> skipsSilence_{false};
    std::mutex mutex_;
    std::vector<const WaveTimeline*> timelines_;
};

} // namespace ov::sound
