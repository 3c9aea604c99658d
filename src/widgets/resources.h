// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

namespace ov::widgets {

// Makes ":/ovsearch/..." readable: a static library's resources are linked in only when somebody
// asks for them.
void initResources();

} // namespace ov::widgets
