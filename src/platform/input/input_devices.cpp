// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/input/input_devices.h"

#include "platform/loaded_module.h"

#include <atomic>

namespace ov::platform {

namespace {

std::atomic<const InputModule*> installed{nullptr};

} // namespace

const InputModule* inputModule(Status& status) {
    const InputModule* module = installed;
    return module != nullptr ? module : loadModule<InputModule>(status);
}

void installInputModule(const InputModule* module) {
    installed = module;
}

} // namespace ov::platform
