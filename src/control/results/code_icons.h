// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <cstdint>
#include <string_view>

namespace ov {

// The small pictures that stand for status, priority, marker and flags where a column is too
// narrow for their text.

// True for a search field whose values have pictures.
bool hasCodeIcons(std::int32_t field);

// The icon (widgets/icons.h) of a dictation's value; empty for a value that has none.
QString codeIconName(std::int32_t field, std::string_view directory, std::string_view name);

} // namespace ov
