// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/loaded_module.h"

#include "platform/files.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace ov::platform {

namespace {

std::string& moduleFolder() {
    static std::string folder; // empty: beside the program
    return folder;
}

// OV_MODULE_FOLDER is where modules are installed, below the prefix and with "/".
std::string findModule(const std::string& fileName) {
    if (!moduleFolder().empty())
        return moduleFolder() + fileName;
    const std::string directory = moduleDirectory();
    const std::string beside = directory + fileName;
    std::string installed = directory + "..\\" OV_MODULE_FOLDER "\\" + fileName;
    std::ranges::replace(installed, '/', '\\');
    return !fileExists(beside) && fileExists(installed) ? installed : beside;
}

} // namespace

void setModuleFolder(std::string native) {
    moduleFolder() = fromNativePath(native) + "\\";
}

// An update may have put another one there while the program runs.
bool isModuleVersion(const char* version) noexcept {
    return std::string_view(version) == OV_MODULE_VERSION;
}

const void* moduleInterface(std::string_view name, Status& status) {
    const std::string path = findModule(moduleFileName(name));
    const auto entry =
        reinterpret_cast<ModuleEntry>(functionOfModule(path, moduleEntryName, status));
    if (entry == nullptr)
        return nullptr;
    const void* found = entry(OV_MODULE_VERSION);
    if (found == nullptr)
        status = Status(static_cast<int>(std::errc::executable_format_error), toNativePath(path),
                        "is of another version than the program");
    return found;
}

} // namespace ov::platform
