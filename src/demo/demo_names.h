// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "demo/dice.h"
#include "demo/name_encoding.h"
#include "platform/locale.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

// Made-up dictation names, for the demo store and for the big stores of the measurements.

namespace ov::demo {

// What a department dictates about, and in which language.
enum class DemoTrade : std::uint8_t {
    medicalGerman,
    legalGerman,
    medicalEnglish,
    legalEnglish,
};

struct DemoName {
    std::string fileName; // with its ending, at most 255 bytes
    int seconds = 0;      // 3 to 40; what field 6 says
    std::chrono::sys_days dictated;
    std::chrono::days age{}; // from then to today
    std::string_view author; // one spelling for each; empty when the name carries none
};

// Gives one name after the other, no two the same. Every priority is there, "HOCH" in one name
// of five; "Öztürk" is the author of one name in fifty; dictations date from the last nine
// weeks, due dates from last week to seven weeks ahead. The first `showcaseCount` names
// carry every escape between them.
class DemoNames {
public:
    static constexpr int showcaseCount = 6;

    // Only the day of `today` counts.
    DemoNames(std::uint32_t seed, const platform::DateTime& today);

    DemoName next(DemoTrade trade);

private:
    void addState(modDictation::DictationNameBuilder& name);
    void addTimes(modDictation::DictationNameBuilder& name, const DemoName& result);
    void addAuthor(modDictation::DictationNameBuilder& name, DemoName& result, DemoTrade trade,
                   bool rare);
    void addOffice(modDictation::DictationNameBuilder& name, bool english);
    std::string dateText(std::chrono::sys_days day, int hour);

    Dice dice_;
    int year_;
    std::chrono::sys_days today_;
    int count_ = 0;
};

} // namespace ov::demo
