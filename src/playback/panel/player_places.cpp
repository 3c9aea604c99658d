// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Where the user left a dictation, offered when it is opened again.

#include "dictation/dictation.h"
#include "playback/modMultimedia.h"
#include "playback/panel/player_panel.h"
#include "support/log.h"

#include <QAction>
#include <utility>

namespace ov {

using namespace modMultimedia;

namespace {

constexpr std::int32_t leastMs = 5000;   // nobody has listened yet
constexpr std::int32_t nearEndMs = 3000; // all has been heard

void report(const platform::Status& status) {
    if (!status.ok())
        WriteErrorLog(status, "PlayerPanel");
}

} // namespace

void PlayerPanel::setRememberedPositions(RememberedPositions positions) {
    positions_ = std::move(positions);
}

void PlayerPanel::setRemembers(bool remembers) {
    remembers_ = remembers;
    rememberAction_->setChecked(remembers);
}

void PlayerPanel::chooseRemembers(bool remembers) {
    setRemembers(remembers);
    if (!remembers) {
        cmdOfferedPosition_->withdraw();
        report(positions_.forgetAll());
    }
    Q_EMIT remembersChosen(remembers);
}

void PlayerPanel::offerPlace(std::int64_t bytes) {
    recording_ = {std::string(modDictation::dictationOfPath(file_).name), bytes};
    cmdOfferedPosition_->withdraw();
    const auto known = remembers_ ? positions_.find(recording_) : std::nullopt;
    if (known && *known >= leastMs && *known < lengthMs_ - nearEndMs)
        cmdOfferedPosition_->offer(*known);
}

// Before the device is moved or closed.
void PlayerPanel::keepPlace() {
    cmdOfferedPosition_->withdraw();
    if (!remembers_ || alias_.empty() || rate_ <= 0)
        return;
    constexpr std::int64_t msOfSecond = 1000;
    const auto position = static_cast<std::int32_t>(MciGetPosition(alias_) * msOfSecond / rate_);
    if (position >= lengthMs_ - nearEndMs)
        report(positions_.forget(recording_));
    else if (position >= leastMs)
        report(positions_.keep(recording_, position));
}

void PlayerPanel::goOnAtOffered() {
    if (alias_.empty())
        return;
    constexpr std::int64_t msOfSecond = 1000;
    const auto position = static_cast<std::int32_t>(cmdOfferedPosition_->milliseconds() *
                                                    std::int64_t{rate_} / msOfSecond);
    cmdOfferedPosition_->withdraw();
    noteStart(playFrom(position));
    position_ = MciGetPosition(alias_);
    if (playing_)
        startTimers();
    PlayerRefresh();
}

} // namespace ov
