// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/posix/evdev/evdev_device.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <string_view>
#include <utility>

namespace ov::platform::evdev {

namespace {

// Stored: a key is its code, an end of an axis stands above all keys.
constexpr std::uint32_t firstAxis = 0x10000;

constexpr std::uint32_t endOfAxis(unsigned code, unsigned end) noexcept {
    return firstAxis + 2 * code + end;
}

Status problemOf(int error, const std::string& path) {
    errno = error;
    return systemError(path);
}

// What a finger or a pen touches has axes that are no pedals, and so has what feels its own weight.
bool isTouched(const libevdev& device) {
    constexpr std::array touches{BTN_TOUCH, BTN_TOOL_FINGER, BTN_TOOL_PEN};
    for (const int touch : touches)
        if (libevdev_has_event_code(&device, EV_KEY, static_cast<unsigned>(touch)) != 0)
            return true;
    return libevdev_has_property(&device, INPUT_PROP_ACCELEROMETER) != 0;
}

} // namespace

void Device::Free::operator()(libevdev* device) const noexcept {
    libevdev_free(device);
}

std::unique_ptr<Device> Device::open(const std::string& path, Status& status) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.valid()) {
        status = systemError(path);
        return nullptr;
    }
    libevdev* device = nullptr;
    if (const int error = libevdev_new_from_fd(file.get(), &device); error != 0) {
        status = problemOf(-error, path);
        return nullptr;
    }
    return std::unique_ptr<Device>(new Device(std::move(file), device));
}

Device::Device(FileDescriptor file, libevdev* device)
    : file_(std::move(file)),
      device_(device),
      isMouse_(libevdev_has_event_code(device, EV_REL, REL_X) != 0) {
    findAxes();
}

Device::~Device() = default;

void Device::findAxes() {
    if (isTouched(*device_))
        return;
    for (unsigned code = ABS_X; code < ABS_MT_SLOT; ++code)
        if (const input_absinfo* axis = libevdev_get_abs_info(device_.get(), code))
            axes_.emplace(code, Axis(axis->minimum, axis->maximum, axis->value));
}

InputKind Device::kind() const {
    return {static_cast<std::uint16_t>(libevdev_get_id_vendor(device_.get())),
            static_cast<std::uint16_t>(libevdev_get_id_product(device_.get()))};
}

std::string Device::name() const {
    return libevdev_get_name(device_.get());
}

bool Device::hasControls() const {
    if (!axes_.empty())
        return true;
    for (unsigned code = 0; code < KEY_CNT; ++code)
        if (libevdev_has_event_code(device_.get(), EV_KEY, code) != 0 &&
            !(isMouse_ && code >= BTN_MOUSE && code < BTN_JOYSTICK))
            return true;
    return false;
}

Status Device::grab(bool grabbed) {
    if (grabbed == isGrabbed_ || (grabbed && isKeyDown()))
        return {};
    const int error = libevdev_grab(device_.get(), grabbed ? LIBEVDEV_GRAB : LIBEVDEV_UNGRAB);
    if (error != 0)
        return problemOf(-error, name());
    isGrabbed_ = grabbed;
    return {};
}

bool Device::isKeyDown() const {
    for (unsigned code = 0; code < KEY_CNT; ++code)
        if (libevdev_get_event_value(device_.get(), EV_KEY, code) > 0)
            return true;
    return false;
}

// Where the system lost events for want of room, the library asks it how things stand, and tells
// the differences as events.
bool Device::read(const Changed& changed) {
    unsigned flag = LIBEVDEV_READ_FLAG_NORMAL;
    for (;;) {
        input_event event{};
        const int result = libevdev_next_event(device_.get(), flag, &event);
        if (result == -EAGAIN && flag == LIBEVDEV_READ_FLAG_NORMAL)
            return true;
        if (result == -EAGAIN)
            flag = LIBEVDEV_READ_FLAG_NORMAL;
        else if (result < 0)
            return result == -EINTR;
        else if (result == LIBEVDEV_READ_STATUS_SYNC)
            flag = LIBEVDEV_READ_FLAG_SYNC;
        if (result >= 0)
            take(event, changed);
    }
}

void Device::take(const input_event& event, const Changed& changed) {
    if (event.type == EV_KEY) {
        takeKey(event, changed);
        return;
    }
    const auto axis = event.type == EV_ABS ? axes_.find(event.code) : axes_.end();
    if (axis == axes_.end())
        return;
    const std::array<bool, 2> down = axis->second.moveTo(event.value);
    set(endOfAxis(event.code, 0), down[0], changed);
    set(endOfAxis(event.code, 1), down[1], changed);
}

// A key that is held repeats itself with a value of its own.
void Device::takeKey(const input_event& event, const Changed& changed) {
    const bool isKnown = event.code < KEY_CNT && (event.value == 0 || event.value == 1);
    const bool isOfMouse = isMouse_ && event.code >= BTN_MOUSE && event.code < BTN_JOYSTICK;
    if (isKnown && !isOfMouse)
        set(event.code, event.value == 1, changed);
}

void Device::set(std::uint32_t control, bool down, const Changed& changed) {
    const bool isNew = down ? pressed_.insert(control).second : pressed_.erase(control) > 0;
    if (isNew)
        changed(control, down);
}

void Device::release(const Changed& changed) {
    for (const std::uint32_t control : std::exchange(pressed_, {}))
        changed(control, false);
}

std::string controlName(std::uint32_t control) {
    const bool isAxis = control >= firstAxis;
    const unsigned code = isAxis ? (control - firstAxis) / 2 : control;
    const char* found = libevdev_event_code_get_name(isAxis ? EV_ABS : EV_KEY, code);
    if (found == nullptr)
        return std::to_string(control);
    constexpr std::size_t prefix = 4; // "KEY_", "BTN_", "ABS_"
    const std::string_view name(found);
    const std::string_view end = !isAxis ? "" : (control - firstAxis) % 2 == 0 ? "-" : "+";
    return std::string(name.substr(name.find('_') == prefix - 1 ? prefix : 0)).append(end);
}

} // namespace ov::platform::evdev
