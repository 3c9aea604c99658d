// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/search/criterion.h"
#include "platform/locale.h"

#include <string>
#include <string_view>
#include <vector>

namespace ov::modDictation {

// What somebody types to narrow a list, parted by blanks.
struct FilterWords {
    std::vector<std::string> shown;  // that a row must show, in upper case
    std::vector<Criterion> criteria; // that its dictation must meet, all of them, with their groups
};

// A word of the quick form that names a field, as "prio:high", is a criterion once it can be
// understood; while nothing stands behind the ":" it says nothing, since somebody is typing. Every
// other word is one that is shown.
FilterWords filterWords(std::string_view text, const platform::DateTime& now);

// Whether what meets `criteria` also meets `wider`, as far as can be told at once.
bool narrow(const std::vector<Criterion>& criteria, const std::vector<Criterion>& wider);

} // namespace ov::modDictation
