// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/player_panel.h"

#include "platform/text.h"
#include "playback/modMultimedia.h"
#include "playback/panel/pedal/pedal_desk.h"
#include "playback/panel/player_texts.h"
#include "sound/wave_control.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QScopedValueRollback>
#include <algorithm>
#include <cstdlib>
#include <utility>

namespace ov {

using namespace modMultimedia;

namespace {

constexpr int statusInterval = 200; // ms
constexpr int levelInterval = 50;

bool isMode(const std::string& mode, std::string_view word) {
    return platform::upperCase(mode) == word;
}

} // namespace

// ---- Commands

void PlayerPanel::cmdSearchPlayer_Click(int index) {
    QPushButton* button = cmdSearchPlayer_[static_cast<std::size_t>(index)];
    const bool focused = button->hasFocus();
    button->setEnabled(false);
    if (index == 0)
        PlayerPlay();
    else if (index == 1)
        PlayerPauseResume();
    else
        PlayerStop();
    button->setEnabled(true);
    if (focused)
        button->setFocus();
}

void PlayerPanel::PlayerPlay() {
    PlayerOpenFile(selectedPath_ ? selectedPath_() : std::string());
    if (opening_)
        opening_->playsThen = true;
    else if (!alias_.empty())
        playOpen();
}

void PlayerPanel::playOpen() {
    beginDueRound();
    noteStart(isPlaying() ? playOn() : playBackedUp());
    if (playing_)
        startTimers();
    PlayerRefresh();
}

bool PlayerPanel::isPlaying() const {
    return isMode(MciGetMode(alias_), "PLAYING") || isRoundDue();
}

void PlayerPanel::noteStart(const std::string& problem) {
    playing_ = problem.empty();
    restsAt_ = -1;
    setProblem(problem);
}

void PlayerPanel::noteHalt() {
    playing_ = false;
    restsAt_ = -1;
    setProblem({});
}

void PlayerPanel::setProblem(const std::string& problem) {
    problem_ = problem;
    const QString words = widgets::toQt(problem);
    if (problem.empty())
        widgets::setTip(*prgSearchPlayerStatus_, text_id::playerStateTip);
    else
        prgSearchPlayerStatus_->setToolTip(widgets::toolTipText(words));
    prgSearchPlayerStatus_->setAccessibleDescription(words);
}

void PlayerPanel::PlayerLoad(const std::string& alias) {
    alias_ = alias;
    length_ = alias.empty() ? 0 : MciGetLength(alias);
    lengthMs_ = alias.empty() ? 0 : MciGetLengthMs(alias);
    rate_ = alias.empty() ? 0 : MciGetRate(alias);
    speed_ = alias.empty() ? 0 : MciGetSpeed(alias);
    position_ = -1;
    lblSearchPlayerLength_->setText(FormatPlayTime(std::max(length_, 0), rate_));
    prgSearchPlayerStatus_->setRange(0, std::max(length_, 1));
    setSeekRange();
    if (choices_.speedPercent != PlayerChoices::usualSpeed)
        applySpeed();
    tellFile();
}

void PlayerPanel::tellFile() {
    const std::string path = alias_.empty() ? std::string() : file_;
    cmdPlayedDictation_->setPath(path);
    Q_EMIT fileChanged(path);
}

void PlayerPanel::PlayerPauseResume() {
    if (alias_.empty())
        return;
    beginDueRound();
    const std::string mode = shownMode();
    if (isMode(mode, "ERROR"))
        return;
    if (isMode(mode, "PAUSED"))
        noteStart(resume());
    else if (MciPause(alias_).empty())
        noteHalt();
    PlayerRefresh();
}

void PlayerPanel::PlayerStop() {
    giveUpOpening();
    if (alias_.empty()) {
        setProblem({}); // of a dictation that could not be opened
        PlayerRefresh();
        return;
    }
    keepPlace();
    stop();
}

void PlayerPanel::stop() {
    MciStop(alias_);
    MciSeek(alias_, 0);
    closeFile();
    PlayerRefresh();
}

void PlayerPanel::PlayerClose() {
    if (alias_.empty())
        return;
    keepPlace();
    closeFile();
}

void PlayerPanel::closeFile() {
    txtGoToTime_->leave();
    stopTimers();
    MciClose(alias_);
    noteHalt();
    alias_.clear();
    file_.clear();
    overview_.giveUp();
    slSearchPlayerSeek_->setOverview({});
    setLoop({});
    tellFile();
}

void PlayerPanel::playOrPause() {
    beginDueRound();
    const std::string selected = selectedPath_ ? selectedPath_() : std::string();
    const bool isAnother = !selected.empty() && selected != file_;
    const std::string mode = alias_.empty() ? std::string() : shownMode();
    if (isAnother || !(isMode(mode, "PLAYING") || isMode(mode, "PAUSED")))
        PlayerPlay();
    else
        PlayerPauseResume();
}

void PlayerPanel::setChoices(const PlayerChoices& choices) {
    choices_ = choices;
    choices_.speedPercent =
        std::clamp(choices.speedPercent, PlayerChoices::slowest, PlayerChoices::fastest);
    choices_.backUpSeconds = std::clamp(choices.backUpSeconds, 0, PlayerChoices::mostBackUpSeconds);
    showChoices();
    sound::WaveControl::instance().setShape(choices_.shape);
    applySpeed();
    Q_EMIT refreshed();
}

void PlayerPanel::showChoices() {
    menu_->show(choices_);
    cmdSearchPlayerOptions_->setText(QStringLiteral("%1 %").arg(choices_.speedPercent));
}

void PlayerPanel::applySpeed() {
    if (!alias_.empty())
        MciCommand("set " + alias_ + " tempo " + std::to_string(choices_.speedPercent));
}

// ---- Timers

void PlayerPanel::startTimers() {
    timerSearchPlayerStatus_.start(statusInterval);
    timerSearchPlayerVU_.start(levelInterval);
}

void PlayerPanel::stopTimers() {
    timerSearchPlayerStatus_.stop();
    timerSearchPlayerVU_.stop();
}

void PlayerPanel::stopLevelTimer() {
    timerSearchPlayerVU_.stop();
    pedals_->remove(*this);
}

void PlayerPanel::timerSearchPlayerStatus_Timer() {
    if (!alias_.empty()) {
        outputMenu_->tellWhenMissing(*prgSearchPlayerStatus_);
        lookAfterPlay();
    } else {
        PlayerStop();
        PlayerLoad({});
        stopTimers();
    }
    PlayerRefresh();
}

// A play that stopped by itself has failed, or come to the end, which may be before the length
// when the file was cut off.
void PlayerPanel::lookAfterPlay() {
    position_ = MciGetPosition(alias_);
    const std::string mode = MciGetMode(alias_);
    if (playing_ && isMode(mode, "ERROR")) {
        stopTimers();
        prgSearchPlayerVU_->setValue(0);
        playing_ = false;
        setProblem(MciPause(alias_)); // answers what went wrong
    } else if (playing_ && playsLoop_) {
        beginDueRound(); // maybe not quite at the loop's end, as the file's blocks lie
    } else if (position_ >= length_ || (playing_ && isMode(mode, "STOPPED"))) {
        giveUpOpening();
        forgetPlace();
        stop();
    }
}

void PlayerPanel::timerSearchPlayerVU_Timer() {
    if (!alias_.empty()) {
        // The lowest level is one step further from silence than the highest.
        prgSearchPlayerVU_->setValue(
            mixer_ ? std::min(std::abs(mixer_->GetVUMeterValue()), prgSearchPlayerVU_->maximum())
                   : 0);
        return;
    }
    PlayerStop();
    PlayerLoad({});
    stopTimers();
}

// ---- What is shown

void PlayerPanel::PlayerRefresh() {
    {
        const QScopedValueRollback showing(showing_, true);
        if (alias_.empty())
            refreshClosed();
        else
            refreshOpen();
    }
    Q_EMIT refreshed();
}

void PlayerPanel::refreshClosed() {
    showState();
    prgSearchPlayerStatus_->setValue(0);
    lblSeachPlayerStatus_->setText(FormatPlayTime(0, rate_));
    slSearchPlayerSeek_->setValue(0);
    prgSearchPlayerVU_->setValue(0);
}

// Of a device that refused or failed that it did, until it plays again or is moved.
void PlayerPanel::showState() {
    const std::string mode = opening_ ? "not ready" : alias_.empty() ? std::string() : shownMode();
    prgSearchPlayerStatus_->setFormat(MciModeText(problem_.empty() ? mode : "error"));
}

void PlayerPanel::refreshOpen() {
    const std::int32_t position = std::max(position_, 0);
    showState();
    prgSearchPlayerStatus_->setValue(position);
    lblSeachPlayerStatus_->setText(FormatPlayTime(position, rate_));
    // While the user drags the handle it is his.
    if (position_ < 0 || slSearchPlayerSeek_->isSliderDown())
        return;
    const double scale = seekScale();
    slSearchPlayerSeek_->setValue(static_cast<int>(scale > 0 ? position_ / scale : position_));
}

} // namespace ov
