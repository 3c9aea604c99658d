// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/loaded_module.h"

#include "platform/files.h"

#include <cerrno>
#include <dlfcn.h>

namespace ov::platform {

namespace {

// Some of the reasons begin with the file, others name a library that it needs.
Status lastFailure(const std::string& file) {
    const char* told = dlerror();
    std::string reason = told != nullptr ? told : "no such function";
    if (const std::string named = file + ": "; reason.starts_with(named))
        reason.erase(0, named.size());
    return {ENOEXEC, file, std::move(reason)};
}

} // namespace

void* functionOfModule(std::string_view path, const char* function, Status& status) {
    const std::string file = toNativePath(path);
    void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* found = module != nullptr ? dlsym(module, function) : nullptr;
    if (found == nullptr)
        status = lastFailure(file);
    return found;
}

std::string moduleFileName(std::string_view name) {
    return "lib" + std::string(name) + ".so";
}

} // namespace ov::platform
