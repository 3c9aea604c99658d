// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/pedal/pedal_desk.h"

#include <QEvent>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <utility>

namespace ov {

namespace {

PedalFeet::Time now() {
    return std::chrono::steady_clock::now();
}

} // namespace

std::shared_ptr<PedalDesk> PedalDesk::shared() {
    thread_local std::weak_ptr<PedalDesk> inUse;
    std::shared_ptr<PedalDesk> one = inUse.lock();
    if (!one)
        inUse = one = std::shared_ptr<PedalDesk>(new PedalDesk);
    return one;
}

PedalDesk::PedalDesk() {
    winding_.setTimerType(Qt::PreciseTimer);
    winding_.setInterval(PedalFeet::windInterval);
    connect(&winding_, &QTimer::timeout, this, [this] {
        const auto alive = shared_from_this();
        feet_.wind(now());
        timeWinding();
    });
}

PedalDesk::~PedalDesk() = default;

// ---- The players

void PedalDesk::add(QWidget& panel, PedalledPlayer& player) {
    players_.push_back({&panel, &player});
    panel.installEventFilter(this);
    if (feet_.player() == nullptr)
        feet_.obey(&player, now());
}

void PedalDesk::use(PedalledPlayer& player) {
    const auto known = std::ranges::find(players_, &player, &Known::player);
    if (known == players_.end())
        return;
    std::rotate(known, known + 1, players_.end());
    feet_.obey(&player, now());
    timeWinding();
}

void PedalDesk::remove(PedalledPlayer& player) {
    feet_.forget(player);
    std::erase_if(players_, [&](const Known& known) { return known.player == &player; });
    if (feet_.player() == nullptr && !players_.empty())
        feet_.obey(players_.back().player, now());
    timeWinding();
}

bool PedalDesk::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        const auto known = std::ranges::find(players_, watched, &Known::panel);
        if (known != players_.end())
            use(*known->player);
    }
    return QObject::eventFilter(watched, event);
}

// ---- The devices

void PedalDesk::setAssignments(const PedalAssignments& assignments) {
    if (assignments != feet_.assignments())
        guard_ = {};
    feet_.setAssignments(assignments, now());
    wish();
}

PedalDesk::Look::Look(PedalDesk& desk) : desk_(desk.shared_from_this()) {
    ++desk.looks_;
    desk.feet_.liftAll(now());
    desk.wish();
}

PedalDesk::Look::~Look() {
    --desk_->looks_;
    desk_->wish();
}

void PedalDesk::wish() {
    platform::InputWish wish = feet_.assignments().wish();
    wish.all = looks_ > 0;
    std::erase_if(wish.grabbed, [this](const auto& kind) { return guard_.isLetGo(kind); });
    timeWinding();
    if (!wish.all && wish.kinds.empty()) {
        devices_ = nullptr;
        situation_ = {};
        return;
    }
    if (!devices_)
        watch();
    if (devices_)
        devices_->wish(std::move(wish));
}

void PedalDesk::watch() {
    platform::Status status;
    if (const platform::InputModule* module = platform::inputModule(status))
        devices_ = module->watch(*this, {}, status);
    if (!devices_)
        takeSituation({{}, status});
}

void PedalDesk::pressed(const platform::InputPress& press) {
    QMetaObject::invokeMethod(
        this, [this, press] { take(press); }, Qt::QueuedConnection);
}

void PedalDesk::situationChanged(const platform::InputSituation& situation) {
    QMetaObject::invokeMethod(
        this, [this, situation] { takeSituation(situation); }, Qt::QueuedConnection);
}

// What a player does may be the end of the last one.
void PedalDesk::take(const platform::InputPress& press) {
    const auto alive = shared_from_this();
    if (guard_.note(press, feet_.assignments())) {
        wish();
        Q_EMIT changed();
    }
    if (looks_ == 0)
        feet_.press(press, now());
    timeWinding();
    Q_EMIT received(press);
}

void PedalDesk::takeSituation(const platform::InputSituation& situation) {
    situation_ = situation;
    Q_EMIT changed();
}

void PedalDesk::timeWinding() {
    if (!feet_.isWinding())
        winding_.stop();
    else if (!winding_.isActive())
        winding_.start();
}

} // namespace ov
