// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "sound/format/wave_header.h"
#include "tests/temporary_store.h"

#include <gtest/gtest.h>

#include <sstream>

namespace ov::sound {
namespace {

std::string little(std::uint32_t number, int bytes) {
    std::string all;
    for (int i = 0; i < bytes; ++i)
        all.push_back(static_cast<char>(number >> (8 * i)));
    return all;
}

std::string chunk(const char* name, const std::string& content, std::uint32_t more = 0) {
    const auto size = static_cast<std::uint32_t>(content.size());
    return name + little(size + more, 4) + content + std::string(size % 2, '\0');
}

// `behind` follows the bits of a sample.
std::string format(std::uint32_t tag, const std::string& behind = {}) {
    return chunk("fmt ", little(tag, 2) + little(2, 2) + little(0x12345, 4) + little(0xABCDE, 4) +
                             little(0x104, 2) + little(0x10, 2) + behind);
}

// Tag, channels, rate, bytes per second, size of a block, bits, frames of a block; size and place
// of the data.
std::string shown(const std::optional<WaveHeader>& header) {
    if (!header)
        return "none";
    std::ostringstream text;
    text << header->formatTag << " " << header->channels << " " << header->rate << " "
         << header->bytesPerSecond << " " << header->blockSize << " " << header->bitsPerSample
         << " " << header->framesPerBlock << ", " << header->dataSize << " at "
         << header->dataStart;
    return text.str();
}

TEST(WaveHeader, SaysWhatIsWritten) {
    const std::string riff = "RIFF" + little(99, 4) + "WAVE";
    const std::string data = chunk("data", "sound");
    const std::string usual = "2 74565 703710 260 16 0, 5 at ";
    std::string empty;
    for (int i = 0; i < 998; ++i)
        empty += chunk("junk", "");
    const std::string guid = little(22, 2) + little(16, 2) + little(3, 4) + little(0x55, 2);
    const std::pair<std::string, std::string> cases[] = {
        {riff + format(1) + data, "1 " + usual + "44"},
        {riff + format(0x11, little(2, 2) + little(505, 2)) + data,
         "17 2 74565 703710 260 16 505, 5 at 48"},
        {riff + format(0xFFFE, guid + std::string(14, 'x')) + data, "85 " + usual + "68"},
        {riff + chunk("JUNK", "odd") + format(1) + data, "1 " + usual + "56"},
        {riff + chunk("fmt ", little(7, 2) + little(1, 2)) + data, "7 1 0 0 0 0 0, 5 at 32"},
        {riff + format(1) + format(2) + data, "2 " + usual + "68"},
        {riff + format(1) + chunk("data", "", 0xFFFFFFFF),
         "1 2 74565 703710 260 16 0, 4294967295 at 44"},
        {riff + empty + format(1) + data, "1 " + usual + "8028"},
        {riff + chunk("junk", "") + empty + format(1) + data, "none"},
        {riff + format(1) + "data" + little(5, 3), "none"},
        {riff + data + format(1), "none"},
        {riff + format(1), "none"},
        {riff + chunk("fmt ", little(1, 2) + little(0, 2)) + data, "none"},
        {"RIFX" + riff.substr(4) + format(1) + data, "none"},
        {riff.substr(0, 8) + "WAVY" + format(1) + data, "none"},
        {"", "none"}};
    tests::TemporaryStore store;
    for (const auto& [bytes, expected] : cases) {
        store.add("f.wav", bytes);
        const auto file = platform::ReadableFile::open(store.path("f.wav"));
        ASSERT_TRUE(file);
        EXPECT_EQ(shown(readWaveHeader(*file)), expected);
    }
    EXPECT_EQ(shown(readWaveHeader({})), "none");
}

} // namespace
} // namespace ov::sound
