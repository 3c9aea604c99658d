// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/command_queue.h"

#include <utility>

namespace ov {

void CommandQueue::post(const char* procedure, Command command) {
    if (running_)
        return;
    QMetaObject::invokeMethod(
        this, [this, procedure, command = std::move(command)] { run(procedure, command); },
        Qt::QueuedConnection);
}

void CommandQueue::postNext(const char* procedure, Command command) {
    if (running_)
        next_ = {procedure, std::move(command)};
    else
        post(procedure, std::move(command));
}

void CommandQueue::run(const char* procedure, const Command& command) {
    if (running_) // one that waited with this one lets messages be handled
        return;
    running_ = true;
    runner_(procedure, command);
    running_ = false;
    if (auto next = std::exchange(next_, std::nullopt))
        post(next->first, std::move(next->second));
}

} // namespace ov
