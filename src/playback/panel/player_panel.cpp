// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/player_panel.h"

#include "platform/files.h"
#include "platform/text.h"
#include "playback/modMultimedia.h"
#include "playback/panel/player_texts.h"
#include "support/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QScopedValueRollback>
#include <QToolTip>
#include <QVariant>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace ov {

using namespace modMultimedia;

namespace {

constexpr const char* playerAlias = "PBWave";
constexpr const char* deviceType = "waveaudio";
constexpr const char* usualMixer = "SB16 Mixer [220]";
constexpr std::int32_t anyDevice = -1;
constexpr std::int32_t usualSpeed = 100;
constexpr int seekSteps = 32767;
constexpr int statusInterval = 200; // ms
constexpr int levelInterval = 50;

bool isMode(const std::string& mode, std::string_view word) {
    return platform::upperCase(mode) == word;
}

// Steps of a slider by its range: a twentieth by page, a hundredth by arrow key.
void setSteps(QSlider& slider, int maximum) {
    slider.setPageStep(maximum >= 21 ? maximum / 20 : 5);
    slider.setSingleStep(maximum >= 101 ? maximum / 100 : 1);
}

} // namespace

// ---- Start

void PlayerPanel::PlayerInitControls() {
    mixer_->DefaultMixerName(usualMixer);
    const bool hasMixer = mixer_->Init_MixerControl();
    slSearchPlayerVolume_->setEnabled(false);
    prgSearchPlayerVU_->setEnabled(false);
    if (hasMixer) {
        setUpVolume();
        setUpLevel();
    }
    prgSearchPlayerStatus_->setFormat(MciModeText({}));
    prgSearchPlayerStatus_->setValue(0);
    const QScopedValueRollback showing(showing_, true);
    slSearchPlayerSeek_->setProperty("Tag", QStringLiteral("0"));
    slSearchPlayerSeek_->setRange(0, 1);
    slSearchPlayerSeek_->setValue(0);
    lblSeachPlayerStatus_->setText(QStringLiteral("00:00:00"));
}

// The slider stands on its head: its lowest value is at the top, and loud.
void PlayerPanel::setUpVolume() {
    if (!mixer_->Init_VolumeControl())
        return;
    const QScopedValueRollback showing(showing_, true);
    const int maximum = mixer_->VolumeMaximum();
    slSearchPlayerVolume_->setRange(mixer_->VolumeMinimum(), maximum);
    setSteps(*slSearchPlayerVolume_, maximum);
    slSearchPlayerVolume_->setTickInterval(static_cast<int>(std::lround(maximum * 0.1)));
    slSearchPlayerVolume_->setValue(maximum - mixer_->GetVolumeValue());
    slSearchPlayerVolume_->setEnabled(true);
}

void PlayerPanel::setUpLevel() {
    if (!mixer_->Init_VUMeterControl())
        return;
    prgSearchPlayerVU_->setRange(0, mixer_->VUMeterMaximum());
    prgSearchPlayerVU_->setValue(0);
    prgSearchPlayerVU_->setEnabled(true);
}

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
    if (alias_.empty())
        return;
    const std::string problem = MciPlay(alias_, anyDevice, -1, -1);
    if (problem.empty())
        startTimers();
    PlayerRefresh();
    if (!problem.empty())
        showProblem(problem);
}

// As the state; what the device says about it is the tooltip.
void PlayerPanel::showProblem(const std::string& problem) {
    prgSearchPlayerStatus_->setFormat(MciModeText("error"));
    prgSearchPlayerStatus_->setToolTip(widgets::toolTipText(widgets::toQt(problem)));
}

void PlayerPanel::PlayerOpenFile(const std::string& path) {
    if (path == file_ || !platform::fileExists(path))
        return;
    PlayerClose();
    file_ = path;
    const std::string problem = MciOpen(playerAlias, path, deviceType);
    if (!problem.empty()) {
        PlayerLoad({});
        PlayerRefresh();
        showProblem(problem);
        return;
    }
    widgets::setTip(*prgSearchPlayerStatus_, text_id::playerStateTip);
    PlayerLoad(playerAlias);
    overview_.load(path);
}

void PlayerPanel::PlayerLoad(const std::string& alias) {
    alias_ = alias;
    length_ = alias.empty() ? 0 : MciGetLength(alias);
    lengthMs_ = alias.empty() ? 0 : MciGetLengthMs(alias);
    rate_ = alias.empty() ? 0 : MciGetRate(alias);
    speed_ = alias.empty() ? 0 : MciGetSpeed(alias);
    position_ = -1;
    lblSearchPlayerLength_->setText(FormatPlayTime(std::max(length_, 0), rate_));
    const QScopedValueRollback showing(showing_, true);
    if (length_ < 1) {
        prgSearchPlayerStatus_->setRange(0, 1);
        slSearchPlayerSeek_->setProperty("Tag", QStringLiteral("0"));
        slSearchPlayerSeek_->setRange(0, 1);
        slSearchPlayerSeek_->setSingleStep(1);
        slSearchPlayerSeek_->setPageStep(1);
        return;
    }
    prgSearchPlayerStatus_->setRange(0, length_);
    const double scale = static_cast<double>(length_) / seekSteps;
    slSearchPlayerSeek_->setProperty("Tag", QString::number(scale, 'g', 17));
    const int maximum = static_cast<int>(std::lround(length_ / scale));
    slSearchPlayerSeek_->setRange(0, maximum);
    setSteps(*slSearchPlayerSeek_, maximum);
    if (speedPercent_ != usualSpeed)
        applySpeed();
}

void PlayerPanel::PlayerPauseResume() {
    if (alias_.empty())
        return;
    const std::string mode = MciGetMode(alias_);
    if (isMode(mode, "ERROR"))
        return;
    if (!isMode(mode, "PAUSED"))
        MciPause(alias_);
    else if (const std::int32_t position = MciGetPosition(alias_);
             backUpSeconds_ > 0 && rate_ > 0 && position >= 0)
        MciSeekAndPlay(alias_, std::max(0, position - backUpSeconds_ * rate_));
    else
        MciResume(alias_);
    PlayerRefresh();
}

void PlayerPanel::PlayerStop() {
    if (alias_.empty())
        return;
    MciStop(alias_);
    MciSeek(alias_, 0);
    PlayerClose();
    PlayerRefresh();
}

void PlayerPanel::PlayerClose() {
    if (alias_.empty())
        return;
    stopTimers();
    MciClose(alias_);
    alias_.clear();
    file_.clear();
    overview_.giveUp();
    slSearchPlayerSeek_->setOverview({});
}

void PlayerPanel::playOrPause() {
    const std::string selected = selectedPath_ ? selectedPath_() : std::string();
    const bool isAnother = !selected.empty() && selected != file_;
    if (alias_.empty() || isAnother || isMode(MciGetMode(alias_), "STOPPED"))
        PlayerPlay();
    else
        PlayerPauseResume();
}

void PlayerPanel::skip(std::int32_t seconds) {
    if (alias_.empty() || rate_ <= 0)
        return;
    const std::int32_t position = std::max(MciGetPosition(alias_), 0);
    seekTo(std::clamp(position + seconds * rate_, 0, length_));
    position_ = MciGetPosition(alias_);
    PlayerRefresh();
}

void PlayerPanel::applySpeed() {
    if (!alias_.empty())
        MciCommand("set " + alias_ + " tempo " + std::to_string(speedPercent_));
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
}

void PlayerPanel::timerSearchPlayerStatus_Timer() {
    if (!alias_.empty()) {
        position_ = MciGetPosition(alias_);
        if (position_ >= length_) {
            timerSearchPlayerStatus_.stop();
            PlayerStop();
        }
    } else {
        PlayerStop();
        PlayerLoad({});
        stopTimers();
    }
    PlayerRefresh();
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
    const QScopedValueRollback showing(showing_, true);
    if (!alias_.empty()) {
        refreshOpen();
        return;
    }
    prgSearchPlayerStatus_->setFormat(MciModeText({}));
    prgSearchPlayerStatus_->setValue(0);
    lblSeachPlayerStatus_->setText(FormatPlayTime(0, rate_));
    slSearchPlayerSeek_->setValue(0);
    prgSearchPlayerVU_->setValue(0);
}

void PlayerPanel::refreshOpen() {
    const std::int32_t position = std::max(position_, 0);
    prgSearchPlayerStatus_->setFormat(MciModeText(MciGetMode(alias_)));
    prgSearchPlayerStatus_->setValue(position);
    lblSeachPlayerStatus_->setText(FormatPlayTime(position, rate_));
    // While the user drags the handle it is his.
    if (position_ < 0 || slSearchPlayerSeek_->isSliderDown())
        return;
    const double scale = seekScale();
    slSearchPlayerSeek_->setValue(static_cast<int>(scale > 0 ? position_ / scale : position_));
}

double PlayerPanel::seekScale() const {
    return slSearchPlayerSeek_->property("Tag").toString().toDouble();
}

// ---- Sliders

void PlayerPanel::seekSliderMoved(int value) {
    if (showing_ || alias_.empty())
        return;
    const double scale = seekScale();
    const auto target = static_cast<std::int32_t>(scale > 0 ? value * scale : value);
    const QString time = FormatPlayTime(target, rate_);
    if (slSearchPlayerSeek_->isSliderDown())
        QToolTip::showText(QCursor::pos(), time, slSearchPlayerSeek_);
    seekTo(target);
    lblSeachPlayerStatus_->setText(time);
}

// The status timer must not read a position in between.
void PlayerPanel::seekTo(std::int32_t position) {
    const bool ticking = timerSearchPlayerStatus_.isActive();
    timerSearchPlayerStatus_.stop();
    if (isMode(MciGetMode(alias_), "PLAYING"))
        MciSeekAndPlay(alias_, position);
    else
        MciSeek(alias_, position);
    if (ticking)
        timerSearchPlayerStatus_.start(statusInterval);
}

void PlayerPanel::volumeSliderMoved(int value) {
    if (showing_ || !mixer_)
        return;
    const int maximum = slSearchPlayerVolume_->maximum();
    const int volume = maximum - value;
    const QString loudness = QString::number(std::lround(volume / (maximum / 10.0)));
    if (slSearchPlayerVolume_->isSliderDown())
        QToolTip::showText(QCursor::pos(), loudness, slSearchPlayerVolume_);
    mixer_->SetVolumeValue(volume);
}

} // namespace ov
