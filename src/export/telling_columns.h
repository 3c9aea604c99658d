// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "export/document.h"
#include "export/rows.h"

#include <optional>
#include <vector>

namespace ov::exporting {

// Those columns of a list that tell something: that are not empty in every row, and not the file
// name, of which the others are the parts. All of them when none is left. Nothing when `goOn`,
// which is told how many rows were looked at, stopped it.
std::optional<std::vector<Column>> tellingColumns(const std::vector<Column>& columns,
                                                  const RowSource& rows, const GoOn& goOn);

} // namespace ov::exporting
