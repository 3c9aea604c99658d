// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/seek_slider.h"

#include "playback/panel/accessible_seek.h"
#include "widgets/legible.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <algorithm>
#include <limits>
#include <utility>

namespace ov {

namespace {

constexpr int handleWidth = 3;
constexpr int knobWidth = 9;
constexpr int knobHeight = 4;

} // namespace

SeekSlider::SeekSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    AccessibleSeek::install();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SeekSlider::setOverview(std::vector<sound::WavePeaks> peaks) {
    peaks_ = std::move(peaks);
    update();
}

QSize SeekSlider::sizeHint() const {
    constexpr int lines = 2;
    return {QSlider::sizeHint().width(), lines * fontMetrics().lineSpacing()};
}

QSize SeekSlider::minimumSizeHint() const {
    return {QSlider::minimumSizeHint().width(), sizeHint().height()};
}

// The stretch that the middle of the handle moves along.
QRect SeekSlider::track() const {
    constexpr int frame = 3;
    constexpr int side = frame + knobWidth / 2;
    return rect().adjusted(side, frame, -side, -frame);
}

int SeekSlider::handlePlace() const {
    const QRect along = track();
    return along.left() + QStyle::sliderPositionFromValue(minimum(), maximum(), sliderPosition(),
                                                          along.width() - 1,
                                                          layoutDirection() == Qt::RightToLeft);
}

int SeekSlider::valueAt(int x) const {
    const QRect along = track();
    return QStyle::sliderValueFromPosition(minimum(), maximum(), x - along.left(),
                                           along.width() - 1, layoutDirection() == Qt::RightToLeft);
}

// The handle is where the pointer is, on any desktop.
void SeekSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setSliderDown(true);
    setSliderPosition(valueAt(event->pos().x()));
}

void SeekSlider::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown())
        setSliderPosition(valueAt(event->pos().x()));
}

void SeekSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setSliderDown(false);
}

// ---- Drawing

void SeekSlider::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    frame.state |= QStyle::State_Sunken;
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, this);
    paintShape(painter);
    paintHandle(painter);
}

// What has been heard in the colour of what is selected, the rest like words that stand back. A
// line where nothing is known of the sound.
void SeekSlider::paintShape(QPainter& painter) const {
    const QRect along = track();
    const QColor heard = palette().color(QPalette::Highlight);
    const QColor rest =
        widgets::hintColour(palette().color(QPalette::Text), palette().color(QPalette::Base));
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int handle = handlePlace() - along.left();
    const double middle = along.top() + along.height() / 2.0;
    const double scale = along.height() / 2.0 / std::numeric_limits<std::int16_t>::max();
    const auto count = static_cast<int>(peaks_.size());
    for (int x = 0; x < along.width(); ++x) {
        const int place = mirrored ? along.width() - 1 - x : x;
        const auto peaks = count > 0
                               ? peaks_[static_cast<std::size_t>(place * count / along.width())]
                               : sound::WavePeaks{};
        const double top = middle - std::max(peaks.highest * scale, 0.5);
        const double bottom = middle - std::min(peaks.lowest * scale, -0.5);
        painter.fillRect(QRectF(along.left() + x, top, 1, bottom - top),
                         (mirrored ? x > handle : x < handle) ? heard : rest);
    }
}

void SeekSlider::paintHandle(QPainter& painter) const {
    const QColor colour = palette().color(QPalette::Text);
    const int middle = handlePlace();
    const QRect all = track();
    painter.fillRect(middle - handleWidth / 2, all.top(), handleWidth, all.height(), colour);
    for (const int top : {all.top(), all.bottom() - knobHeight + 1})
        painter.fillRect(middle - knobWidth / 2, top, knobWidth, knobHeight, colour);
}

} // namespace ov
