// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/input/input_devices.h"
#include "platform/posix/evdev/evdev_axis.h"
#include "platform/posix/file_descriptor.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

struct libevdev;
struct input_event;

namespace ov::platform::evdev {

// One device that is open. Nothing here waits.
class Device {
public:
    using Changed = std::function<void(std::uint32_t control, bool down)>;

    // nullptr and why not in `status`; `path` as the system writes it.
    static std::unique_ptr<Device> open(const std::string& path, Status& status);
    ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    int handle() const noexcept { return file_.get(); }
    InputKind kind() const;
    std::string name() const;
    // Whether it has anything to press; a mouse or a lid has not.
    bool hasControls() const;

    // Whether nobody else is to receive what it says; from when nothing is down, or the others
    // would never hear of that coming up.
    Status grab(bool grabbed);

    // Tells what has changed since. False when the device is gone.
    bool read(const Changed& changed);
    // Tells that all is up.
    void release(const Changed& changed);

private:
    struct Free {
        void operator()(libevdev* device) const noexcept;
    };

    Device(FileDescriptor file, libevdev* device);
    void findAxes();
    void take(const input_event& event, const Changed& changed);
    void takeKey(const input_event& event, const Changed& changed);
    void set(std::uint32_t control, bool down, const Changed& changed);
    bool isKeyDown() const;

    FileDescriptor file_;
    std::unique_ptr<libevdev, Free> device_;
    std::map<unsigned, Axis> axes_;   // by their codes
    std::set<std::uint32_t> pressed_; // what was told to be down
    bool isMouse_ = false;
    bool isGrabbed_ = false;
};

std::string controlName(std::uint32_t control);

std::unique_ptr<InputDevices> watch(InputListener& listener, const std::string& directory,
                                    Status& status);

} // namespace ov::platform::evdev
