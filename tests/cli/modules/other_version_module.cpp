// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/loaded_module.h"

const void* ovsearchModule(const char* /*version*/) {
    return nullptr;
}
