// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/readable_file.h"

#include <cstdint>
#include <optional>

// What the header of a RIFF sound file says of itself, true or not.

namespace ov::sound {

struct WaveHeader {
    std::uint16_t formatTag = 0; // 1 is PCM; of an extensible header its sub-format
    std::uint16_t channels = 0;
    std::uint32_t rate = 0; // frames per second
    std::uint32_t bytesPerSecond = 0;
    std::uint16_t blockSize = 0; // bytes; frames are packed in blocks of this size
    std::uint16_t bitsPerSample = 0;
    std::uint16_t framesPerBlock = 0; // 0 when it does not say
    std::uint32_t dataSize = 0;       // bytes, as written there
    std::int64_t dataStart = 0;       // byte of the file
};

// Reads the first "fmt " and "data" chunks. Nothing for what is no RIFF file or lacks one of them,
// or has more chunks than anybody writes before the data.
std::optional<WaveHeader> readWaveHeader(const platform::ReadableFile& file) noexcept;

} // namespace ov::sound
