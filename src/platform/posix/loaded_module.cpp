// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/loaded_module.h"

#include "platform/files.h"

#include <cerrno>
#include <dlfcn.h>

namespace ov::platform {

void* functionOfModule(std::string_view path, const char* function, Status& status) {
    void* module = dlopen(toNativePath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* found = module != nullptr ? dlsym(module, function) : nullptr;
    if (found == nullptr) {
        const char* reason = dlerror(); // names the file
        status = Status(ENOEXEC, {}, reason != nullptr ? reason : toNativePath(path));
    }
    return found;
}

std::string moduleFileName(std::string_view name) {
    return "lib" + std::string(name) + ".so";
}

} // namespace ov::platform
