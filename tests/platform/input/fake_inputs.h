// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/input/input_devices.h"
#include "tests/temporary_store.h"

#include <cstdint>
#include <linux/input.h>
#include <map>
#include <set>

// A folder of input devices that the tests press. Each is a pipe that carries what the kernel's
// would; what the library asks the kernel of it is answered here.

namespace ov::tests {

class FakeInputs {
public:
    struct Device {
        std::string name;
        platform::InputKind kind;
        // By type. The axis X goes from 0 to 255 and rests in the middle.
        std::map<unsigned, std::set<unsigned>> codes;
        std::set<unsigned> down{}; // as the kernel knows it
        bool isGrabbed = false;
    };

    ~FakeInputs();

    std::string folder() const { return store_.native(""); }
    void plugIn(const std::string& file, Device device);
    void pullOut(const std::string& file);
    void send(const std::string& file, unsigned type, unsigned code, std::int32_t value);
    void sendKey(const std::string& file, unsigned code, std::int32_t value);
    // Half an event, which no kernel sends.
    void sendRubbish(const std::string& file);
    void setDown(const std::string& file, std::set<unsigned> keys);
    bool isGrabbed(const std::string& file) const;

private:
    TemporaryStore store_;
};

} // namespace ov::tests
