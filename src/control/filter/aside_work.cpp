// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/filter/aside_work.h"

#include "platform/threads/detached_thread.h"
#include "support/log.h"

#include <exception>
#include <mutex>
#include <string>
#include <utility>

namespace ov {

// What a thread shares with who wants its result.
struct AsideWork::Run {
    explicit Run(AsideWork& wanted) : receiver(&wanted) {}

    std::stop_source stop;
    std::mutex mutex;
    AsideWork* receiver; // guarded; nullptr when nobody waits any more
};

namespace {

AsideWork::Delivery failure(const std::string& reason, const AsideWork::Delivery& failed) {
    return [reason, failed] {
        WriteErrorLog(Error(0, reason), "AsideWork");
        failed();
    };
}

} // namespace

AsideWork::~AsideWork() {
    giveUp();
}

void AsideWork::start(Work work, Delivery failed) {
    giveUp();
    run_ = std::make_shared<Run>(*this);
    const auto run = run_;
    if (!platform::startDetached(
            [run, work = std::move(work), failed] { carryOut(run, work, failed); }))
        post(run, failure("no thread can be had", failed));
}

AsideWork::Delivery AsideWork::tried(const Work& work, const Delivery& failed,
                                     const std::stop_token& stop) {
    try {
        return work(stop);
    } catch (const std::exception& error) {
        return failure(error.what(), failed);
    } catch (...) {
        return failure("unknown", failed);
    }
}

// What leaves the thread would end the host.
void AsideWork::carryOut(const std::shared_ptr<Run>& run, const Work& work,
                         const Delivery& failed) noexcept {
    try {
        post(run, tried(work, failed, run->stop.get_token()));
    } catch (...) { // no memory even to tell it
        return;
    }
}

void AsideWork::post(const std::shared_ptr<Run>& run, const Delivery& delivery) {
    const std::lock_guard<std::mutex> lock(run->mutex);
    if (AsideWork* receiver = run->receiver; delivery && receiver != nullptr)
        QMetaObject::invokeMethod(
            receiver, [receiver, run, delivery] { receiver->deliver(run, delivery); },
            Qt::QueuedConnection);
}

void AsideWork::giveUp() {
    if (const auto run = std::exchange(run_, nullptr)) {
        run->stop.request_stop();
        const std::lock_guard<std::mutex> lock(run->mutex);
        run->receiver = nullptr;
    }
}

void AsideWork::deliver(const std::shared_ptr<Run>& run, const Delivery& delivery) {
    if (run != run_) // one was started since
        return;
    run_ = nullptr;
    delivery();
}

} // namespace ov
