// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <utility>

namespace ov {

// What the user asks of the control by buttons, menus, keys and headers. A command lets window
// messages be handled, and these may delete the menu, header or dialog that asked for it: so it
// never runs inside their event, but from the event loop, right after it.
//
// One command runs at a time. Those that come while one runs are dropped, as a button is dead
// meanwhile.
class CommandQueue final : public QObject {
public:
    using Command = std::function<void()>;
    // Runs a command and lets nothing out that it throws. `procedure` names it in the log.
    using Runner = std::function<void(const char* procedure, const Command& command)>;

    CommandQueue(QObject* parent, Runner runner) : QObject(parent), runner_(std::move(runner)) {}

    void post(const char* procedure, Command command);
    // While one runs this one waits for its end; of those that wait the last one is run.
    void postNext(const char* procedure, Command command);
    bool hasNext() const { return next_.has_value(); }
    bool isRunning() const { return running_; }
    // Some that were posted, not as the next, have not been run yet.
    bool isWaitedFor() const { return waiting_ > 0; }

private:
    using Next = std::pair<const char*, Command>;

    void enqueue(Command command);
    void runLater(Next next);
    void run(const char* procedure, const Command& command);

    Runner runner_;
    int waiting_ = 0;
    bool running_ = false;
    std::optional<Next> next_;
};

} // namespace ov
