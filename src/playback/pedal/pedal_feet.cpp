// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/pedal/pedal_feet.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ov {

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

struct WindStep {
    milliseconds from;
    int speed;
};
constexpr std::array<WindStep, 4> windSteps{{{0ms, 5}, {1000ms, 10}, {2500ms, 20}, {5000ms, 40}}};

// So near to the end the player would close it.
constexpr milliseconds keptFromEnd = 1s;

} // namespace

int PedalFeet::windSpeed(milliseconds held) noexcept {
    int speed = windSteps.front().speed;
    for (const WindStep& step : windSteps)
        if (held >= step.from)
            speed = step.speed;
    return speed;
}

void PedalFeet::obey(PedalledPlayer* player, Time now) {
    if (player == player_)
        return;
    liftAll(now);
    player_ = player;
}

void PedalFeet::forget(const PedalledPlayer& player) {
    if (player_ != &player)
        return;
    player_ = nullptr;
    held_.clear();
    winding_.reset();
    motion_ = Motion::rest;
}

void PedalFeet::setAssignments(PedalAssignments assignments, Time now) {
    if (assignments != assignments_)
        liftAll(now);
    assignments_ = std::move(assignments);
}

void PedalFeet::liftAll(Time now) {
    held_.clear();
    settle(now);
}

void PedalFeet::press(const platform::InputPress& press, Time now) {
    lift(press); // one that goes down twice has come up unheard
    const auto action = assignments_.actionOf({press.kind, press.control});
    if (press.down && action && player_ != nullptr) {
        held_.push_back({press.device, press.control, *action});
        if (*action != PedalAction::playWhileHeld && *action != PedalAction::windBack &&
            *action != PedalAction::windForward)
            player_->pedalDo(*action, assignments_.jumpSeconds());
    }
    settle(now);
}

void PedalFeet::lift(const platform::InputPress& press) {
    std::erase_if(held_, [&](const Held& held) {
        return held.device == press.device && held.control == press.control;
    });
}

// Of several pedals the last one that went down leads, but winding goes before playing.
PedalFeet::Motion PedalFeet::wanted() const noexcept {
    Motion motion = Motion::rest;
    for (const Held& held : held_)
        if (held.action == PedalAction::windBack)
            motion = Motion::back;
        else if (held.action == PedalAction::windForward)
            motion = Motion::forward;
        else if (held.action == PedalAction::playWhileHeld && motion == Motion::rest)
            motion = Motion::play;
    return motion;
}

void PedalFeet::settle(Time now) {
    const Motion before = std::exchange(motion_, wanted());
    if (player_ == nullptr || before == motion_)
        return;
    const auto winds = [](Motion motion) {
        return motion == Motion::back || motion == Motion::forward;
    };
    if (winds(motion_)) {
        if (!winds(before))
            beginWinding(before, now);
        else if (winding_)
            winding_->since = now;
        wind(now);
        return;
    }
    if (winds(before))
        endWinding();
    if (motion_ == Motion::play)
        player_->pedalPlay();
    else if (before == Motion::play)
        player_->pedalRest();
}

bool PedalFeet::isWinding() const noexcept {
    return winding_.has_value();
}

void PedalFeet::beginWinding(Motion before, Time now) {
    if (const auto place = player_->pedalPlace())
        winding_ = Winding{now, place->at, place->length,
                           before == Motion::rest && player_->isPedalPlaying()};
}

// Nothing else has been opened in its place either.
bool PedalFeet::isStillOpen(const Winding& winding) const {
    const auto place = player_->pedalPlace();
    return place && place->length == winding.length;
}

// Back to what it did before; a pedal that is still held for playing says for itself what it wants.
void PedalFeet::endWinding() {
    const auto winding = std::exchange(winding_, std::nullopt);
    if (!winding || !isStillOpen(*winding))
        return;
    const bool goesOn = motion_ == Motion::play || winding->goesOn;
    if (goesOn && !player_->isPedalPlaying())
        player_->pedalPlayFrom(winding->place);
    else if (!goesOn)
        player_->pedalRestAt(winding->place);
}

void PedalFeet::wind(Time now) {
    if (!winding_)
        return;
    if (!isStillOpen(*winding_)) {
        winding_.reset();
        return;
    }
    const auto held = std::chrono::duration_cast<milliseconds>(now - winding_->since);
    const milliseconds step = windInterval * windSpeed(held);
    const milliseconds wanted = winding_->place + (motion_ == Motion::back ? -step : step);
    const milliseconds last = std::max(winding_->length - keptFromEnd, 0ms);
    const milliseconds reached = std::clamp(wanted, 0ms, std::max(last, winding_->place));
    const bool isThere = std::exchange(winding_->place, reached) == reached;
    if (reached != wanted) {
        if (!isThere || player_->isPedalPlaying())
            player_->pedalRestAt(reached);
    } else {
        player_->pedalPlayFrom(reached);
    }
}

} // namespace ov
