// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/clsMixer.h"

#include "platform/text.h"

#include <cstring>

namespace ov {

using namespace sound;

namespace {

constexpr std::uint32_t fixedMemory = 0;
constexpr std::uint32_t zeroedMemory = 0x40;
constexpr std::uint32_t valueSize = sizeof(std::int32_t);

MixerControlDetails detailsFor(std::uint32_t control, MemoryHandle block) {
    MixerControlDetails details;
    details.size = sizeof details;
    details.control = control;
    details.channels = 1;
    details.detailSize = valueSize;
    details.details = block;
    return details;
}

std::string nameOfDevice(MixerHandle handle) {
    MixerCaps caps;
    if (mixerCalls().getDevCaps(handle, caps, sizeof caps) != mixer_result::success)
        return {};
    const std::string_view name(caps.name.data(), caps.name.size());
    return std::string(platform::trimmed(name.substr(0, name.find('\0')), ' '));
}

MixerHandle openDevice(std::uint32_t device) {
    MixerHandle handle = 0;
    const bool opened = mixerCalls().open(handle, device, 0, 0, 0) == mixer_result::success;
    return opened ? handle : 0;
}

} // namespace

clsMixer::~clsMixer() {
    if (details_.details != 0)
        mixerCalls().globalFree(details_.details);
}

void clsMixer::openDefault() {
    const std::uint32_t count = defaultMixerName_.empty() ? 0 : mixerCalls().getNumDevs();
    for (std::uint32_t device = 0; device < count; ++device) {
        const MixerHandle candidate = openDevice(device);
        if (candidate == 0)
            continue;
        if (platform::equalsIgnoringCase(nameOfDevice(candidate), defaultMixerName_)) {
            handle_ = candidate;
            return;
        }
        mixerCalls().close(candidate);
    }
    handle_ = openDevice(0);
}

void clsMixer::prepareDetails() {
    if (details_.details == 0)
        details_ = detailsFor(0, mixerCalls().globalAlloc(fixedMemory, valueSize));
    mixerCalls().globalLock(details_.details);
}

bool clsMixer::Init_MixerControl() {
    openDefault();
    if (handle_ == 0)
        return false;
    currentMixerName_ = nameOfDevice(handle_);
    prepareDetails();
    return true;
}

bool clsMixer::findControl(std::uint32_t component, std::uint32_t type,
                           MixerControl& control) const {
    MixerLine line;
    line.size = sizeof line;
    line.component = component;
    if (mixerCalls().getLineInfo(handle_, line, mixer_flag::lineByComponent) !=
        mixer_result::success)
        return false;

    control.size = sizeof control;
    const MemoryHandle block = mixerCalls().globalAlloc(fixedMemory, sizeof control);
    MixerLineControls controls{sizeof controls, line.line, type, 1, sizeof control, block};
    const std::byte* bytes = mixerCalls().globalLock(block);
    const bool found = mixerCalls().getLineControls(handle_, controls, mixer_flag::oneByType) ==
                           mixer_result::success &&
                       bytes != nullptr;
    if (found)
        std::memcpy(&control, bytes, sizeof control);
    mixerCalls().globalFree(block);
    return found;
}

bool clsMixer::initControl(std::uint32_t type, MixerControl& control, Bounds& bounds) const {
    bounds = {};
    if (!findControl(mixer_line::waveOutput, type, control) &&
        !findControl(mixer_line::speakers, type, control))
        return false;
    bounds = {control.minimum, control.maximum};
    return true;
}

bool clsMixer::Init_VolumeControl() {
    return initControl(mixer_control::volume, volume_, volumeBounds_);
}

bool clsMixer::Init_VUMeterControl() {
    return initControl(mixer_control::peakMeter, peakMeter_, peakMeterBounds_);
}

bool clsMixer::SetVolumeValue(std::int32_t value) const {
    if (handle_ == 0)
        return false;
    const MemoryHandle block = mixerCalls().globalAlloc(zeroedMemory, valueSize);
    MixerControlDetails details = detailsFor(volume_.id, block);
    std::byte* bytes = mixerCalls().globalLock(block);
    bool set = bytes != nullptr;
    if (set) {
        std::memcpy(bytes, &value, valueSize);
        set = mixerCalls().setControlDetails(handle_, details, mixer_flag::value) ==
              mixer_result::success;
    }
    mixerCalls().globalFree(block);
    return set;
}

std::int32_t clsMixer::value(const MixerControl& control) {
    if (handle_ == 0)
        return 0;
    details_.control = control.id;
    details_.multipleItems = control.multipleItems;
    if (mixerCalls().getControlDetails(handle_, details_, mixer_flag::value) !=
        mixer_result::success)
        return 0;
    std::int32_t number = 0;
    if (const std::byte* bytes = mixerCalls().globalLock(details_.details))
        std::memcpy(&number, bytes, valueSize);
    return number;
}

std::int32_t clsMixer::GetVolumeValue() {
    return value(volume_);
}

std::int32_t clsMixer::GetVUMeterValue() {
    return value(peakMeter_);
}

} // namespace ov
