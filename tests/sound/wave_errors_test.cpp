// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is said of each answer, against recorded texts, data/media_errors.txt.

#include "sound/device/wave_devices.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <map>
#include <string>

namespace ov::sound {
namespace {

TEST(WaveDevices, TellsWhatEachCodeMeans) {
    WaveDevices devices;
    std::map<std::uint32_t, std::string> known;
    std::ifstream file(OV_SOURCE_DIR "/tests/data/media_errors.txt");
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with(';'))
            known[static_cast<std::uint32_t>(std::stoul(line))] = line.substr(4);
    for (std::uint32_t code = 0; code <= 600; ++code) {
        std::array<char, 256> text{"as before"};
        EXPECT_EQ(devices.getErrorString(code, text), known.contains(code)) << code;
        EXPECT_EQ(text.data(), known.contains(code) ? known[code] : "as before");
    }
}

} // namespace
} // namespace ov::sound
