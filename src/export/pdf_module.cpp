// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/pdf_module.h"

#include "platform/files.h"
#include "platform/loaded_module.h"

#include <algorithm>

namespace ov::exporting {

namespace {

// Two places and no other: what lies further up may be anybody's. OV_MODULE_FOLDER is where modules
// are installed, below the prefix and with "/".
std::string findModule() {
    const std::string name = platform::moduleFileName(pdfModuleName);
    const std::string directory = platform::moduleDirectory();
    const std::string beside = directory + name;
    std::string installed = directory + "..\\" OV_MODULE_FOLDER "\\" + name;
    std::ranges::replace(installed, '/', '\\');
    return !platform::fileExists(beside) && platform::fileExists(installed) ? installed : beside;
}

} // namespace

PdfWriter loadPdfWriter(platform::Status& status) {
    return reinterpret_cast<PdfWriter>(
        platform::functionOfModule(findModule(), pdfModuleFunction, status));
}

} // namespace ov::exporting
