// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/wave_files.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace ov::tests {

// Compares what is seen with what somebody has looked through, a file below tests/.
// OV_KEEP_LOOKS=1 writes that file anew; read what changed before it goes in.
inline void expectLookedThrough(const std::string& now, const std::string& file) {
    constexpr const char* lookedThroughIn = "6.4."; // others draw and name some things otherwise
    if (!QByteArray(qVersion()).startsWith(lookedThroughIn))
        GTEST_SKIP() << "they were looked through in Qt " << lookedThroughIn;
    const std::string kept = OV_SOURCE_DIR "/tests/" + file;
    if (std::getenv("OV_KEEP_LOOKS") != nullptr)
        std::ofstream(kept, std::ios::binary) << now;
    std::istringstream is(now);
    std::istringstream was(readBytes(kept));
    std::string line;
    std::string before;
    for (int number = 1; std::getline(is, line) && std::getline(was, before); ++number)
        ASSERT_EQ(line, before) << "line " << number;
    EXPECT_EQ(now, readBytes(kept)) << "of another length";
}

} // namespace ov::tests
