// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/evdev/evdev_device.h"

#include <map>
#include <mutex>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

struct inotify_event;

namespace ov::platform::evdev {

// A thread that waits for the devices of a directory. Open are only those that are wished for: what
// is typed on others is nobody's business here.
class Watch final : public InputDevices {
public:
    Watch(InputListener& listener, std::string directory);
    ~Watch() override;
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    // False with errno set when the system gives no more.
    bool begin();
    void wish(InputWish wish) override;

private:
    struct Node {
        std::unique_ptr<Device> device; // while it is wished for
        std::uint32_t number = 0;
        std::optional<InputDevice> told; // nothing when it has nothing to press
    };
    using Nodes = std::map<std::string, Node>; // by the names of their files

    void work();
    bool takeWish();
    void watchDirectory();
    void takeDirectoryEvents();
    void takeDirectoryEvent(const inotify_event& event);
    void lookAtAll();
    void lookAt(const std::string& name);
    void open(const std::string& name, Node& node);
    void settle(Node& node);
    void close(Node& node);
    void readFrom(std::string_view name, short events);
    void tell();
    Device::Changed teller(const Node& node) const;
    bool isWished(InputKind kind) const;

    InputListener& listener_;
    const std::string directory_; // ends in "/"
    FileDescriptor wake_;
    std::mutex mutex_; // guards the next two
    InputWish next_;
    bool quits_ = false;

    // The thread's.
    InputWish wish_;
    FileDescriptor directoryEvents_; // not valid while there is no directory
    Status problem_;
    Nodes nodes_;
    std::uint32_t lastNumber_ = 0;
    bool isChanged_ = true; // since it was told

    std::thread thread_;
};

} // namespace ov::platform::evdev
