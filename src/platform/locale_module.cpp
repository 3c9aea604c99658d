// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/locale_module.h"

#include "platform/loaded_module.h"

#include <mutex>

namespace ov::platform {

namespace {

std::mutex problemLock;
Status problem; // of the last that asked in vain

} // namespace

const LocaleModule* localeModule() {
    Status status;
    const auto* module = loadModule<LocaleModule>(status);
    if (module == nullptr) {
        const std::lock_guard guard(problemLock);
        problem = status;
    }
    return module;
}

Status localeProblem() {
    const std::lock_guard guard(problemLock);
    return problem;
}

Locale localeNamed(const std::string& name) {
    const std::string_view bare = std::string_view(name).substr(0, name.find_first_of(".@"));
    if (bare.empty() || bare == "C" || bare == "POSIX")
        return {};
    const LocaleModule* module = localeModule();
    return module != nullptr ? module->conventions(name) : Locale();
}

} // namespace ov::platform
