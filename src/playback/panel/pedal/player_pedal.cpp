// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The player as feet use it.

#include "playback/milliseconds.h"
#include "playback/modMultimedia.h"
#include "playback/panel/pedal/pedal_desk.h"
#include "playback/panel/player_panel.h"
#include "support/language/player_text_ids.h"
#include "widgets/captions.h"

#include <QAction>
#include <algorithm>

namespace ov {

using namespace modMultimedia;
using std::chrono::milliseconds;

namespace {

std::int32_t unitsOf(milliseconds place, std::int32_t rate) {
    return static_cast<std::int32_t>(place.count() * rate / msOfSecond);
}

} // namespace

PlayerPanel::~PlayerPanel() {
    pedals_->remove(*this);
}

void PlayerPanel::setUpPedals() {
    pedals_->add(*this, *this);
    connect(this, &PlayerPanel::fileChanged, this, [this](const std::string& path) {
        if (!path.empty())
            pedals_->use(*this);
    });
}

void PlayerPanel::addPedalEntry() {
    QAction* entry = menu_->addAction(QString());
    entry->setObjectName(QStringLiteral("actPedals"));
    widgets::setCaption(*entry, text_id::pedalsMenu);
    connect(entry, &QAction::triggered, this, &PlayerPanel::pedalsRequested);
}

bool PlayerPanel::isPedalPlaying() const {
    return !alias_.empty() && isPlaying();
}

// The selection may have gone elsewhere: what is open stays the one that is heard.
void PlayerPanel::pedalPlay() {
    if (alias_.empty())
        PlayerPlay();
    else if (!isPlaying())
        playOpen();
}

void PlayerPanel::pedalRest() {
    if (opening_)
        opening_->playsThen = false;
    beginDueRound();
    if (!isPedalPlaying() || !MciPause(alias_).empty())
        return;
    noteHalt();
    const std::int32_t position = MciGetPosition(alias_);
    if (backsUpFrom(position))
        restAt(placeFrom(position, -choices_.backUpSeconds));
    else
        PlayerRefresh();
}

std::optional<PedalledPlayer::Place> PlayerPanel::pedalPlace() const {
    if (alias_.empty() || rate_ <= 0)
        return std::nullopt;
    const std::int64_t position = std::max(MciGetPosition(alias_), 0);
    return Place{milliseconds(position * msOfSecond / rate_),
                 milliseconds(length_ * msOfSecond / rate_)};
}

void PlayerPanel::pedalPlayFrom(milliseconds place) {
    playOnFrom(unitsOf(place, rate_));
}

void PlayerPanel::pedalRestAt(milliseconds place) {
    restAt(unitsOf(place, rate_));
}

void PlayerPanel::pedalDo(PedalAction action, std::int32_t jumpSeconds) {
    switch (action) {
    case PedalAction::playOrPause: // what is open, whatever is selected meanwhile
        return isPedalPlaying() ? pedalRest() : pedalPlay();
    case PedalAction::jumpBack:
        return skip(-jumpSeconds);
    case PedalAction::jumpForward:
        return skip(jumpSeconds);
    case PedalAction::playAgain:
        return playAgain();
    case PedalAction::toStart:
        return pedalToStart();
    case PedalAction::stop:
        return PlayerStop();
    case PedalAction::timeStamp:
        return copyTimeStamp();
    default: // while they are held
        return;
    }
}

void PlayerPanel::pedalToStart() {
    if (alias_.empty())
        return;
    seekTo(0);
    PlayerRefresh();
}

// ---- Where they left it

// The device cannot pause anywhere else than where it plays.
void PlayerPanel::restAt(std::int32_t position) {
    if (!MciSeek(alias_, position).empty())
        return;
    noteHalt();
    restsAt_ = position_ = MciGetPosition(alias_);
    Q_EMIT moved();
    PlayerRefresh();
}

bool PlayerPanel::isResting() const {
    return restsAt_ >= 0 && MciGetPosition(alias_) == restsAt_ && MciGetMode(alias_) == "stopped";
}

std::string PlayerPanel::shownMode() const {
    return isResting() ? "paused" : MciGetMode(alias_);
}

} // namespace ov
