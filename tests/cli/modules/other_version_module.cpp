// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/loaded_module.h"

OV_MODULE_ENTRY(const char* /*version*/) {
    return nullptr;
}
