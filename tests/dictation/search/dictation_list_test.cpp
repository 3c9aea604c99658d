// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/dictation_list.h"

#include <gtest/gtest.h>

namespace ov::modDictation {
namespace {

TEST(DictationList, FindsEachHitByItsPath) {
    DictationList list;
    const std::pair<const char*, const char*> hits[] = {
        {"\\a\\", "1.WAV"},
        {"\\a\\", "2.WAV"},
        {"\\b\\", "1.WAV"},
        {"\\a\\", "3.WAV"}, // met again after the folders in it
        {"", "4.WAV"}};
    for (const auto& [directory, name] : hits)
        list.add(directory, name);
    for (std::int32_t i = 1; i <= list.size(); ++i)
        EXPECT_EQ(list.find(list[i]), i);
    for (const char* missing :
         {"", "\\a\\", "\\a\\4.WAV", "\\b\\2.WAV", "\\c\\1.WAV", "\\a\\1.WA", "1.WAV"})
        EXPECT_EQ(list.find(dictationOfPath(missing)), 0) << missing;
}

} // namespace
} // namespace ov::modDictation
