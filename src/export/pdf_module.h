// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/file_export.h"

// Pages need Qt, so what has no windows gets its PDF from a module.

namespace ov::exporting {

struct PdfModule {
    static constexpr const char* moduleName = "OVSearchPdf";
    // Makes its own Qt application when there is none.
    PdfWriter write;
};

} // namespace ov::exporting
