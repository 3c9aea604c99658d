// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/posix/evdev/evdev_watch.h"

#include "platform/posix/evdev/evdev_names.h"
#include "platform/threads/quiet_start.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <dirent.h>
#include <exception>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <utility>

namespace ov::platform::evdev {

namespace {

constexpr int retryInterval = 1000; // ms, while there is no directory

bool isDeviceName(std::string_view name) {
    return name.starts_with("event");
}

} // namespace

Watch::Watch(InputListener& listener, std::string directory)
    : listener_(listener),
      directory_(std::move(directory)),
      wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

Watch::~Watch() {
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        quits_ = true;
    }
    eventfd_write(wake_.get(), 1);
    thread_.join();
}

// The host's signals stay with its own threads.
bool Watch::begin() {
    if (!wake_.valid())
        return false;
    try {
        platform::startQuietly([this] { thread_ = std::thread([this] { work(); }); });
    } catch (const std::exception&) {
        errno = EAGAIN;
    }
    return thread_.joinable();
}

void Watch::wish(InputWish wish) {
    {
        const std::lock_guard lock(mutex_);
        next_ = std::move(wish);
    }
    eventfd_write(wake_.get(), 1);
}

// ---- On the thread

void Watch::work() {
    while (takeWish()) {
        if (!directoryEvents_.valid())
            watchDirectory();
        if (std::exchange(isChanged_, false))
            tell();
        std::vector<pollfd> waiting{{wake_.get(), POLLIN, 0}, {directoryEvents_.get(), POLLIN, 0}};
        std::vector<std::string> names;
        for (const auto& [name, node] : nodes_)
            if (node.device) {
                waiting.push_back({node.device->handle(), POLLIN, 0});
                names.push_back(name);
            }
        poll(waiting.data(), waiting.size(), directoryEvents_.valid() ? -1 : retryInterval);
        for (std::size_t i = 0; i < names.size(); ++i)
            if (const short events = waiting[i + 2].revents; events != 0)
                readFrom(names[i], events);
        if (waiting[1].revents != 0)
            takeDirectoryEvents();
    }
    for (auto& [name, node] : nodes_)
        close(node);
}

// False at the end.
bool Watch::takeWish() {
    eventfd_t times = 0;
    eventfd_read(wake_.get(), &times);
    {
        const std::lock_guard lock(mutex_);
        if (quits_)
            return false;
        if (wish_ == next_)
            return true;
        wish_ = next_;
    }
    for (auto& [name, node] : nodes_)
        if (node.device)
            settle(node);
        else if (node.told && isWished(node.told->kind))
            open(name, node);
    return true;
}

void Watch::watchDirectory() {
    FileDescriptor events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    constexpr std::uint32_t watched = IN_CREATE | IN_MOVED_TO | IN_ATTRIB | IN_DELETE |
                                      IN_MOVED_FROM | IN_DELETE_SELF | IN_ONLYDIR;
    const bool isThere =
        events.valid() && inotify_add_watch(events.get(), directory_.c_str(), watched) >= 0;
    const Status before = std::exchange(problem_, isThere ? Status() : systemError(directory_));
    isChanged_ = isChanged_ || before.number() != problem_.number();
    if (!isThere)
        return;
    directoryEvents_ = std::move(events);
    lookAtAll();
}

void Watch::takeDirectoryEvents() {
    constexpr std::size_t room = 4096;
    alignas(inotify_event) std::array<char, room> buffer; // NOLINT(*-member-init): filled by read
    const ssize_t got = ::read(directoryEvents_.get(), buffer.data(), buffer.size());
    for (ssize_t place = 0; place < got;) {
        const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + place);
        takeDirectoryEvent(*event);
        place += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
}

// A device that has just come may be ours only a moment later, when its rights are set.
void Watch::takeDirectoryEvent(const inotify_event& event) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        lookAtAll();
    } else if ((event.mask & (IN_DELETE_SELF | IN_IGNORED)) != 0) {
        directoryEvents_.reset();
    } else if (const std::string name = event.len > 0 ? event.name : ""; isDeviceName(name)) {
        const auto node = nodes_.find(name);
        const bool isGone = (event.mask & (IN_DELETE | IN_MOVED_FROM)) != 0;
        if (isGone && node != nodes_.end()) {
            close(node->second);
            nodes_.erase(node);
            isChanged_ = true;
        } else if (!isGone && (node == nodes_.end() || !node->second.device)) {
            lookAt(name);
        }
    }
}

void Watch::lookAtAll() {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(directory_.c_str()), closedir);
    while (const dirent* entry = folder ? readdir(folder.get()) : nullptr)
        if (isDeviceName(entry->d_name) && !nodes_[entry->d_name].device)
            lookAt(entry->d_name);
}

void Watch::lookAt(const std::string& name) {
    open(name, nodes_[name]);
}

void Watch::open(const std::string& name, Node& node) {
    isChanged_ = true;
    Status status;
    auto device = Device::open(directory_ + name, status);
    if (!device) {
        node.told = InputDevice{systemKind(name), systemName(name, directory_ + name), status};
        return;
    }
    node.told.reset();
    if (!device->hasControls())
        return;
    node.told = InputDevice{device->kind(), device->name(), {}};
    if (!isWished(node.told->kind))
        return;
    node.device = std::move(device);
    node.number = ++lastNumber_;
    settle(node);
}

// As the wish has it now.
void Watch::settle(Node& node) {
    const InputKind kind = node.told->kind;
    if (!isWished(kind)) {
        close(node);
        return;
    }
    const bool isGrabbed = std::ranges::count(wish_.grabbed, kind) > 0;
    Status status = node.device->grab(isGrabbed);
    isChanged_ = isChanged_ || status.number() != node.told->problem.number();
    node.told->problem = std::move(status);
}

void Watch::close(Node& node) {
    if (const auto device = std::exchange(node.device, nullptr))
        device->release(teller(node));
}

// One that is gone keeps its name until the directory tells.
void Watch::readFrom(std::string_view name, short events) {
    Node& node = nodes_.find(std::string(name))->second;
    const bool isThere =
        node.device->read(teller(node)) && (events & (POLLERR | POLLHUP | POLLNVAL)) == 0;
    if (isThere) {
        settle(node);
        return;
    }
    close(node);
    node.told.reset();
    isChanged_ = true;
}

Device::Changed Watch::teller(const Node& node) const {
    return [this, number = node.number, kind = node.told->kind](std::uint32_t control, bool down) {
        listener_.pressed({number, kind, control, down});
    };
}

bool Watch::isWished(InputKind kind) const {
    return wish_.all || std::ranges::count(wish_.kinds, kind) > 0;
}

void Watch::tell() {
    InputSituation situation{{}, problem_};
    for (const auto& [name, node] : nodes_)
        if (node.told)
            situation.devices.push_back(*node.told);
    listener_.situationChanged(situation);
}

std::unique_ptr<InputDevices> watch(InputListener& listener, const std::string& directory,
                                    Status& status) {
    auto devices = std::make_unique<Watch>(listener, directory.empty() ? std::string(usualDirectory)
                                                                       : directory);
    if (devices->begin())
        return devices;
    status = systemError(directory);
    return nullptr;
}

} // namespace ov::platform::evdev
