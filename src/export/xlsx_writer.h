// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/document.h"
#include "export/rows.h"
#include "platform/status.h"

#include <cstdint>
#include <string>

namespace ov::exporting {

constexpr std::int64_t mostSheetRows = 1048575; // below the captions

// A workbook with one sheet: captions that stay in sight and can be filtered by, dates, lengths
// and numbers as such, and everything else as text, which no spreadsheet takes for a formula.
// Rows are written as they come; memory does not grow with them, temporary files beside `native`
// do. Overwrites `native`, which is left behind unfinished after a failure or when `goOn` stopped
// the work; `stopped` then tells. What was written has been read back. Messages name the file
// `shown`, since the user may know nothing of `native`.
platform::Status writeWorkbook(const Document& document, const RowSource& rows,
                               const std::string& native, const std::string& shown,
                               const GoOn& goOn, bool& stopped);

} // namespace ov::exporting
