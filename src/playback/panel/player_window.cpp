// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The widgets of the player panel and their places.

#include "playback/panel/pedal/pedal_desk.h"
#include "playback/panel/player_panel.h"
#include "playback/panel/player_texts.h"
#include "sound/wave_control.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/icons.h"
#include "widgets/legible.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QHBoxLayout>
#include <QStyleOptionToolButton>
#include <QVBoxLayout>

namespace ov {

namespace {

struct ButtonTexts {
    const char* icon;
    std::int32_t tip;
};

constexpr std::array<ButtonTexts, 3> buttonTexts{
    {{"play", text_id::playTip}, {"pause", text_id::pauseTip}, {"stop", text_id::stopPlayingTip}}};

// A time is its own name.
void nameTime(QLabel& label, const char* objectName, std::int32_t textId) {
    label.setObjectName(QLatin1String(objectName));
    widgets::setTip(label, textId);
    // Others make room once, and not each time that a digit is wider.
    label.setMinimumWidth(label.fontMetrics().horizontalAdvance(QStringLiteral("00:00:00 ")));
}

template <typename Widget>
void name(Widget& widget, const char* objectName, std::int32_t textId) {
    widget.setObjectName(QLatin1String(objectName));
    widgets::setTip(widget, textId);
    widgets::setSpokenName(widget, textId);
}

// Looks like a button with a menu. One that has it waits inside its own event until the menu is
// closed, and by then the host may have let go of all.
class MenuButton final : public QToolButton {
public:
    using QToolButton::QToolButton;

protected:
    void initStyleOption(QStyleOptionToolButton* option) const override {
        QToolButton::initStyleOption(option);
        option->features |= QStyleOptionToolButton::HasMenu;
    }
};

} // namespace

PlayerPanel::PlayerPanel(QWidget* parent)
    : QFrame(parent),
      slSearchPlayerSeek_(new SeekSlider(this)),
      slSearchPlayerVolume_(new QSlider(Qt::Vertical, this)),
      prgSearchPlayerVU_(new QProgressBar(this)),
      prgSearchPlayerStatus_(new QProgressBar(this)),
      lblSeachPlayerStatus_(new QLabel(QStringLiteral("00:00:00"), this)),
      cmdPlayedDictation_(new PlayedDictation(this)),
      cmdOfferedPosition_(new OfferedPosition(this)),
      txtGoToTime_(new TimeEdit(this)),
      lblSearchPlayerLength_(new QLabel(QStringLiteral("00:00:00"), this)),
      cmdSearchPlayerOptions_(new MenuButton(this)),
      timerSearchPlayerStatus_(this),
      timerSearchPlayerVU_(this),
      pedals_(PedalDesk::shared()) {
    setObjectName(QStringLiteral("picPlayer"));
    setFrameShape(QFrame::StyledPanel);
    widgets::setSpokenName(*this, text_id::playerPanel);
    timerSearchPlayerStatus_.setObjectName(QStringLiteral("timerSearchPlayerStatus"));
    timerSearchPlayerVU_.setObjectName(QStringLiteral("timerSearchPlayerVU"));
    buildPanel();
    buildMenu();
    connectAll();
    setUpPedals();
}

void PlayerPanel::buildPanel() {
    // A screen reader would tell of each step of a progress bar.
    for (QProgressBar* bar : {prgSearchPlayerStatus_, prgSearchPlayerVU_})
        widgets::setSpokenRole(*bar, QAccessible::StaticText);
    name(*slSearchPlayerSeek_, "slSearchPlayerSeek", text_id::seekTip);
    name(*prgSearchPlayerStatus_, "prgSearchPlayerStatus", text_id::playerStateTip);
    nameTime(*lblSeachPlayerStatus_, "lblSeachPlayerStatus", text_id::elapsedTimeTip);
    nameTime(*lblSearchPlayerLength_, "lblSearchPlayerLength", text_id::lengthTip);
    buildVolume();
    auto* row = new QHBoxLayout(this);
    constexpr int margin = 4;
    row->setContentsMargins(margin, margin, margin, margin);
    row->addLayout(buildButtons());
    row->addLayout(buildPosition(), 1);
    row->addWidget(prgSearchPlayerVU_);
    row->addWidget(slSearchPlayerVolume_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFocusProxy(cmdSearchPlayer_[0]);
    QWidget* before = cmdSearchPlayer_[0];
    for (QWidget* next : std::initializer_list<QWidget*>{
             cmdSearchPlayer_[1], cmdSearchPlayer_[2], cmdSearchPlayerOptions_, cmdPlayedDictation_,
             cmdOfferedPosition_, txtGoToTime_, slSearchPlayerSeek_, slSearchPlayerVolume_}) {
        setTabOrder(before, next);
        before = next;
    }
    for (QWidget* next : std::initializer_list<QWidget*>{
             cmdSearchPlayer_[0], cmdSearchPlayer_[1], cmdSearchPlayer_[2], cmdSearchPlayerOptions_,
             cmdPlayedDictation_, cmdOfferedPosition_, prgSearchPlayerStatus_, txtGoToTime_,
             lblSeachPlayerStatus_, slSearchPlayerSeek_, lblSearchPlayerLength_, prgSearchPlayerVU_,
             slSearchPlayerVolume_})
        next->raise(); // screen readers go by that order
}

QBoxLayout* PlayerPanel::buildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    for (int i = 0; i < static_cast<int>(cmdSearchPlayer_.size()); ++i) {
        const auto at = static_cast<std::size_t>(i);
        auto* button = new QPushButton(this);
        button->setObjectName(widgets::indexedName("cmdSearchPlayer", i));
        button->setIcon(widgets::icon(buttonTexts[at].icon));
        widgets::fitIcon(*button);
        button->setAutoDefault(false);
        constexpr int width = 34;
        button->setFixedWidth(width);
        widgets::setTip(*button, buttonTexts[at].tip);
        widgets::setSpokenName(*button, buttonTexts[at].tip);
        cmdSearchPlayer_[at] = button;
        row->addWidget(button);
    }
    name(*cmdSearchPlayerOptions_, "cmdSearchPlayerOptions", text_id::speedTip);
    row->addWidget(cmdSearchPlayerOptions_);
    return row;
}

// What plays and how above; below it the way through it, with the times at its ends.
QBoxLayout* PlayerPanel::buildPosition() {
    QPalette colours = prgSearchPlayerStatus_->palette();
    colours.setColor(QPalette::Highlight, QColor(0x20, 0x5C, 0xC0));
    prgSearchPlayerStatus_->setPalette(colours);
    prgSearchPlayerStatus_->setTextVisible(true);
    prgSearchPlayerStatus_->setAlignment(Qt::AlignCenter);
    prgSearchPlayerStatus_->setRange(0, 1);

    auto* state = new QHBoxLayout;
    state->addWidget(cmdPlayedDictation_, 3);
    state->addWidget(cmdOfferedPosition_);
    state->addWidget(prgSearchPlayerStatus_, 1);
    auto* way = new QHBoxLayout;
    way->addWidget(txtGoToTime_);
    way->addWidget(lblSeachPlayerStatus_);
    way->addWidget(slSearchPlayerSeek_, 1);
    way->addWidget(lblSearchPlayerLength_);
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    column->addLayout(state);
    column->addLayout(way);
    return column;
}

void PlayerPanel::buildVolume() {
    name(*slSearchPlayerVolume_, "slSearchPlayerVolume", text_id::volumeTip);
    name(*prgSearchPlayerVU_, "prgSearchPlayerVU", text_id::levelTip);
    slSearchPlayerVolume_->setInvertedAppearance(true);
    slSearchPlayerVolume_->setInvertedControls(true); // the up key makes it louder
    slSearchPlayerVolume_->setTickPosition(QSlider::TicksRight);
    prgSearchPlayerVU_->setOrientation(Qt::Vertical);
    prgSearchPlayerVU_->setTextVisible(false);
    constexpr int width = 12;
    constexpr int height = 56;
    prgSearchPlayerVU_->setFixedSize(width, height);
    slSearchPlayerVolume_->setFixedHeight(height);
}

void PlayerPanel::buildMenu() {
    menu_ = new PlayerMenu(cmdSearchPlayerOptions_);
    outputMenu_ = new OutputMenu(menu_);
    menu_->addMenu(outputMenu_);
    addPedalEntry();
    connect(cmdSearchPlayerOptions_, &QToolButton::pressed, this, [this] {
        menu_->popup(
            cmdSearchPlayerOptions_->mapToGlobal(cmdSearchPlayerOptions_->rect().bottomLeft()));
    });
    connect(menu_, &QMenu::aboutToHide, this, [this] { cmdSearchPlayerOptions_->setDown(false); });
    connect(menu_, &QMenu::aboutToShow, this, [this] { // another window may have chosen
        choices_.shape = sound::WaveControl::instance().shape();
        showChoices();
    });
    connect(menu_, &PlayerMenu::chosen, this, &PlayerPanel::choose);
    connect(menu_, &PlayerMenu::loopRequested, this, &PlayerPanel::markLoop);
    showChoices(); // the sound of other players stays as it is
}

void PlayerPanel::connectAll() {
    for (int i = 0; i < static_cast<int>(cmdSearchPlayer_.size()); ++i)
        connect(cmdSearchPlayer_[static_cast<std::size_t>(i)], &QPushButton::clicked, this,
                [this, i] { cmdSearchPlayer_Click(i); });
    connect(cmdPlayedDictation_, &QToolButton::clicked, this,
            [this] { Q_EMIT rowRequested(cmdPlayedDictation_->path()); });
    connect(slSearchPlayerSeek_, &QSlider::valueChanged, this, &PlayerPanel::seekSliderMoved);
    connect(slSearchPlayerVolume_, &QSlider::valueChanged, this, &PlayerPanel::volumeSliderMoved);
    connect(slSearchPlayerVolume_, &QSlider::sliderReleased, this,
            [this] { volumeSliderMoved(slSearchPlayerVolume_->value()); });
    connect(&timerSearchPlayerStatus_, &QTimer::timeout, this,
            &PlayerPanel::timerSearchPlayerStatus_Timer);
    connect(&timerSearchPlayerVU_, &QTimer::timeout, this, &PlayerPanel::timerSearchPlayerVU_Timer);
    connect(&timerOpening_, &QTimer::timeout, this, &PlayerPanel::timerOpening_Timer);
    connect(&overview_, &OverviewLoader::ready, slSearchPlayerSeek_, &SeekSlider::setOverview);
    connect(txtGoToTime_, &TimeEdit::typed, this, &PlayerPanel::goToTime);
    connect(cmdOfferedPosition_, &QToolButton::clicked, this, &PlayerPanel::goOnAtOffered);
}

void PlayerPanel::retranslate() {
    cmdOfferedPosition_->retranslate();
    menu_->retranslate();
    setProblem(problem_);
    PlayerRefresh();
}

} // namespace ov
