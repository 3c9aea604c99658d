// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is loaded when somebody has a pedal, or wants to see whether one is there.

#include "platform/loaded_module.h"
#include "platform/posix/evdev/evdev_device.h"

const void* ovsearchModule(const char* version) {
    namespace own = ov::platform::evdev;
    static constexpr ov::platform::InputModule module{own::watch, own::controlName};
    return ov::platform::isModuleVersion(version) ? &module : nullptr;
}
