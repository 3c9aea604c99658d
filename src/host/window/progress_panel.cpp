// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/window/progress_panel.h"

#include "host/paths.h"
#include "host/texts.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <chrono>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::milliseconds betweenPaints{34};

} // namespace

void ElidedLabel::setText(const QString& text) {
    if (text == text_)
        return;
    text_ = text;
    setToolTip(text);
    setAccessibleName(text);
    update();
}

QSize ElidedLabel::sizeHint() const {
    return {0, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return sizeHint();
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text_, Qt::ElideMiddle, width());
    style()->drawItemText(&painter, rect(), Qt::AlignLeading | Qt::AlignVCenter, palette(),
                          isEnabled(), shown, foregroundRole());
}

ProgressPanel::ProgressPanel(ProgressNotes& notes, const Texts& texts, QWidget* parent)
    : QWidget(parent), notes_(notes), texts_(texts) {
    setObjectName(u"progressPanel"_s);
    caption_.setObjectName(u"progressCaption"_s);
    caption_.setTextFormat(Qt::PlainText);
    directory_.setObjectName(u"progressDirectory"_s);
    bar_.setObjectName(u"progressBar"_s);
    bar_.setFixedWidth(bar_.fontMetrics().averageCharWidth() * 28);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(layout->spacing(), 0, 0, 0);
    layout->addWidget(&caption_);
    layout->addWidget(&directory_, 1);
    layout->addWidget(&bar_);
    hide();

    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(betweenPaints);
    connect(&timer_, &QTimer::timeout, this, &ProgressPanel::showNotes);
    notes_.setWake([this] { timer_.start(); });
    connect(&texts_, &Texts::changed, this, &ProgressPanel::translate);
    translate();
}

ProgressPanel::~ProgressPanel() {
    notes_.setWake({});
}

void ProgressPanel::showNotes() {
    notes_.taken();
    setVisible(notes_.isActive());
    if (!notes_.isActive()) {
        caption_.setMinimumWidth(0);
        return;
    }
    const QString caption = QString::fromStdString(notes_.caption());
    caption_.setText(caption.isEmpty() ? texts_(Text::working) : caption);
    // Never narrower again: what stands behind it would jump.
    caption_.setMinimumWidth(std::max(caption_.minimumWidth(), caption_.sizeHint().width()));
    directory_.setText(shownPath(notes_.directory()));
    showBar();
}

void ProgressPanel::showBar() {
    const int steps = notes_.isBusy() ? 0 : notes_.steps();
    bar_.setRange(0, steps); // none: the bar moves to and fro
    bar_.setTextVisible(steps > 0);
    bar_.setValue(steps > 0 ? notes_.step() : -1);
}

void ProgressPanel::translate() {
    bar_.setAccessibleName(texts_(Text::progressBar));
    if (notes_.isActive())
        showNotes();
}

} // namespace ov::host
