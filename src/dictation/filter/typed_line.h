// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/typed/quick_text.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace ov::modDictation {

// A line in the quick form of criteria, taken apart as a shell would, with the places that the
// parts have in it.
struct TypedLine {
    std::vector<QuickPart> parts;
    std::vector<std::size_t> places;

    explicit TypedLine(std::string_view text);

private:
    void add(QuickPart::Kind kind, std::string_view text, std::size_t place);
};

} // namespace ov::modDictation
