// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/typed_line.h"

#include "dictation/typed/quick_lexer.h"

#include <string>

namespace ov::modDictation {

TypedLine::TypedLine(std::string_view text) {
    using Kind = QuickPart::Kind;
    constexpr std::string_view blanks = " \t";
    for (std::size_t at = 0; (at = text.find_first_not_of(blanks, at)) != std::string_view::npos;) {
        std::string_view word = text.substr(at);
        word = word.substr(0, findUnquoted(word, blanks));
        if (word == "-(" || word == "!(") {
            add(Kind::negation, word.substr(0, 1), at++);
            word.remove_prefix(1);
        }
        add(word == "(" ? Kind::open : (word == ")" ? Kind::close : Kind::word), word, at);
        at += word.size();
    }
}

void TypedLine::add(QuickPart::Kind kind, std::string_view text, std::size_t place) {
    parts.push_back({kind, std::string(text)});
    places.push_back(place);
}

} // namespace ov::modDictation
