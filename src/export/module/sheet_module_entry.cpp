// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is loaded when the first spreadsheet is wanted.

#include "export/module/workbook.h"
#include "export/module/workbook_check.h"
#include "export/sheet_module.h"
#include "platform/loaded_module.h"

const void* ovsearchModule(const char* version) {
    namespace own = ov::exporting::loaded;
    static constexpr ov::exporting::SheetModule module{own::createWorkbook, own::isWholeWorkbook};
    return ov::platform::isModuleVersion(version) ? &module : nullptr;
}
