// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/typed/condition.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace ov::modDictation {

struct QuickError {
    std::string text;       // what is wrong and what helps; empty when nothing is
    std::size_t offset = 0; // in bytes, of what is wrong
    std::size_t length = 0;
};

struct QuickCondition {
    Condition condition;
    QuickError error;
    bool ok() const noexcept { return error.text.empty(); }
};

// What stands behind "FIELD:" in the quick form, see quick_text.h for its grammar. Offsets of
// errors are those in `values`, which is UTF-8.
QuickCondition readQuickValues(const FieldDefinition& field, std::string_view values,
                               const platform::DateTime& now);

} // namespace ov::modDictation
