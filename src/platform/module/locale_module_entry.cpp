// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is loaded when the first date, number or order of a country is wanted.

#include "platform/loaded_module.h"
#include "platform/module/locale_library.h"

const void* ovsearchModule(const char* version) {
    namespace own = ov::platform::loaded;
    static constexpr ov::platform::LocaleModule module{own::conventionsOf, own::alphabetOf};
    return ov::platform::isModuleVersion(version) ? &module : nullptr;
}
