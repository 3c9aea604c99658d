// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/typed/quick_lexer.h"
#include "dictation/typed/quick_text.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ov::tests {

// A line of words as a shell would hand them over, with the places that they had.
struct QuickLine {
    std::vector<modDictation::QuickPart> parts;
    std::vector<std::size_t> places;

    explicit QuickLine(std::string_view text) {
        using Kind = modDictation::QuickPart::Kind;
        constexpr std::string_view blanks = " \t";
        for (std::size_t at = 0;
             (at = text.find_first_not_of(blanks, at)) != std::string_view::npos;) {
            std::string_view word = text.substr(at);
            word = word.substr(0, modDictation::findUnquoted(word, blanks));
            if (word == "-(" || word == "!(") {
                add(Kind::negation, word.substr(0, 1), at++);
                word.remove_prefix(1);
            }
            add(word == "(" ? Kind::open : (word == ")" ? Kind::close : Kind::word), word, at);
            at += word.size();
        }
    }

private:
    void add(modDictation::QuickPart::Kind kind, std::string_view text, std::size_t place) {
        parts.push_back({kind, std::string(text)});
        places.push_back(place);
    }
};

// The error's offset is that in the text.
inline modDictation::QuickSearch readQuickLine(std::string_view text,
                                               const modDictation::QuickRules& rules) {
    const QuickLine line(text);
    modDictation::QuickSearch search = readQuickParts(line.parts, rules);
    if (!search.ok())
        search.error.offset += line.places[search.part];
    return search;
}

} // namespace ov::tests
