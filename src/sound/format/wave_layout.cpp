// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/format/wave_layout.h"

#include <algorithm>
#include <cmath>

namespace ov::sound {

namespace {

// Units of that format in a byte.
double unitsPerByte(const WaveLayout& layout, TimeFormat format) noexcept {
    switch (format) {
    case TimeFormat::milliseconds:
        return 1000.0 / layout.bytesPerSecond;
    case TimeFormat::samples:
        return static_cast<double>(layout.rate) / layout.bytesPerSecond;
    case TimeFormat::bytes:
        break;
    }
    return 1;
}

} // namespace

std::int64_t WaveLayout::toUnits(double frame, TimeFormat format) const noexcept {
    return std::llround(bytesOf(frame) * unitsPerByte(*this, format));
}

double WaveLayout::fromUnits(std::int64_t value, TimeFormat format) const noexcept {
    if (value >= toUnits(length, format))
        return length;
    const double bytes = static_cast<double>(value) / unitsPerByte(*this, format);
    const double blocks = std::round(bytes) / blockSize;
    // What was told in a rounded unit shall lead back to its block.
    const double block = format == TimeFormat::bytes ? std::floor(blocks) : std::ceil(blocks - 0.5);
    return std::clamp(block * framesPerBlock, 0.0, length);
}

} // namespace ov::sound
