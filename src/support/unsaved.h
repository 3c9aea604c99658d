// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/log.h"

#include <string_view>

// What the user set and could not be kept.

namespace ov {

// Logs it under the procedure's name, and tells the user once for each file of this thread, by a
// box that nobody waits for: settings are written wherever they change, also in handlers of
// events and at the end. `file` is a path, `error` need not name it.
void reportUnsaved(std::string_view file, const Error& error, std::string_view procedure);

// For tests: nothing has been told.
void resetUnsaved();

} // namespace ov
