// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The sliders of the player panel: what they stand for and what moving them does.

#include "playback/modMultimedia.h"
#include "playback/panel/player_panel.h"
#include "playback/panel/player_texts.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QToolTip>
#include <QVariant>
#include <cmath>

namespace ov {

using namespace modMultimedia;

namespace {

constexpr const char* usualMixer = "SB16 Mixer [220]";
constexpr int seekSteps = 32767;

// Steps of a slider by its range: a twentieth by page, a hundredth by arrow key.
void setSteps(QSlider& slider, int maximum) {
    slider.setPageStep(maximum >= 21 ? maximum / 20 : 5);
    slider.setSingleStep(maximum >= 101 ? maximum / 100 : 1);
}

} // namespace

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

void PlayerPanel::setSeekRange() {
    const QScopedValueRollback showing(showing_, true);
    slSearchPlayerSeek_->setStepsPerSecond(
        length_ < 1 ? 0 : seekSteps * static_cast<double>(rate_) / static_cast<double>(length_));
    if (length_ < 1) {
        slSearchPlayerSeek_->setProperty("Tag", QStringLiteral("0"));
        slSearchPlayerSeek_->setRange(0, 1);
        slSearchPlayerSeek_->setSingleStep(1);
        slSearchPlayerSeek_->setPageStep(1);
        return;
    }
    const double scale = static_cast<double>(length_) / seekSteps;
    slSearchPlayerSeek_->setProperty("Tag", QString::number(scale, 'g', 17));
    const int maximum = static_cast<int>(std::lround(length_ / scale));
    slSearchPlayerSeek_->setRange(0, maximum);
    setSteps(*slSearchPlayerSeek_, maximum);
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

double PlayerPanel::seekScale() const {
    return slSearchPlayerSeek_->property("Tag").toString().toDouble();
}

void PlayerPanel::seekSliderMoved(int value) {
    if (showing_)
        return;
    if (alias_.empty()) { // nothing to move through
        PlayerRefresh();
        return;
    }
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
    if (isPlaying())
        noteStart(playFrom(position));
    else if (MciSeek(alias_, position).empty())
        noteHalt();
    position_ = MciGetPosition(alias_);
    showState();
    Q_EMIT moved();
    if (ticking)
        timerSearchPlayerStatus_.start();
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
    Q_EMIT refreshed();
    if (!slSearchPlayerVolume_->isSliderDown())
        Q_EMIT volumeChosen(volume);
}

// Where it can be set.
void PlayerPanel::setVolume(std::int32_t volume) {
    const QSignalBlocker nobodyChose(this);
    if (slSearchPlayerVolume_->isEnabled())
        slSearchPlayerVolume_->setValue(slSearchPlayerVolume_->maximum() - volume);
}

} // namespace ov
