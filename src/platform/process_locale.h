// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/locale.h"

namespace ov::platform {

// What the C locale of the process says now.
Locale processLocale();

} // namespace ov::platform
