// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/search/criterion.h"
#include "platform/locale.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ov::modDictation {

// How a filter was understood that somebody may still be typing.
struct FilterReading {
    std::string text;                 // what filters, as typed
    std::vector<std::string> leftOut; // what cannot be read, as typed
    bool isTooLong = false;           // more than mostCriteria: all of it is left out
};

// What somebody types to narrow a list.
struct FilterWords {
    // That rows must meet, all of them, with their groups: by what they show where the field is
    // `shownTexts`, else as searches test dictations. Texts are in upper case.
    std::vector<Criterion> criteria;
    FilterReading reading;
};

// The quick form of criteria, see QuickRules::filtersRows in quick_text.h.
FilterWords filterWords(std::string_view text, const platform::DateTime& now);

// Criteria of which one is enough, in their order.
std::vector<std::span<const Criterion>> groupsOf(std::span<const Criterion> criteria);

// Whether what meets `criteria` also meets `wider`, as far as can be told at once.
bool narrow(const std::vector<Criterion>& criteria, const std::vector<Criterion>& wider);

} // namespace ov::modDictation
