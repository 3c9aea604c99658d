// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/commands/devices_command.h"
#include "cli/commands/play_command.h"
#include "cli/options/option_kinds.h"

// The commands of sound, with their options.

namespace ov::cli {

CLI::App* addPlay(CLI::App& app, PlayOptions& options);
CLI::App* addDevices(CLI::App& app, DeviceFormat& format);

} // namespace ov::cli
