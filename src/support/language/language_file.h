// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// One language file: numbered texts in one or more languages.
//
//   file     = [ UTF-8 byte-order mark ] { line ( LF | CR LF ) }
//   line     = empty | comment | section | entry | anything else, which is skipped
//   comment  = { blank } ";" ...
//   section  = { blank } "[" language [ "." sub-language ] "]" { blank }
//   entry    = { blank } number { blank } "=" text
//
// Numbers are decimal digits and fit 32 bits. Languages are those of Windows: 7 German, 9
// English. An entry belongs to the section above it; after a header that cannot be read, and
// before the first one, entries are skipped. Sections of the same language are one. The first of
// two entries with the same number counts.
//
// A text runs from behind its "=" to the line end and keeps the blanks on both sides. As editors
// like to cut blanks at a line's end, one pair of double quotes around the whole text is taken
// off: `25117=" and "`. A line that is not UTF-8 is read as Windows-1252.

namespace ov {

class LanguageFile {
public:
    // Takes any bytes; what is no language file has no texts.
    static LanguageFile parse(std::string_view content);

    // The text in that language and sub-language, else in the language, else in English. Language
    // 0 is German. Nothing when none of them has it. Valid as long as this object.
    std::optional<std::string_view> find(std::int32_t number, std::int32_t language,
                                         std::int32_t subLanguage) const;

    // The numbers of all texts of that language, without a sub-language, in no order.
    std::vector<std::int32_t> numbers(std::int32_t language) const;

private:
    using Texts = std::unordered_map<std::int32_t, std::string>;
    using SectionId = std::pair<std::int32_t, std::int32_t>; // language, sub-language or 0

    const std::string* findIn(SectionId section, std::int32_t number) const;

    std::map<SectionId, Texts> sections_;
};

} // namespace ov
