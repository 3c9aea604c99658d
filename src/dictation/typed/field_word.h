// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ov::modDictation {

// The field that a word names, in any letter case: a key of the field table, a caption of one word
// as lists show it in the user's language, or the first letters, two or more, of one key alone:
// "prio". Where keys begin with another one that is meant: "auth" is author, not author-code.
// noField when there is none.
std::int32_t fieldOfWord(std::string_view word);

// Why there is none, with what was probably meant.
std::string unknownField(std::string_view word);

} // namespace ov::modDictation
