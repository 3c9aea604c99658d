// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"

namespace ov::cli {

enum class DeviceFormat { table, json, jsonl };

// Prints the sound outputs of the desktop with the numbers that `play --device` takes.
ExitCode runDevices(DeviceFormat format);

} // namespace ov::cli
