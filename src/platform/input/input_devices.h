// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Foot pedals and whatever else has keys, buttons or axes: keyboards, joysticks and the adapters
// that show up as one of them. What a press means is not known here.

namespace ov::platform {

// A kind of device, by the numbers that its maker has and gave it. Stored.
struct InputKind {
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    auto operator<=>(const InputKind&) const = default;
};

// A pedal, key or button went down or came up, or an axis went to one of its ends or came back.
struct InputPress {
    std::uint32_t device = 0; // another number for each device that is plugged in
    InputKind kind;
    std::uint32_t control = 0; // which of the device's; stored
    bool down = false;
    bool operator==(const InputPress&) const = default;
};

struct InputDevice {
    InputKind kind;
    std::string name; // as its maker calls it, or where the system has it
    Status problem;   // why nothing is received of it, or why others hear it too
};

// What there is. From a device of a kind that is not wished for nothing is received.
struct InputSituation {
    std::vector<InputDevice> devices;
    Status problem; // why none can be there
};

struct InputWish {
    bool all = false;               // everything there is, to see which it is
    std::vector<InputKind> kinds;   // these
    std::vector<InputKind> grabbed; // and of these nobody else is to receive anything
    bool operator==(const InputWish&) const = default;
};

// Both are called on a thread of the devices, which must not be kept.
class InputListener {
public:
    virtual void pressed(const InputPress& press) = 0;
    virtual void situationChanged(const InputSituation& situation) = 0;

protected:
    ~InputListener() = default;
};

// Watches the devices, also those that are plugged in later. What is pressed on one that vanishes,
// or is no longer wished for, comes up. At first nothing is wished for. The destructor waits until
// the listener is called no more.
class InputDevices {
public:
    virtual ~InputDevices() = default;
    virtual void wish(InputWish wish) = 0;
};

// A library is needed that is not worth loading before somebody has a pedal.
struct InputModule {
    static constexpr const char* moduleName = "OVSearchInput";

    // `directory` is where the system has the devices, empty for the usual place. nullptr and why
    // not in `status` when nothing can be watched.
    std::unique_ptr<InputDevices> (*watch)(InputListener& listener, const std::string& directory,
                                           Status& status);
    // What a control is called, "F13" or "X-"; its number when nobody has a name for it.
    std::string (*controlName)(std::uint32_t control);
};

// nullptr and why not in `status` when it cannot be loaded.
const InputModule* inputModule(Status& status);
// Puts another in its place, for tests; nullptr puts it back.
void installInputModule(const InputModule* module);

} // namespace ov::platform
