// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/criterion.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ov::cli {

// What the criteria looked for, to be marked in the cells of a table.
class TextMarks {
public:
    // Those that want a text to contain or to be something; others mark nothing.
    void add(std::span<const modDictation::Criterion> criteria);

    // The bytes of `shown` that are what the field was searched for, compared as the search does.
    std::vector<bool> in(std::int32_t field, std::string_view shown) const;

private:
    struct Wanted {
        std::int32_t field;
        std::string text; // upper-cased
        bool isWhole;
    };
    std::vector<Wanted> wanted_;
};

// The text with what is marked in colour.
std::string colored(std::string_view text, const std::vector<bool>& marks);

} // namespace ov::cli
