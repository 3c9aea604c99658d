// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "tests/platform/input/fake_inputs.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ov::tests {

namespace {

struct Kernel {
    struct Plugged {
        ino_t file = 0;
        int handle = -1; // what is written here is read from the device
        FakeInputs::Device device;
    };
    std::mutex mutex;
    std::map<std::string, Plugged> devices; // by their files
};

Kernel& kernel() {
    static Kernel theKernel;
    return theKernel;
}

std::vector<unsigned char> bitsOf(const std::set<unsigned>& numbers) {
    std::vector<unsigned char> bits((KEY_CNT + 7) / 8);
    for (const unsigned number : numbers)
        bits[number / 8] = static_cast<unsigned char>(bits[number / 8] | 1U << number % 8);
    return bits;
}

int answer(void* target, std::size_t room, const void* value, std::size_t size) {
    std::memset(target, 0, room);
    std::memcpy(target, value, std::min(room, size));
    return static_cast<int>(std::min(room, size));
}

std::set<unsigned> codesOf(const FakeInputs::Device& device, unsigned type) {
    if (const auto found = device.codes.find(type); found != device.codes.end())
        return found->second;
    std::set<unsigned> types{EV_SYN};
    for (const auto& [known, codes] : device.codes)
        types.insert(known);
    return type == EV_SYN ? types : std::set<unsigned>{};
}

int ask(FakeInputs::Device& device, unsigned long request, void* target) {
    const auto number = static_cast<unsigned>(_IOC_NR(request));
    const std::size_t room = _IOC_SIZE(request);
    const bool asksWhatIsDown = number == _IOC_NR(EVIOCGKEY(0));
    if (asksWhatIsDown || (number >= 0x20 && number < 0x20 + EV_CNT)) {
        const auto bits = bitsOf(asksWhatIsDown ? device.down : codesOf(device, number - 0x20));
        return answer(target, room, bits.data(), bits.size());
    }
    if (number == _IOC_NR(EVIOCGNAME(0)))
        return answer(target, room, device.name.c_str(), device.name.size() + 1);
    if (request == EVIOCGID) {
        const input_id id{BUS_USB, device.kind.vendor, device.kind.product, 1};
        return answer(target, room, &id, sizeof id);
    }
    if (request == EVIOCGABS(ABS_Y)) {
        const input_absinfo axis{128, 0, 255, 0, 0, 0};
        return answer(target, room, &axis, sizeof axis);
    }
    if (request == EVIOCGRAB) {
        device.isGrabbed = target != nullptr;
        return 0;
    }
    constexpr unsigned nothing = 0;
    return answer(target, room, &nothing, sizeof nothing);
}

void write(const std::string& file, const void* bytes, std::size_t count) {
    const std::lock_guard lock(kernel().mutex);
    if (::write(kernel().devices.at(file).handle, bytes, count) != static_cast<ssize_t>(count))
        throw std::runtime_error("nothing can be sent");
}

} // namespace

FakeInputs::~FakeInputs() {
    const std::lock_guard lock(kernel().mutex);
    for (const auto& [file, plugged] : kernel().devices)
        close(plugged.handle);
    kernel().devices.clear();
}

void FakeInputs::plugIn(const std::string& file, Device device) {
    // Nobody shall find it before all is known of it.
    const std::string path = store_.native(file);
    const std::string hidden = store_.native("." + file);
    const std::lock_guard lock(kernel().mutex);
    struct stat info {};
    if (mkfifo(hidden.c_str(), 0600) != 0 || stat(hidden.c_str(), &info) != 0)
        throw std::runtime_error("no device " + path);
    kernel().devices[file] = {info.st_ino, open(hidden.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC),
                              std::move(device)};
    if (std::rename(hidden.c_str(), path.c_str()) != 0)
        throw std::runtime_error("no device " + path);
}

void FakeInputs::pullOut(const std::string& file) {
    const std::lock_guard lock(kernel().mutex);
    close(kernel().devices.at(file).handle);
    kernel().devices.erase(file);
    unlink(store_.native(file).c_str());
}

void FakeInputs::send(const std::string& file, unsigned type, unsigned code, std::int32_t value) {
    input_event event{};
    event.type = static_cast<std::uint16_t>(type);
    event.code = static_cast<std::uint16_t>(code);
    event.value = value;
    write(file, &event, sizeof event);
}

void FakeInputs::sendKey(const std::string& file, unsigned code, std::int32_t value) {
    send(file, EV_KEY, code, value);
    send(file, EV_SYN, SYN_REPORT, 0);
}

void FakeInputs::sendRubbish(const std::string& file) {
    write(file, "rubbish", 7);
}

void FakeInputs::setDown(const std::string& file, std::set<unsigned> keys) {
    const std::lock_guard lock(kernel().mutex);
    kernel().devices.at(file).device.down = std::move(keys);
}

bool FakeInputs::isGrabbed(const std::string& file) const {
    const std::lock_guard lock(kernel().mutex);
    return kernel().devices.at(file).device.isGrabbed;
}

// Of the device that the handle leads to, under the lock; nullptr for any other file.
static FakeInputs::Device* deviceOf(int handle) {
    struct stat info {};
    if (fstat(handle, &info) != 0 || !S_ISFIFO(info.st_mode))
        return nullptr;
    for (auto& [file, plugged] : kernel().devices)
        if (plugged.file == info.st_ino)
            return &plugged.device;
    return nullptr;
}

static int request(int handle, unsigned long what, void* target) {
    {
        const std::lock_guard lock(kernel().mutex);
        if (FakeInputs::Device* device = deviceOf(handle))
            return ask(*device, what, target);
    }
    return static_cast<int>(syscall(SYS_ioctl, handle, what, target));
}

} // namespace ov::tests

// Stands before the system's in the program that it is linked into, also for its modules.
extern "C" [[gnu::visibility("default")]] int ioctlOr(int handle, unsigned long what,
                                                      ...) __asm__("ioctl");

extern "C" int ioctlOr(int handle, unsigned long what, ...) {
    va_list arguments;
    va_start(arguments, what);
    void* target = va_arg(arguments, void*);
    va_end(arguments);
    return ov::tests::request(handle, what, target);
}
