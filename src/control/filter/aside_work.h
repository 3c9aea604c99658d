// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <stop_token>

namespace ov {

// Work on a thread of its own, beside the window. Only the newest is wanted: one that is given up
// ends by itself, and what it brings is dropped.
class AsideWork final : public QObject {
public:
    // What to do with the result, on the thread of this object; empty: nothing.
    using Delivery = std::function<void()>;
    // Holds all that it uses, by value.
    using Work = std::function<Delivery(const std::stop_token& stop)>;

    using QObject::QObject;
    ~AsideWork() override;
    AsideWork(const AsideWork&) = delete;
    AsideWork& operator=(const AsideWork&) = delete;

    // The delivery comes later, from the event loop. In its place comes `failed`, and a line in the
    // log, when the work throws or no thread can be had.
    void start(Work work, Delivery failed);
    void giveUp();

private:
    struct Run;
    static Delivery tried(const Work& work, const Delivery& failed, const std::stop_token& stop);
    static void carryOut(const std::shared_ptr<Run>& run, const Work& work,
                         const Delivery& failed) noexcept;
    static void post(const std::shared_ptr<Run>& run, const Delivery& delivery);
    void deliver(const std::shared_ptr<Run>& run, const Delivery& delivery);

    std::shared_ptr<Run> run_; // that is wanted
};

} // namespace ov
