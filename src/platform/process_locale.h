// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/locale.h"

#include <string_view>

namespace ov::platform {

// What the C locale of the process says now.
Locale processLocale();

// Puts what a date format of the C library, "%d.%m.%Y", tells into `result`: the order, the
// separator when it is one of ".", "/" and "-", and whether days have two digits.
void readDateFormat(std::string_view format, Locale& result);

} // namespace ov::platform
