// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Places in a dictation: where the user left it, where he wants to go, and the time stamp of where
// he is.

#include "dictation/dictation.h"
#include "playback/modMultimedia.h"
#include "playback/panel/player_panel.h"
#include "playback/panel/player_texts.h"
#include "support/language/text_ids.h"
#include "support/unsaved.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QActionGroup>
#include <QClipboard>
#include <QGuiApplication>
#include <QToolTip>
#include <algorithm>
#include <utility>

namespace ov {

using namespace modMultimedia;

namespace {

constexpr std::int64_t msOfSecond = 1000;
constexpr std::int32_t leastMs = 5000;   // nobody has listened yet
constexpr std::int32_t nearEndMs = 3000; // all has been heard

} // namespace

void PlayerPanel::setRememberedPositions(RememberedPositions positions) {
    positions_ = std::move(positions);
}

// Once: it fails for each dictation then.
void PlayerPanel::reportUnkept(const platform::Status& status) const {
    if (!status.ok())
        reportUnsaved(positions_.file(), status, "PlayerPanel");
}

void PlayerPanel::setRemembers(bool remembers) {
    remembers_ = remembers;
    rememberAction_->setChecked(remembers);
}

void PlayerPanel::chooseRemembers(bool remembers) {
    setRemembers(remembers);
    if (!remembers) {
        cmdOfferedPosition_->withdraw();
        reportUnkept(positions_.forgetAll());
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
    const auto position = static_cast<std::int32_t>(MciGetPosition(alias_) * msOfSecond / rate_);
    if (position >= lengthMs_ - nearEndMs)
        forgetPlace();
    else if (position >= leastMs)
        reportUnkept(positions_.keep(recording_, position));
}

// It has been heard to its end, which may come before the length that the file promises.
void PlayerPanel::forgetPlace() {
    cmdOfferedPosition_->withdraw();
    if (remembers_)
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
                             -backUpSeconds_));
}

// ---- Moving through it

std::int32_t PlayerPanel::placeFrom(std::int32_t position, std::int64_t seconds) const {
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(position + seconds * rate_, 0, std::max(length_, 0)));
}

void PlayerPanel::skip(std::int32_t seconds) {
    if (alias_.empty() || rate_ <= 0)
        return;
    seekTo(placeFrom(std::max(MciGetPosition(alias_), 0), seconds));
    PlayerRefresh();
}

void PlayerPanel::playAgain() {
    constexpr std::int32_t usualSeconds = 5;
    if (alias_.empty() || rate_ <= 0)
        return;
    const std::int32_t seconds = backUpSeconds_ > 0 ? backUpSeconds_ : usualSeconds;
    playOnFrom(placeFrom(std::max(MciGetPosition(alias_), 0), -seconds));
}

void PlayerPanel::askForTime() {
    if (!alias_.empty() && rate_ > 0)
        txtGoToTime_->open(length_ / rate_);
}

// Not to its end, where it would be closed.
void PlayerPanel::goToTime(const TypedTime& time) {
    if (alias_.empty() || rate_ <= 0) // it has ended meanwhile
        return;
    const std::int32_t now = std::max(MciGetPosition(alias_), 0);
    const std::int32_t last = std::max(now, length_ - rate_);
    seekTo(std::min(placeFrom(time.isRelative ? now : 0, time.seconds), last));
    PlayerRefresh();
}

// ---- Time stamps

void PlayerPanel::setTimeStampForm(const std::string& form) {
    stampForm_ = isTimeStampForm(form) ? form : usualTimeStampForm;
    const QList<QAction*> choices = stamps_->actions();
    for (QAction* choice : choices)
        choice->setChecked(choice->data().toString() == widgets::toQt(stampForm_));
}

// Each choice is an example of itself.
void PlayerPanel::nameTimeStamps() {
    const QList<QAction*> choices = stamps_->actions();
    for (QAction* choice : choices)
        choice->setText(timeStamp(widgets::toUtf8(choice->data().toString()),
                                  QStringLiteral("00:12:34"),
                                  widgets::text(text_id::timeStampTitle)));
}

void PlayerPanel::copyTimeStamp() {
    if (alias_.empty())
        return;
    const QString stamp =
        timeStamp(stampForm_, FormatPlayTime(std::max(MciGetPosition(alias_), 0), rate_),
                  cmdPlayedDictation_->words());
    QGuiApplication::clipboard()->setText(stamp);
    const QString told = widgets::text(text_id::timeStampCopied, {widgets::toUtf8(stamp)});
    QToolTip::showText(
        lblSeachPlayerStatus_->mapToGlobal(lblSeachPlayerStatus_->rect().bottomLeft()),
        widgets::toolTipText(told), lblSeachPlayerStatus_);
    widgets::announce(*lblSeachPlayerStatus_, told);
}

} // namespace ov
