// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/format/wave_header.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <span>

namespace ov::sound {

namespace {

constexpr std::size_t chunkHeaderSize = 8;
constexpr std::int64_t firstChunk = 12;
constexpr int mostChunks = 1000; // a file of empty chunks shall not keep us
constexpr std::uint16_t extensible = 0xFFFE;

// Bytes past the end are zero.
template <std::size_t Size>
struct Bytes {
    std::array<unsigned char, Size> bytes{};
    std::size_t read = 0;

    Bytes(const platform::ReadableFile& file, std::int64_t position,
          std::size_t wanted = Size) noexcept {
        const std::int64_t got = file.read(bytes.data(), std::min(wanted, Size), position);
        read = static_cast<std::size_t>(std::max<std::int64_t>(got, 0));
    }
    bool startsWith(const char (&name)[5], std::size_t at = 0) const noexcept {
        return std::memcmp(bytes.data() + at, name, 4) == 0;
    }
    std::uint16_t word(std::size_t at) const noexcept {
        return static_cast<std::uint16_t>(bytes[at] | (bytes[at + 1] << 8U));
    }
    std::uint32_t number(std::size_t at) const noexcept {
        return word(at) | (static_cast<std::uint32_t>(word(at + 2)) << 16U);
    }
};

void readFormat(const platform::ReadableFile& file, std::int64_t position, std::uint32_t size,
                WaveHeader& header) noexcept {
    const Bytes<40> format(file, position, size);
    header.formatTag = format.word(0);
    header.channels = format.word(2);
    header.rate = format.number(4);
    header.bytesPerSecond = format.number(8);
    header.blockSize = format.word(12);
    header.bitsPerSample = format.word(14);
    if (header.formatTag == extensible)
        header.formatTag = format.word(24);
    else
        header.framesPerBlock = format.word(18);
}

} // namespace

std::optional<WaveHeader> readWaveHeader(const platform::ReadableFile& file) noexcept {
    const Bytes<firstChunk> start(file, 0);
    if (!start.startsWith("RIFF") || !start.startsWith("WAVE", 8))
        return std::nullopt;
    WaveHeader header;
    std::int64_t position = firstChunk;
    for (int i = 0; i < mostChunks; ++i) {
        const Bytes<chunkHeaderSize> chunk(file, position);
        if (chunk.read < chunkHeaderSize)
            return std::nullopt;
        const std::uint32_t size = chunk.number(4);
        position += chunkHeaderSize;
        if (chunk.startsWith("data")) {
            header.dataSize = size;
            header.dataStart = position;
            return header.channels > 0 ? std::optional(header) : std::nullopt;
        }
        if (chunk.startsWith("fmt "))
            readFormat(file, position, size, header);
        position += static_cast<std::int64_t>(size) + (size & 1U);
    }
    return std::nullopt;
}

} // namespace ov::sound
