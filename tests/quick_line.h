// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/filter/typed_line.h"

#include <string_view>

namespace ov::tests {

// The error's offset is that in the text.
inline modDictation::QuickSearch readQuickLine(std::string_view text,
                                               const modDictation::QuickRules& rules) {
    const modDictation::TypedLine line(text);
    modDictation::QuickSearch search = readQuickParts(line.parts, rules);
    if (!search.ok())
        search.error.offset += line.places[search.part];
    return search;
}

} // namespace ov::tests
