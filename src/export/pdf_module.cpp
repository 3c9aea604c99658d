// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/pdf_module.h"

#include "platform/files.h"
#include "platform/loaded_module.h"
#include "support/modFilePath.h"

#include <cerrno>

namespace ov::exporting {

namespace {

// OV_MODULE_FOLDER is where modules are installed, below the prefix and with "/".
std::string findModule() {
    const std::string name = platform::moduleFileName(pdfModuleName);
    std::string directory = platform::moduleDirectory();
    std::string beside = directory + name;
    if (platform::fileExists(beside))
        return beside;
    std::string installed = OV_MODULE_FOLDER "\\";
    for (char& c : installed)
        c = c == '/' ? '\\' : c;
    installed += name;
    constexpr int parents = 4;
    for (int level = 0; level <= parents && !directory.empty(); ++level) {
        if (platform::fileExists(directory + installed))
            return directory + installed;
        directory.pop_back();
        directory.resize(modFilePath::directoryPart(directory).size());
    }
    return beside;
}

} // namespace

PdfWriter loadPdfWriter(platform::Status& status) {
    return reinterpret_cast<PdfWriter>(
        platform::functionOfModule(findModule(), pdfModuleFunction, status));
}

} // namespace ov::exporting
