// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/typed/search_text.h"

#include <QString>

namespace ov {

// The criteria in a text that was copied from anywhere. Nobody's are more than some hundred, or
// very long: what goes beyond was copied by mistake, and counts as skipped.
modDictation::CriteriaText pastedCriteria(const QString& copied);

} // namespace ov
