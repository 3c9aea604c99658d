// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>

namespace ov::widgets {

// The drawing `name` of the program's own set (icons/), which reads on light and dark windows;
// loaded once. Empty for a name that is not in the set.
QIcon icon(const char* name);

} // namespace ov::widgets
