// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ov::modDictation {

// The word that was probably meant: one of `words` that is the same but for letter case and a
// letter in three that is wrong, missing, too many or has changed places. Empty when none is.
std::string similarWord(std::string_view typed, std::span<const std::string> words);

} // namespace ov::modDictation
