// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/field_date.h"
#include "export/document.h"
#include "export/rows.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

// A cell of the list, as shown and as what it is.

namespace ov::exporting {

std::string nativePath(const Hit& hit);

// As the result list shows it; bytes that are no UTF-8 are read as Windows-1252.
std::string cellText(const Column& column, const Hit& hit);
// The same without that: a path keeps its bytes.
std::string cellBytes(const Column& column, const Hit& hit);

struct Seconds {
    std::int32_t count = 0;
    bool operator==(const Seconds&) const = default;
};
using RealValue = std::variant<modDictation::DateSerial, Seconds, std::int64_t>;

// The date, length or number that the cell shows; nothing for text, and for what only looks like
// one: a number must read the same when it is written back, so "007" is text.
std::optional<RealValue> cellValue(const Column& column, const Hit& hit);

} // namespace ov::exporting
