// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/cell_sum.h"

#include <string>

namespace ov::exporting::loaded {

// See SheetModule::isWhole.
bool isWholeWorkbook(const std::string& native, const CellSum& cells);

} // namespace ov::exporting::loaded
