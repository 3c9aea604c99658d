// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/language/language_file.h"

#include "platform/text.h"
#include "support/language/language_id.h"
#include "support/numbers.h"
#include "support/text_lines.h"

#include <charconv>

namespace ov {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::optional<std::int32_t> wholeNumber(std::string_view text) {
    std::int32_t number = 0;
    if (!isAllDigits(text) ||
        std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc{})
        return std::nullopt;
    return number;
}

// Language and sub-language of a header without its brackets.
std::optional<std::pair<std::int32_t, std::int32_t>> parseHeader(std::string_view header) {
    const std::size_t point = header.find('.');
    const auto language = wholeNumber(header.substr(0, point));
    const auto subLanguage = point == std::string_view::npos
                                 ? std::optional<std::int32_t>(0)
                                 : wholeNumber(header.substr(point + 1));
    if (!language || !subLanguage)
        return std::nullopt;
    return std::pair(*language, *subLanguage);
}

std::string_view withoutQuotes(std::string_view text) {
    if (text.size() >= 2 && text.starts_with('"') && text.ends_with('"'))
        return text.substr(1, text.size() - 2);
    return text;
}

} // namespace

LanguageFile LanguageFile::parse(std::string_view content) {
    LanguageFile file;
    Texts* section = nullptr;
    if (content.starts_with(byteOrderMark))
        content.remove_prefix(byteOrderMark.size());
    forEachLine(content, [&](std::string_view line) {
        const std::string_view visible = platform::trimmed(line);
        if (visible.starts_with('[')) {
            const auto id = visible.ends_with(']')
                                ? parseHeader(visible.substr(1, visible.size() - 2))
                                : std::nullopt;
            section = id ? &file.sections_[*id] : nullptr;
            return;
        }
        const std::size_t equals = line.find('=');
        if (section == nullptr || equals == std::string_view::npos)
            return;
        if (const auto number = wholeNumber(platform::trimmed(line.substr(0, equals))))
            section->try_emplace(*number,
                                 platform::textFromBytes(withoutQuotes(line.substr(equals + 1))));
    });
    return file;
}

std::optional<std::string_view> LanguageFile::find(std::int32_t number, std::int32_t language,
                                                   std::int32_t subLanguage) const {
    if (language == 0)
        language = language_id::german;
    for (const SectionId& id : {SectionId(language, subLanguage), SectionId(language, 0),
                                SectionId(language_id::english, 0)})
        if (const std::string* text = findIn(id, number))
            return *text;
    return std::nullopt;
}

std::vector<std::int32_t> LanguageFile::numbers(std::int32_t language) const {
    std::vector<std::int32_t> found;
    if (const auto texts = sections_.find(SectionId(language, 0)); texts != sections_.end())
        for (const auto& [number, text] : texts->second)
            found.push_back(number);
    return found;
}

const std::string* LanguageFile::findIn(SectionId section, std::int32_t number) const {
    const auto texts = sections_.find(section);
    if (texts == sections_.end())
        return nullptr;
    const auto text = texts->second.find(number);
    return text == texts->second.end() ? nullptr : &text->second;
}

} // namespace ov
