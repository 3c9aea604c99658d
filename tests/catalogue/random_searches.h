// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/dictation_record.h"
#include "tests/catalogue/catalogue_fixture.h"

namespace ov::catalogue {

inline const Texts values = [] {
    const std::vector<Texts> kinds = {
        {"", "Müller", "müller", "MU\xCC\x88LLER", "Mu", "O'Brien", "\"x\""},
        {"%", "_", "~a_b", "a%b", "'; DROP TABLE names;--", "x'00'", "\xFC\xE4", "\\", "?", "*",
         "@"},
        {"0", "1", "2", "3", "5", "-5", "7", "384", "1024", "99999999999"},
        {"D", "d", "ROH", "roh", "WAV", "MAI", "hoch", "HOCH", "NORMAL", "FRIST"},
        {"00$02$15", "00:00:00", "1$61$0"},
        {"21-11-2026", "21.11.2026 10$00$00", "22!!11!!2026", "46347", "2026-11-21", "31-12-1899",
         "01-01-0099", " 21-11-2026 "},
        {"Straße", "ſ", "ı", "İ", "²²x³³", "\xE2\x80\xAEgnirts", "\xEF\xBF\xBF"},
        {std::string(90, 'x'), std::string(90, 'x') + "y"}};
    Texts all;
    for (const Texts& kind : kinds)
        all.insert(all.end(), kind.begin(), kind.end());
    return all;
}();

class Random {
public:
    explicit Random(std::uint32_t seed) : random_(seed) {}

    int below(int end) { return static_cast<int>(random_() % static_cast<std::uint32_t>(end)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool rarely() { return below(6) == 0; }
    const std::string& value() {
        return values[static_cast<std::size_t>(below(static_cast<int>(values.size())))];
    }

    // A name as no program would write it, and some that they do.
    std::string name(int number) {
        std::string name = rarely() ? "" : "2$" + value();
        for (int i = between(0, 9); i > 0; --i)
            name.append(rarely() ? "@@@" : "@@")
                .append(tag())
                .append(rarely() ? "" : "$")
                .append(value());
        std::erase(name, '/');
        name.resize(std::min<std::size_t>(name.size(), 240));
        return name + std::to_string(number) + (rarely() ? ".wav" : ".WAV");
    }
    // Of a criterion: mostly something that a field may hold, or a code.
    std::string asked() {
        static const Texts meant = {"2026-11-21", "2026-11-22", "1899-12-31",
                                    "2027-01-01", "00:02:15",   "00:00:00",
                                    "1:00:00",    "müller",     {"M\0r", 3}};
        if (rarely())
            return std::to_string(between(0, 20));
        return below(2) == 0
                   ? value()
                   : meant[static_cast<std::size_t>(below(static_cast<int>(meant.size())))];
    }
    modDictation::Criterion criterion() {
        return {between(-1, modDictation::searchFieldCount), between(0, 34), asked(), asked(),
                below(3) == 0};
    }
    Search search(const std::string& root) {
        Search what{root,
                    {},
                    below(3) != 0,
                    rarely() ? between(0, 2) : -1,
                    rarely() ? between(1, 9) : 999999};
        for (int i = between(0, 4); i > 0; --i)
            what.criteria.push_back(criterion());
        return what;
    }

private:
    std::string tag() {
        static const Texts tags = {"3",  "4",  "5",  "6",  "7",  "8",   "9",  "10", "11",
                                   "12", "13", "14", "16", "17", "20",  "91", "92", "95",
                                   "98", "99", "23", "2",  "05", "117", "0",  ""};
        return tags[static_cast<std::size_t>(below(static_cast<int>(tags.size())))];
    }

    std::mt19937 random_;
};

inline std::string told(const Search& what) {
    std::string text = (what.all ? "all" : "any") + (" depth " + std::to_string(what.depth)) +
                       " limit " + std::to_string(what.limit) + " in " + what.root;
    for (const modDictation::Criterion& one : what.criteria)
        text.append("\n  ")
            .append(one.indented ? "| " : "")
            .append(
                modDictation::BuildCriteriaString(one.Field, one.Operator, one.Value1, one.Value2));
    return text;
}

} // namespace ov::catalogue
