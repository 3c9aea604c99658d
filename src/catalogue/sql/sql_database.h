// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// What a database that is asked in SQL is asked with. Values stand as "?" in the text and are bound
// in their order; nothing is ever pasted into SQL.

namespace ov::catalogue::sql {

struct Bytes {
    std::string_view of;
};
// For columns of a type for texts, where the database has one.
struct Text {
    std::string_view of;
};

using Value = std::variant<std::int64_t, Bytes, Text>;
using Values = std::vector<Value>;

// How databases differ in what a question needs.
struct Dialect {
    const char* findBytes = "instr"; // the function: where the second bytes are in the first ones
    bool hasTextType = false;        // of UTF-8; LIKE is as exact there, and has an index
    const char* whichTexts = "";     // before the condition on the table of texts
};

// The rows of an answer.
class Rows {
public:
    Rows() = default;
    virtual ~Rows() = default;
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;

    // True while there is a row.
    virtual bool step() = 0;
    virtual std::int64_t number(int column) const = 0;
    // Valid until the next step.
    virtual std::string_view bytes(int column) const = 0;
};

} // namespace ov::catalogue::sql
