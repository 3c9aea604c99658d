// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/criterion.h"
#include "platform/locale.h"

#include <QString>

namespace ov {

// "16 to 22 November 2026" for a criterion that asks for dates of this week; empty for one that
// does not count from today.
QString relativeDatesText(const modDictation::Criterion& criterion, const platform::DateTime& now);

} // namespace ov
