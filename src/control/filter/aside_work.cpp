// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/filter/aside_work.h"

#include "platform/threads/detached_thread.h"

#include <mutex>
#include <utility>

namespace ov {

// What a thread shares with who wants its result.
struct AsideWork::Run {
    explicit Run(AsideWork& wanted) : receiver(&wanted) {}

    std::stop_source stop;
    std::mutex mutex;
    AsideWork* receiver; // guarded; nullptr when nobody waits any more
};

AsideWork::~AsideWork() {
    giveUp();
}

void AsideWork::start(Work work) {
    giveUp();
    run_ = std::make_shared<Run>(*this);
    const auto carryOut = [run = run_, work = std::move(work)] {
        const Delivery delivery = work(run->stop.get_token());
        const std::lock_guard<std::mutex> lock(run->mutex);
        if (AsideWork* receiver = run->receiver; delivery && receiver != nullptr)
            QMetaObject::invokeMethod(
                receiver, [receiver, run, delivery] { receiver->deliver(run, delivery); },
                Qt::QueuedConnection);
    };
    if (!platform::startDetached(carryOut))
        carryOut();
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
