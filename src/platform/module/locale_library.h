// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/locale_module.h"

namespace ov::platform::loaded {

Locale conventionsOf(const std::string& locale);
std::unique_ptr<Alphabet> alphabetOf(const std::string& locale);

} // namespace ov::platform::loaded
