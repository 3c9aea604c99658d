// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/device/wave_mixer.h"

#include "sound/wave_control.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace ov::sound {

namespace {

constexpr MixerHandle onlyHandle = 0x1000; // no number of a device
constexpr std::uint32_t lineId = 1;
constexpr std::uint32_t volumeId = 1;
constexpr std::uint32_t peakMeterId = 2;
constexpr std::uint32_t active = 1;
constexpr std::uint32_t sourceLine = 0x80000000;
constexpr std::uint32_t uniform = 1; // one value for all channels
constexpr std::uint32_t volumeSteps = 192;

template <std::size_t Size>
void setName(std::array<char, Size>& field, std::string_view name) noexcept {
    field = {};
    std::copy_n(name.begin(), std::min(name.size(), Size - 1), field.begin());
}

bool isHandle(MixerHandle handle) noexcept {
    return handle == onlyHandle;
}

MixerControl volumeControl() noexcept {
    MixerControl control;
    control.size = smallestControlSize;
    control.id = volumeId;
    control.type = mixer_control::volume;
    control.flags = uniform;
    setName(control.shortName, "Volume");
    setName(control.name, "Volume");
    control.maximum = fullVolume;
    control.steps = volumeSteps;
    return control;
}

MixerControl peakMeterControl() noexcept {
    MixerControl control;
    control.size = smallestControlSize;
    control.id = peakMeterId;
    control.type = mixer_control::peakMeter;
    control.flags = uniform;
    setName(control.shortName, "Level");
    setName(control.name, "Peak meter");
    control.minimum = -32768;
    control.maximum = 32767;
    return control;
}

} // namespace

std::uint32_t WaveMixer::getNumDevs() {
    return 1;
}

std::uint32_t WaveMixer::open(MixerHandle& handle, std::uint32_t device, std::uint32_t /*callback*/,
                              std::uint32_t /*instance*/, std::uint32_t /*flags*/) {
    if (device >= getNumDevs())
        return mixer_result::badDevice;
    handle = onlyHandle;
    return mixer_result::success;
}

std::uint32_t WaveMixer::getDevCaps(MixerHandle handle, MixerCaps& caps, std::uint32_t size) {
    if (!isHandle(handle) && handle >= getNumDevs())
        return mixer_result::badDevice;
    if (size < sizeof caps)
        return mixer_result::invalidParameter;
    caps = {};
    caps.driverVersion = 0x100;
    caps.destinations = 1;
    setName(caps.name, "OVSearch");
    return mixer_result::success;
}

std::uint32_t WaveMixer::getLineInfo(MixerHandle handle, MixerLine& line, std::uint32_t flags) {
    if (!isHandle(handle))
        return mixer_result::invalidHandle;
    if (line.size < sizeof line || flags != mixer_flag::lineByComponent)
        return mixer_result::invalidParameter;
    if (line.component != mixer_line::waveOutput)
        return mixer_result::invalidLine;
    const std::uint32_t size = line.size;
    line = {};
    line.size = size;
    line.line = lineId;
    line.state = active | sourceLine;
    line.component = mixer_line::waveOutput;
    line.channels = 1;
    line.controls = 2;
    line.targetType = 1; // wave output
    setName(line.shortName, "Wave");
    setName(line.name, "Wave output");
    setName(line.targetName, "OVSearch");
    return mixer_result::success;
}

std::uint32_t WaveMixer::getLineControls(MixerHandle handle, MixerLineControls& controls,
                                         std::uint32_t flags) {
    if (!isHandle(handle))
        return mixer_result::invalidHandle;
    if (controls.size < sizeof controls || controls.controlSize < smallestControlSize ||
        controls.count != 1 || flags != mixer_flag::oneByType)
        return mixer_result::invalidParameter;
    if (controls.line != lineId)
        return mixer_result::invalidLine;
    const bool isVolume = controls.controlType == mixer_control::volume;
    if (!isVolume && controls.controlType != mixer_control::peakMeter)
        return mixer_result::invalidControl;
    const MixerControl control = isVolume ? volumeControl() : peakMeterControl();
    std::byte* block = blockOf(controls.controls, smallestControlSize);
    if (block == nullptr)
        return mixer_result::invalidParameter;
    std::memcpy(block, &control, smallestControlSize);
    return mixer_result::success;
}

std::uint32_t WaveMixer::checkDetails(MixerHandle handle, const MixerControlDetails& details) {
    if (!isHandle(handle))
        return mixer_result::invalidHandle;
    if (details.control != volumeId && details.control != peakMeterId)
        return mixer_result::invalidControl;
    const bool fits = details.size >= sizeof details && details.channels <= 1 &&
                      details.detailSize >= sizeof(std::int32_t) &&
                      blockOf(details.details, sizeof(std::int32_t)) != nullptr;
    return fits ? mixer_result::success : mixer_result::invalidParameter;
}

std::uint32_t WaveMixer::getControlDetails(MixerHandle handle, MixerControlDetails& details,
                                           std::uint32_t /*flags*/) {
    if (const std::uint32_t wrong = checkDetails(handle, details); wrong != mixer_result::success)
        return wrong;
    WaveControl& control = WaveControl::instance();
    const std::int32_t value =
        details.control == volumeId ? static_cast<std::int32_t>(control.volume()) : control.peak();
    std::memcpy(blockOf(details.details, sizeof value), &value, sizeof value);
    return mixer_result::success;
}

std::uint32_t WaveMixer::setControlDetails(MixerHandle handle, MixerControlDetails& details,
                                           std::uint32_t /*flags*/) {
    if (const std::uint32_t wrong = checkDetails(handle, details); wrong != mixer_result::success)
        return wrong;
    if (details.control != volumeId)
        return mixer_result::notSupported;
    std::uint32_t value = 0;
    std::memcpy(&value, blockOf(details.details, sizeof value), sizeof value);
    if (value > fullVolume)
        return mixer_result::invalidParameter;
    WaveControl::instance().setVolume(value);
    return mixer_result::success;
}

std::uint32_t WaveMixer::close(MixerHandle handle) {
    return isHandle(handle) ? mixer_result::success : mixer_result::invalidHandle;
}

MemoryHandle WaveMixer::globalAlloc(std::uint32_t /*flags*/, std::uint32_t bytes) {
    const std::lock_guard<std::mutex> lock(mutex_);
    blocks_[++lastBlock_].resize(bytes);
    return lastBlock_;
}

std::byte* WaveMixer::globalLock(MemoryHandle block) {
    return blockOf(block, 0);
}

void WaveMixer::globalFree(MemoryHandle block) {
    const std::lock_guard<std::mutex> lock(mutex_);
    blocks_.erase(block);
}

// nullptr when there is no such block or it is too small.
std::byte* WaveMixer::blockOf(MemoryHandle block, std::size_t bytes) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = blocks_.find(block);
    return found != blocks_.end() && found->second.size() >= bytes ? found->second.data() : nullptr;
}

MixerCalls& systemMixerCalls() {
    static WaveMixer mixer;
    return mixer;
}

} // namespace ov::sound
