// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// How places in a sound file are counted. Inside, a place is a frame, with a fraction where the
// data end in the middle of a block. Outside it is milliseconds, samples or bytes of the data,
// the first two being counted from bytes at the header's average rate.

namespace ov::sound {

enum class TimeFormat : std::uint8_t { milliseconds, samples, bytes };

struct WaveLayout {
    std::uint16_t formatTag = 1;
    int channels = 1;
    int rate = 8000; // frames per second
    int bitsPerSample = 16;
    std::uint32_t bytesPerSecond = 16000;
    std::uint32_t blockSize = 2;
    double framesPerBlock = 1;
    double length = 0; // frames, as the header has it

    double bytesOf(double frame) const noexcept { return frame / framesPerBlock * blockSize; }

    // Rounded to the nearest unit.
    std::int64_t toUnits(double frame, TimeFormat format) const noexcept;

    // The start of a block within the file: of the one that holds that byte, or, of the rounded
    // units, the nearest; a half goes down.
    double fromUnits(std::int64_t value, TimeFormat format) const noexcept;
};

} // namespace ov::sound
