// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/looks/text_marks.h"

#include "dictation/search/matching.h"
#include "dictation/search/operators.h"
#include "platform/text.h"

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace ov::cli {

namespace {

// A text as searches compare it, and where each byte of that came from.
struct Compared {
    std::string upper;
    std::vector<std::size_t> places; // one more than bytes
};

std::size_t endOfCharacter(std::string_view text, std::size_t at) {
    do
        ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U);
    return at;
}

bool joinsTheOneBefore(std::string_view character) {
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2* const composed = icu::Normalizer2::getNFCInstance(error);
    const auto size = static_cast<std::int32_t>(character.size());
    const UChar32 c = icu::UnicodeString::fromUTF8({character.data(), size}).char32At(0);
    return U_SUCCESS(error) && composed->hasBoundaryBefore(c) == 0;
}

// Behind a letter and the marks on it, which may become one character with it.
std::size_t endOfLetter(std::string_view text, std::size_t at) {
    std::size_t end = endOfCharacter(text, at);
    while (end < text.size()) {
        const std::size_t next = endOfCharacter(text, end);
        if (!joinsTheOneBefore(text.substr(end, next - end)))
            break;
        end = next;
    }
    return end;
}

Compared compared(std::string_view text) {
    Compared result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = endOfLetter(text, at);
        platform::appendUpperCase(text.substr(at, end - at), result.upper);
        result.places.resize(result.upper.size(), at);
        at = end;
    }
    result.places.push_back(text.size());
    return result;
}

void markAll(const std::string& wanted, const Compared& text, std::vector<bool>& marks) {
    for (std::size_t at = text.upper.find(wanted); at != std::string::npos;
         at = text.upper.find(wanted, at)) {
        const std::size_t first = text.places[at];
        at += wanted.size();
        std::size_t end = at; // a letter is marked as a whole
        while (text.places[end] == text.places[at - 1])
            ++end;
        for (std::size_t i = first; i < text.places[end]; ++i)
            marks[i] = true;
    }
}

} // namespace

void TextMarks::add(std::span<const modDictation::Criterion> criteria) {
    using namespace modDictation;
    for (const Criterion& criterion : criteria) {
        const PreparedCriterion prepared = prepareCriterion(criterion, platform::now());
        const bool isPart = prepared.operatorId == operator_id::contains;
        const bool isWhole =
            prepared.operatorId == operator_id::is || prepared.operatorId == operator_id::equal;
        if (prepared.valueType == ValueType::text && (isPart || isWhole) && !prepared.text.empty())
            wanted_.push_back({prepared.field, prepared.text, isWhole});
    }
}

std::vector<bool> TextMarks::in(std::int32_t field, std::string_view shown) const {
    std::vector<bool> marks(shown.size());
    if (std::ranges::find(wanted_, field, &Wanted::field) == wanted_.end())
        return marks;
    const Compared text = compared(shown);
    for (const Wanted& wanted : wanted_)
        if (wanted.field == field && (!wanted.isWhole || text.upper == wanted.text))
            markAll(wanted.text, text, marks);
    return marks;
}

std::string colored(std::string_view text, const std::vector<bool>& marks) {
    std::string result;
    bool isMarked = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (marks[i] != isMarked)
            result += marks[i] ? "\x1B[1;31m" : "\x1B[0m";
        isMarked = marks[i];
        result.push_back(text[i]);
    }
    return isMarked ? result + "\x1B[0m" : result;
}

} // namespace ov::cli
