// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/field_values.h"
#include "export/document.h"
#include "export/rows.h"

#include <optional>
#include <string>

// A cell of the list, as shown and as what it is. Besides the search fields there is a column of
// paths.

namespace ov::exporting {

// As the result list shows it; bytes that are no UTF-8 are read as Windows-1252.
std::string cellText(const Column& column, const Dictation& dictation);
// The same without that: a path keeps its bytes.
std::string cellBytes(const Column& column, const Dictation& dictation);

// The date, length or number that the cell shows; nothing for text.
std::optional<modDictation::TypedValue> cellValue(const Column& column, const Dictation& dictation);

} // namespace ov::exporting
