// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The widgets of the window for pedals and their places.

#include "control/pedal/frmPedals.h"
#include "support/language/pedal_text_ids.h"
#include "widgets/captions.h"
#include "widgets/help/guide_window.h"
#include "widgets/help/help_keys.h"
#include "widgets/legible.h"
#include "widgets/spoken.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace ov {

namespace {

constexpr int quietTime = 200; // ms

template <typename Widget>
void name(Widget& widget, const char* objectName, std::int32_t tip) {
    widget.setObjectName(QLatin1String(objectName));
    widgets::setTip(widget, tip);
}

} // namespace

frmPedals::frmPedals(QWidget* parent)
    : OneUseDialog(parent, "frmPedals"),
      lblPedalHint_(new QLabel(this)),
      lstPedalActions_(new QTreeWidget(this)),
      cmdAssignPedal_(new QPushButton(this)),
      cmdRemovePedal_(new QPushButton(this)),
      lblPedalReceived_(new QLabel(this)),
      lblPedalJump_(new QLabel(this)),
      spnPedalJump_(new QSpinBox(this)),
      lblPedalDevices_(new QLabel(this)),
      lstPedalDevices_(new QListWidget(this)),
      lblPedalAdvice_(new QLabel(this)) {
    widgets::setSpokenRole(*lblPedalReceived_, QAccessible::Notification);
    nameAll();
    buildWindow();
    connectAll();
}

frmPedals::~frmPedals() = default;

void frmPedals::nameAll() {
    widgets::setChapter(*this, widgets::chapter::pedals);
    widgets::setCaption(*this, text_id::pedalsTitle);
    widgets::setCaption(*lblPedalHint_, text_id::pedalsHint);
    name(*lstPedalActions_, "lstPedalActions", text_id::pedalsHint);
    widgets::setSpokenName(*lstPedalActions_, text_id::pedalActionColumn);
    name(*cmdAssignPedal_, "cmdAssignPedal", text_id::pedalsHint);
    widgets::setCaption(*cmdAssignPedal_, text_id::assignPedal);
    name(*cmdRemovePedal_, "cmdRemovePedal", text_id::removePedalTip);
    widgets::setCaption(*cmdRemovePedal_, text_id::removePedal);
    name(*spnPedalJump_, "spnPedalJump", text_id::pedalJumpTip);
    widgets::setCaption(*lblPedalJump_, text_id::pedalJumpLabel);
    lblPedalJump_->setBuddy(spnPedalJump_);
    name(*lstPedalDevices_, "lstPedalDevices", text_id::pedalGrabTip);
    widgets::setCaption(*lblPedalDevices_, text_id::pedalDevices);
    widgets::setSpokenName(*lstPedalDevices_, text_id::pedalDevices);
    lblPedalDevices_->setBuddy(lstPedalDevices_);
    lblPedalReceived_->setObjectName(QStringLiteral("lblPedalReceived"));
    lblPedalAdvice_->setObjectName(QStringLiteral("lblPedalAdvice"));
}

void frmPedals::buildWindow() {
    for (QLabel* label : {lblPedalHint_, lblPedalReceived_, lblPedalDevices_, lblPedalAdvice_})
        label->setWordWrap(true);
    widgets::setHint(*lblPedalAdvice_);
    lstPedalActions_->setColumnCount(2);
    lstPedalActions_->setRootIsDecorated(false);
    lstPedalActions_->setUniformRowHeights(true);
    for (QPushButton* button : {cmdAssignPedal_, cmdRemovePedal_})
        button->setAutoDefault(false);
    constexpr int lines = 4;
    lstPedalDevices_->setMinimumHeight(lines * (fontMetrics().lineSpacing() + 3));
    lstPedalDevices_->setMaximumHeight(2 * lines * (fontMetrics().lineSpacing() + 3));
    auto* column = new QVBoxLayout(this);
    column->addWidget(lblPedalHint_);
    column->addLayout(buildActions(), 1);
    column->addWidget(lblPedalReceived_);
    column->addLayout(buildJump());
    column->addWidget(lblPedalDevices_);
    column->addWidget(lstPedalDevices_);
    column->addWidget(lblPedalAdvice_);
    column->addWidget(makeButtons());
}

QBoxLayout* frmPedals::buildActions() {
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(cmdAssignPedal_);
    buttons->addWidget(cmdRemovePedal_);
    buttons->addStretch(1);
    auto* row = new QHBoxLayout;
    row->addWidget(lstPedalActions_, 1);
    row->addLayout(buttons);
    return row;
}

QBoxLayout* frmPedals::buildJump() {
    spnPedalJump_->setRange(1, PedalAssignments::longestJump);
    spnPedalJump_->setSuffix(QStringLiteral(" s"));
    auto* row = new QHBoxLayout;
    row->addWidget(lblPedalJump_);
    row->addWidget(spnPedalJump_);
    row->addStretch(1);
    return row;
}

void frmPedals::connectAll() {
    quiet_.setSingleShot(true);
    quiet_.setInterval(quietTime);
    connect(&quiet_, &QTimer::timeout, this, &frmPedals::waitForPedal);
    connect(&keys_, &KeyCatcher::escaped, this, &frmPedals::giveUp);
    connect(cmdAssignPedal_, &QPushButton::clicked, this, &frmPedals::askForPedal);
    connect(lstPedalActions_, &QTreeWidget::itemActivated, this, &frmPedals::askForPedal);
    connect(cmdRemovePedal_, &QPushButton::clicked, this, &frmPedals::removePedals);
    connect(lstPedalActions_, &QTreeWidget::currentItemChanged, this, &frmPedals::enableButtons);
    connect(spnPedalJump_, &QSpinBox::valueChanged, this,
            [this](int seconds) { Assignments.setJumpSeconds(seconds); });
    connect(lstPedalDevices_, &QListWidget::itemChanged, this,
            [this](const QListWidgetItem* item) { chooseGrab(*item); });
    connect(desk_.get(), &PedalDesk::received, this, &frmPedals::take);
    connect(desk_.get(), &PedalDesk::changed, this, [this] {
        fillDevices();
        fillActions();
    });
}

} // namespace ov
