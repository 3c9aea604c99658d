// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The signs of the quick form, see quick_text.h.

namespace ov::modDictation {

// Where one of the characters `sought` stands outside of quotes; npos when none does. A quote
// counts where a text may begin: in front, and behind one of : , = < > ! . - and blanks.
std::size_t findUnquoted(std::string_view text, std::string_view sought, std::size_t from = 0);

// The text between the quotes that `text` begins with, two of which stand for one. Nothing when
// they are not closed.
struct QuotedText {
    std::string text;
    std::size_t end = 0; // behind the closing one
};
std::optional<QuotedText> readQuoted(std::string_view text);

enum class Comparison : std::uint8_t { none, equal, less, atMost, more, atLeast };
// Takes it and blanks behind it off the text.
Comparison takeComparison(std::string_view& text);

// Takes "-" or "!" off a word of more than that.
bool takeNegation(std::string_view& word);

// "author" of "author:müller"; empty where a word does not begin like that.
std::string_view fieldNameOf(std::string_view word);

} // namespace ov::modDictation
