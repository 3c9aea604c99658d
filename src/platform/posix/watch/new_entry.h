// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/terminal/folder_watch.h"

#include <string>

namespace ov::platform {

// What a name that has just come is. A link is complete as soon as it is there; nobody closes it.
FolderEvent::Kind kindOfNew(const std::string& path);

} // namespace ov::platform
