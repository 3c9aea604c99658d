// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/input/input_devices.h"

#include <string>

// What the system tells everybody of a device, also those who may not open it.

namespace ov::platform::evdev {

constexpr const char* usualDirectory = "/dev/input/";

// Of the device that is called so there, "event3"; nothing, and `otherwise`, when it is not told.
InputKind systemKind(const std::string& device);
std::string systemName(const std::string& device, const std::string& otherwise);

} // namespace ov::platform::evdev
