// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_codes.h"

#include "dictation/dictation_record.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/numbers.h"

#include <array>

namespace ov::modDictation {

namespace {

struct Word {
    std::string_view text;
    std::int32_t code;
};

constexpr std::array<Word, 5> statusWords = {{{"", emptyStatusCode},
                                              {"WAV", emptyStatusCode},
                                              {"ROH", status_code::roh},
                                              {"STOP", status_code::stop},
                                              {"MAI", status_code::mai}}};

constexpr std::array<Word, 11> priorityWords = {{{"", emptyPriorityCode},
                                                 {"NORMAL", emptyPriorityCode},
                                                 {"FRIST", priority_code::deadline},
                                                 {"HOCH", priority_code::high},
                                                 {"EDIT", priority_code::edit},
                                                 {"MSG", priority_code::message},
                                                 {"1", emptyPriorityCode},
                                                 {"2", priority_code::high},
                                                 {"3", priority_code::deadline},
                                                 {"4", priority_code::message},
                                                 {"5", priority_code::edit}}};

// Longer than any word, also when its letters took two bytes each before they were capitals.
constexpr std::size_t tooLong = 13;

template <std::size_t size>
std::int32_t codeOf(const std::array<Word, size>& words, std::string_view text) {
    if (text.size() >= tooLong)
        return noCode;
    const std::string upper = platform::upperCase(text); // fits the string's own buffer
    for (const Word& word : words)
        if (upper == word.text)
            return word.code;
    return noCode;
}

std::int32_t flagsCode(std::string_view text) noexcept {
    const auto bits = static_cast<std::uint32_t>(leadingInt32(text));
    std::int32_t code = noCode;
    for (std::int32_t i = 0; i <= lastFlagCode - firstFlagCode; ++i)
        if ((bits >> static_cast<unsigned>(i) & 1U) != 0)
            code += firstFlagCode + i;
    return code;
}

// Text numbers of codes.
std::int32_t textNumber(std::int32_t code) noexcept {
    constexpr std::int32_t sixthFlag = firstFlagCode + 5;
    // The codes of several flags are sums, these of the sixth and the seventh with another one.
    constexpr std::int32_t firstSum = 30;
    constexpr std::int32_t secondSum = 31;
    switch (code) {
    case status_code::wav:
        return text_id::wavText;
    case status_code::roh:
        return text_id::rohText;
    case sixthFlag:
    case firstSum:
        return text_id::sixthFlagText;
    case sixthFlag + 1:
        return text_id::seventhFlagText;
    case secondSum:
        return text_id::severalFlagsText;
    default:
        return code >= priority_code::normal && code < sixthFlag ? text_id::firstCodeText - 1 + code
                                                                 : 0;
    }
}

} // namespace

std::int32_t GetFieldCode(std::int32_t fieldNumber, std::string_view text) {
    switch (fieldNumber) {
    case dictation_field::status:
    case dictation_field::secondStatus:
        return codeOf(statusWords, text);
    case dictation_field::priority:
        return codeOf(priorityWords, text);
    case dictation_field::flags:
        return flagsCode(text);
    default:
        return noCode;
    }
}

std::int32_t assumedCode(std::int32_t fieldNumber) {
    return GetFieldCode(fieldNumber, {});
}

std::string GetStatusText(std::int32_t code) {
    switch (code) {
    case 17:
        return "(Status 128)";
    case 18:
        return "(Status 256)";
    case 19:
        return "(Status 512)";
    default:
        return modLanguage::GetText(textNumber(code));
    }
}

std::string_view codeWord(std::int32_t code) noexcept {
    const auto find = [code](const auto& words) -> std::string_view {
        for (const Word& word : words)
            if (word.code == code && !word.text.empty())
                return word.text;
        return {};
    };
    const std::string_view status = find(statusWords);
    return status.empty() ? find(priorityWords) : status;
}

} // namespace ov::modDictation
