// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/quick_lexer.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ov::modDictation {

namespace {

constexpr std::array<std::pair<std::string_view, Comparison>, 5> comparisons = {
    {{">=", Comparison::atLeast},
     {"<=", Comparison::atMost},
     {">", Comparison::more},
     {"<", Comparison::less},
     {"=", Comparison::equal}}};

bool mayBeginText(std::string_view text, std::size_t at) {
    constexpr std::string_view before = ":,=<>!.- \t";
    return at == 0 || before.find(text[at - 1]) != std::string_view::npos;
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}

bool isNameCharacter(char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '-';
}

} // namespace

std::size_t findUnquoted(std::string_view text, std::string_view sought, std::size_t from) {
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isQuote = text[i] == '"' && (quoted || mayBeginText(text, i));
        if (isQuote && quoted && text.substr(i + 1, 1) == "\"")
            ++i; // two stand for one
        else if (isQuote)
            quoted = !quoted;
        else if (!quoted && i >= from && sought.find(text[i]) != std::string_view::npos)
            return i;
    }
    return std::string_view::npos;
}

std::optional<QuotedText> readQuoted(std::string_view text) {
    QuotedText quoted;
    for (std::size_t i = 1; i < text.size(); ++i) {
        const bool isQuote = text[i] == '"';
        if (isQuote && text.substr(i + 1, 1) != "\"") {
            quoted.end = i + 1;
            return quoted;
        }
        i += isQuote ? 1 : 0;
        quoted.text.push_back(text[i]);
    }
    return std::nullopt;
}

Comparison takeComparison(std::string_view& text) {
    for (const auto& [sign, comparison] : comparisons)
        if (text.starts_with(sign)) {
            text = platform::trimmed(text.substr(sign.size()));
            return comparison;
        }
    return Comparison::none;
}

bool takeNegation(std::string_view& word) {
    const bool negated = word.size() > 1 && (word.front() == '-' || word.front() == '!');
    word.remove_prefix(negated ? 1 : 0);
    return negated;
}

std::string_view fieldNameOf(std::string_view word) {
    const std::size_t colon = std::min(word.find(':'), word.size());
    const std::string_view name = word.substr(0, colon);
    const bool isName = colon < word.size() && !name.empty() && isLetter(name.front()) &&
                        std::ranges::all_of(name, isNameCharacter);
    return isName ? name : std::string_view();
}

} // namespace ov::modDictation
