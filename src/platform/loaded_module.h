// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <atomic>
#include <string>
#include <string_view>

// Parts of the program that are files of their own: what needs libraries that take longer to load
// than most searches take. A module is loaded when it is first used, and for good. It has its own
// copy of all that is kept per thread here, in which nothing is set: texts, formats and paths come
// from the caller.

// What a module has in place of main(). Answers the interface, or nullptr when `version` is none
// that isModuleVersion() knows.
extern "C" [[gnu::visibility("default")]] const void* ovsearchModule(const char* version);

namespace ov::platform {

// What the module gives: an Interface, whose `moduleName` is that of the file ("OVSearchSound").
// It is taken from beside the program or plug-in, from where the installation puts it
// (../lib/.../ovsearch), or from the folder of setModuleFolder(), and from nowhere else: what lies
// elsewhere may be anybody's. nullptr and why not, with the file, in `status` when there is none,
// it cannot be loaded or is of another version. From any thread.
template <typename Interface>
const Interface* loadModule(Status& status);

// For a program that stands elsewhere than the modules: the folder, as the system writes it, in
// which alone they are looked for from now on. Before the first is loaded.
void setModuleFolder(std::string native);

using ModuleEntry = const void* (*)(const char* version);
constexpr const char* moduleEntryName = "ovsearchModule";
bool isModuleVersion(const char* version) noexcept;

// ---- How it is done

// What the entry of the module of that name answers; see loadModule().
const void* moduleInterface(std::string_view name, Status& status);

// Loads the module of that path (files.h) for good and finds a function in it: nullptr and why not
// in `status` when that fails.
void* functionOfModule(std::string_view path, const char* function, Status& status);

// How this system's modules are called: "libx.so" for "x".
std::string moduleFileName(std::string_view name);

template <typename Interface>
const Interface* loadModule(Status& status) {
    static std::atomic<const Interface*> loaded{nullptr};
    if (loaded == nullptr)
        loaded = static_cast<const Interface*>(moduleInterface(Interface::moduleName, status));
    return loaded;
}

} // namespace ov::platform
