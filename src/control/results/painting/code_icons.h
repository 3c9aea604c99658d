// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/dictation.h"

#include <QString>
#include <cstdint>

namespace ov {

// The small pictures that stand for status, priority, marker and flags where a column is too
// narrow for their text.

// True for a search field whose values have pictures.
bool hasCodeIcons(std::int32_t field);

// The icon (widgets/icons.h) of a dictation's value; empty for a value that has none.
QString codeIconName(std::int32_t field, const modDictation::Dictation& dictation);

} // namespace ov
