// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ov::cli {

// `; did you mean "find"?` of the word that was probably meant, or `otherwise`.
std::string didYouMean(std::string_view typed, std::span<const std::string> known,
                       const std::string& otherwise = {});

} // namespace ov::cli
