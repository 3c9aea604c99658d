// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/command_queue.h"

#include <utility>

namespace ov {

void CommandQueue::post(const char* procedure, Command command) {
    if (running_)
        return;
    ++waiting_;
    enqueue([this, procedure, command = std::move(command)] {
        --waiting_;
        run(procedure, command);
    });
}

void CommandQueue::enqueue(Command command) {
    QMetaObject::invokeMethod(this, std::move(command), Qt::QueuedConnection);
}

void CommandQueue::postNext(const char* procedure, Command command) {
    if (running_)
        next_ = Next(procedure, std::move(command));
    else
        runLater({procedure, std::move(command)});
}

void CommandQueue::runLater(Next next) {
    enqueue([this, next = std::move(next)] { run(next.first, next.second); });
}

void CommandQueue::run(const char* procedure, const Command& command) {
    if (running_) // one that waited with this one lets messages be handled
        return;
    running_ = true;
    runner_(procedure, command);
    running_ = false;
    if (auto next = std::exchange(next_, std::nullopt))
        runLater(std::move(*next));
}

} // namespace ov
