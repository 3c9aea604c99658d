// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Places in a dictation: where the user left it, where he wants to go, and the time stamp of where
// he is.

#include "dictation/dictation.h"
#include "playback/milliseconds.h"
#include "playback/modMultimedia.h"
#include "playback/panel/player_panel.h"
#include "playback/panel/player_texts.h"
#include "support/language/text_ids.h"
#include "support/unsaved.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QToolTip>
#include <algorithm>
#include <utility>

namespace ov {

using namespace modMultimedia;

namespace {

constexpr std::int32_t anyDevice = -1;
constexpr std::int32_t leastMs = 5000;   // nobody has listened yet
constexpr std::int32_t nearEndMs = 3000; // all has been heard

} // namespace

void PlayerPanel::setRememberedPositions(RememberedPositions positions,
                                         std::function<bool()> isWanted) {
    positions_ = std::move(positions);
    isRemembering_ = std::move(isWanted);
}

bool PlayerPanel::remembers() const {
    return choices_.remembersPositions && (!isRemembering_ || isRemembering_());
}

// Once: it fails for each dictation then.
void PlayerPanel::reportUnkept(const platform::Status& status) const {
    if (!status.ok())
        reportUnsaved(positions_.file(), status, "PlayerPanel");
}

void PlayerPanel::choose(const PlayerChoices& choices) {
    const PlayerChoices before = choices_;
    const bool forgets = before.remembersPositions && !choices.remembersPositions;
    setChoices(choices);
    if (forgets) {
        cmdOfferedPosition_->withdraw();
        reportUnkept(positions_.forgetAll());
    }
    Q_EMIT choicesMade(choices_, before);
}

void PlayerPanel::offerPlace(std::int64_t bytes) {
    recording_ = {std::string(modDictation::dictationOfPath(file_).name), bytes};
    cmdOfferedPosition_->withdraw();
    const auto known = remembers() ? positions_.find(recording_) : std::nullopt;
    if (known && *known >= leastMs && *known < lengthMs_ - nearEndMs)
        cmdOfferedPosition_->offer(*known);
}

// Before the device is moved or closed.
void PlayerPanel::keepPlace() {
    cmdOfferedPosition_->withdraw();
    if (alias_.empty() || rate_ <= 0 || !remembers())
        return;
    const auto position = static_cast<std::int32_t>(MciGetPosition(alias_) * msOfSecond / rate_);
    if (position >= lengthMs_ - nearEndMs)
        forgetPlace();
    else if (position >= leastMs)
        reportUnkept(positions_.keep(recording_, position));
}

// It has been heard to its end, which may come before the length that the file promises.
void PlayerPanel::forgetPlace() {
    cmdOfferedPosition_->withdraw();
    if (remembers())
        reportUnkept(positions_.forget(recording_));
}

// Also of a dictation that pauses.
void PlayerPanel::playOnFrom(std::int32_t position) {
    noteStart(playFrom(position));
    position_ = MciGetPosition(alias_);
    if (playing_)
        startTimers();
    PlayerRefresh();
}

void PlayerPanel::goOnAtOffered() {
    const std::int64_t milliseconds = cmdOfferedPosition_->milliseconds();
    cmdOfferedPosition_->withdraw();
    if (!alias_.empty())
        playOnFrom(placeFrom(static_cast<std::int32_t>(milliseconds * rate_ / msOfSecond),
                             -choices_.backUpSeconds));
}

// ---- Going on from it

bool PlayerPanel::backsUpFrom(std::int32_t position) const {
    return choices_.backUpSeconds > 0 && rate_ > 0 && position > 0 && position < length_ &&
           position != restsAt_;
}

// From where it stands, also after a jump; from its end it begins anew.
std::string PlayerPanel::playBackedUp() {
    const std::int32_t position = MciGetPosition(alias_);
    if (backsUpFrom(position))
        return playFrom(placeFrom(position, -choices_.backUpSeconds));
    return playOn();
}

std::string PlayerPanel::resume() {
    if (isResting())
        return playBackedUp();
    const std::int32_t position = MciGetPosition(alias_);
    return backsUpFrom(position)           ? playFrom(placeFrom(position, -choices_.backUpSeconds))
           : playsLoop_ || loop_.isWhole() ? playOn() // it may end elsewhere now
                                           : MciResume(alias_);
}

// ---- Playing from a place

// The layer keeps the answer of the play to itself, so one that does not begin is asked again.
std::string PlayerPanel::playFrom(std::int32_t position) {
    playsLoop_ = loop_.isBefore(position);
    std::string problem = playsLoop_ ? MciPlay(alias_, anyDevice, position, loop_.to())
                                     : MciSeekAndPlay(alias_, position);
    Q_EMIT moved();
    return problem.empty() && !isPlaying() ? MciCommand("play " + alias_) : problem;
}

std::string PlayerPanel::playOn() {
    const std::int32_t position = MciGetPosition(alias_);
    if (loop_.isBefore(position))
        return playFrom(position);
    playsLoop_ = false;
    return MciPlay(alias_, anyDevice, -1, -1);
}

// ---- Moving through it

std::int32_t PlayerPanel::placeFrom(std::int32_t position, std::int64_t seconds) const {
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(position + seconds * rate_, 0, std::max(length_, 0)));
}

void PlayerPanel::skip(std::int32_t seconds) {
    if (alias_.empty() || rate_ <= 0)
        return;
    goToUnits(placeFrom(std::max(MciGetPosition(alias_), 0), seconds));
}

void PlayerPanel::playAgain() {
    constexpr std::int32_t usualSeconds = 5;
    if (alias_.empty() || rate_ <= 0)
        return;
    const std::int32_t seconds = choices_.backUpSeconds > 0 ? choices_.backUpSeconds : usualSeconds;
    playOnFrom(placeFrom(std::max(MciGetPosition(alias_), 0), -seconds));
}

// In sight and aloud.
void PlayerPanel::tell(const QString& words) {
    QToolTip::showText(
        lblSeachPlayerStatus_->mapToGlobal(lblSeachPlayerStatus_->rect().bottomLeft()),
        widgets::toolTipText(words), lblSeachPlayerStatus_);
    widgets::announce(*lblSeachPlayerStatus_, words);
}

void PlayerPanel::askForTime() {
    if (!alias_.empty() && rate_ > 0)
        txtGoToTime_->open(length_ / rate_);
}

void PlayerPanel::goToTime(const TypedTime& time) {
    if (alias_.empty() || rate_ <= 0) // it has ended meanwhile
        return;
    const std::int32_t now = std::max(MciGetPosition(alias_), 0);
    goToUnits(placeFrom(time.isRelative ? now : 0, time.seconds));
}

// Not to its end, where it would be closed.
void PlayerPanel::goToUnits(std::int64_t place) {
    const std::int32_t now = std::max(MciGetPosition(alias_), 0);
    const std::int32_t last = std::max(now, length_ - rate_);
    seekTo(static_cast<std::int32_t>(std::clamp<std::int64_t>(place, 0, last)));
    PlayerRefresh();
}

// ---- Time stamps

QString PlayerPanel::timeStampText() const {
    if (alias_.empty())
        return {};
    return timeStamp(choices_.timeStampForm,
                     FormatPlayTime(std::max(MciGetPosition(alias_), 0), rate_),
                     cmdPlayedDictation_->words());
}

void PlayerPanel::copyTimeStamp() {
    const QString stamp = timeStampText();
    if (stamp.isEmpty())
        return;
    QGuiApplication::clipboard()->setText(stamp);
    tell(widgets::text(text_id::timeStampCopied, {widgets::toUtf8(stamp)}));
}

} // namespace ov
