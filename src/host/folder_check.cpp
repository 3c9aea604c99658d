// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/folder_check.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QTimer>
#include <chrono>
#include <future>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

namespace ov::host {

namespace {

constexpr std::chrono::milliseconds patience{1000};
// What a click may take, and nearly every folder does not.
constexpr std::chrono::milliseconds briefWait{200};

// An answer that never comes where no thread can be had.
std::future<bool> askOnThread(std::function<bool()> question) try {
    std::packaged_task<bool()> task(std::move(question));
    std::future<bool> answer = task.get_future();
    std::thread(std::move(task)).detach();
    return answer;
} catch (const std::system_error&) {
    return {};
}

bool isThere(const std::future<bool>& answer, std::chrono::milliseconds longest) {
    return answer.valid() && answer.wait_for(longest) == std::future_status::ready;
}

FolderAnswer answerOf(std::future<bool>& answer) {
    return answer.get() ? FolderAnswer::readable : FolderAnswer::unreadable;
}

} // namespace

void checkFolder(const QString& folder, QObject* receiver,
                 const std::function<void(FolderAnswer)>& then) {
    const auto answer = std::make_shared<std::future<bool>>(
        askOnThread([folder] { return QDir(folder).isReadable(); }));
    if (isThere(*answer, briefWait)) {
        then(answerOf(*answer));
        return;
    }
    auto* look = new QTimer(receiver);
    look->callOnTimeout(receiver, [answer, then, look, end = QDeadlineTimer(patience)] {
        const bool there = isThere(*answer, std::chrono::milliseconds(0));
        if (!there && !end.hasExpired())
            return;
        look->stop();
        look->deleteLater();
        then(there ? answerOf(*answer) : FolderAnswer::silent);
    });
    constexpr int lookIntervalMs = 10;
    look->start(lookIntervalMs);
}

std::optional<bool> answerInTime(std::function<bool()> question) {
    std::future<bool> answer = askOnThread(std::move(question));
    return isThere(answer, patience) ? std::optional(answer.get()) : std::nullopt;
}

} // namespace ov::host
