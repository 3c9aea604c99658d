// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files.h"
#include "platform/status.h"
#include "platform/threads/detached_thread.h"
#include "platform/user_interface.h"

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

// Calls of the system that may not come back: on a file server that is dead they keep their caller
// for minutes, or for ever. An errand is such a call on a thread of its own. Who sent it waits as
// long as he likes and then leaves it behind; it ends by itself, and what it brings is dropped.
//
// The call holds all that it uses, by value: it may come back long after its sender. It has the
// sender's drive folder; other state that is kept per thread (language, settings, the user
// interface) it does not have.

namespace ov::platform {

// What a person may be kept waiting for.
constexpr std::chrono::milliseconds patience{1000};

// For a program without a window, whose user ends by Ctrl-C what takes too long: from now on
// patiently() and its like are calls as any other, which costs no thread.
void waitWithoutEnd();
bool isWaitedForWithoutEnd();

template <typename Result>
class Errand {
public:
    template <typename Call>
    explicit Errand(Call call) {
        auto task = std::make_shared<std::packaged_task<Result()>>(
            [folder = driveFolder(), call = std::move(call)]() mutable {
                setDriveFolder(folder);
                return call();
            });
        answer_ = task->get_future();
        if (!startDetached([task] { (*task)(); }))
            (*task)(); // without a thread it is a call as any other
    }

    // Waits that long at most. True when the answer is there, also later on.
    bool wait(std::chrono::milliseconds longest) const {
        return answer_.wait_for(longest) == std::future_status::ready;
    }
    bool isDone() const { return wait(std::chrono::milliseconds(0)); }

    // The answer, once; waits for it. What the call threw is thrown here.
    Result take() { return answer_.get(); }

private:
    std::future<Result> answer_;
};

// A directory from which a call has not come back is not asked again until it has, so that a row of
// questions keeps a person waiting once, and only one thread hangs there. For patiently() and its
// like; may be used from any thread.
class CalledPlace {
public:
    // The directory that `path` lies in.
    explicit CalledPlace(std::string_view path);
    ~CalledPlace(); // the call is back
    CalledPlace(const CalledPlace&) = delete;
    CalledPlace& operator=(const CalledPlace&) = delete;

    // Nobody waits for the call any more.
    void leave();
    // Whether a call that was left is still out.
    static bool isSilent(std::string_view path);

private:
    std::string directory_;
    bool isLeft_ = false;
};

namespace errand {

template <typename Call>
using Answer = std::optional<std::invoke_result_t<Call>>;

template <typename Call, typename Wait>
Answer<Call> ask(std::string_view path, Call call, Wait wait) {
    if (isWaitedForWithoutEnd())
        return call();
    if (CalledPlace::isSilent(path))
        return std::nullopt;
    const auto place = std::make_shared<CalledPlace>(path);
    Errand<std::invoke_result_t<Call>> errand(
        [place, call = std::move(call)]() mutable { return call(); });
    if (wait(errand))
        return errand.take();
    place->leave();
    return std::nullopt;
}

} // namespace errand

// The answer of `call`, which asks something of the file or directory `path`; nothing when it does
// not come within our patience, or is known not to come. The thread stands still meanwhile.
template <typename Call>
errand::Answer<Call> patiently(std::string_view path, Call call) {
    return errand::ask(path, std::move(call),
                       [](const auto& errand) { return errand.wait(patience); });
}

// The same, but window messages are handled meanwhile: they may run any code of the program, also
// the end of the caller. `goOn()` is asked after each; false ends the wait.
template <typename Call, typename GoOn>
errand::Answer<Call> patientlyPumping(std::string_view path, Call call, GoOn goOn) {
    return errand::ask(path, std::move(call), [&goOn](const auto& errand) {
        constexpr std::chrono::milliseconds step{10};
        const auto end = std::chrono::steady_clock::now() + patience;
        while (!errand.wait(step) && std::chrono::steady_clock::now() < end) {
            userInterface().processMessages();
            if (!goOn())
                break;
        }
        return errand.isDone();
    });
}

// What to say of a place that does not answer.
Status noAnswer(std::string_view path);

// patiently() for calls whose answer is a Status.
template <typename Call>
Status patientStatus(std::string_view path, Call call) {
    std::optional<Status> status = patiently(path, std::move(call));
    return status ? std::move(*status) : noAnswer(path);
}

} // namespace ov::platform
