// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/file_export.h"
#include "platform/status.h"

// Pages need Qt, which takes longer to load than most searches take. What has no windows therefore
// gets its PDF from a module that is loaded when the first one is asked for.

namespace ov::exporting {

constexpr const char* pdfModuleName = "OVSearchPdf";
// A PdfWriter, of the same build. It makes its own Qt application when there is none.
constexpr const char* pdfModuleFunction = "ovsearchWritePdf";

// Looks beside the program, then where the installation puts it (../lib/.../ovsearch), and nowhere
// else. nullptr and why not in `status` when there is none or it cannot be loaded.
PdfWriter loadPdfWriter(platform::Status& status);

} // namespace ov::exporting
