// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// Where the system keeps settings of its own accord, before anything of ours has been read.
// Every result ends in "\" and is empty where the system has no such folder.

namespace ov::platform {

// $XDG_CONFIG_HOME, or .config below the home directory.
std::string userConfigFolder();
// /etc/xdg
std::string systemConfigFolder();

// The per-user Orvanta folder, "Orvanta\" below userConfigFolder() unless it was replaced: the
// registry file and the drive folder lie here. Replacing it moves both; empty goes back.
std::string perUserFolder();
void setPerUserFolder(std::string directory);
// What setPerUserFolder() set; empty when it is the user's own.
const std::string& replacedPerUserFolder();

// Where the user's own work of Orvanta's programs lies that no setting is: "Orvanta\" below
// $XDG_DATA_HOME, or below .local/share in the home directory; perUserFolder() when that was
// replaced.
std::string userDataFolder();

} // namespace ov::platform
