// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/seek/seek_slider.h"

#include "playback/panel/player_texts.h"
#include "playback/panel/seek/accessible_seek.h"
#include "widgets/legible.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <cstdlib>
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
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SeekSlider::setOverview(std::vector<sound::WavePeaks> peaks) {
    constexpr double longPause = 0.5; // seconds
    if (peaks.empty())
        view_.showAll();
    shape_ = WaveShape(std::move(peaks));
    silences_ = shape_.silences(longPause * stepsPerSecond_ / std::max(maximum(), 1));
    update();
}

void SeekSlider::setLoop(const PlayLoop& loop, double scale) {
    loop_ = loop;
    loopScale_ = scale;
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

double SeekSlider::shareAt(int x) const {
    const QRect along = track();
    const double share = static_cast<double>(x - along.left()) / std::max(along.width() - 1, 1);
    return std::clamp(layoutDirection() == Qt::RightToLeft ? 1 - share : share, 0.0, 1.0);
}

int SeekSlider::pixelOf(double place) const {
    const QRect along = track();
    const double share = view_.shareOf(place);
    return along.left() +
           qRound((layoutDirection() == Qt::RightToLeft ? 1 - share : share) * (along.width() - 1));
}

double SeekSlider::place(double value) const {
    return (value - minimum()) / std::max(maximum() - minimum(), 1);
}

int SeekSlider::valueAt(int x) const {
    return minimum() + qRound(view_.placeAt(shareAt(x)) * (maximum() - minimum()));
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
    else
        tellTime(event->pos());
}

// False where there is nothing to move through.
bool SeekSlider::tellTime(QPoint at) {
    if (stepsPerSecond_ <= 0)
        return false;
    QToolTip::showText(mapToGlobal(at),
                       FormatPlayTime(static_cast<int>(valueAt(at.x()) / stepsPerSecond_), 1),
                       this);
    return true;
}

bool SeekSlider::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && tellTime(static_cast<QHelpEvent*>(event)->pos()))
        return true;
    return QSlider::event(event);
}

void SeekSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setSliderDown(false);
}

// ---- The part that is shown

void SeekSlider::zoom(double factor, double at) {
    constexpr double leastSeconds = 2;
    if (stepsPerSecond_ <= 0)
        return;
    view_.zoom(factor, at, leastSeconds * stepsPerSecond_ / std::max(maximum(), 1));
    update();
}

void SeekSlider::wheelEvent(QWheelEvent* event) {
    constexpr double notch = 120;
    constexpr double perNotch = 1.3;
    const QPoint turned = event->angleDelta();
    const bool sideways = std::abs(turned.x()) > std::abs(turned.y());
    if (sideways || event->modifiers().testFlag(Qt::ShiftModifier)) {
        view_.scroll(-(sideways ? turned.x() : turned.y()) / notch / 10);
        update();
    } else {
        zoom(std::pow(perNotch, turned.y() / notch),
             view_.placeAt(shareAt(qRound(event->position().x()))));
    }
    event->accept();
}

void SeekSlider::keyPressEvent(QKeyEvent* event) {
    constexpr double perPress = 2;
    const double here = place(sliderPosition());
    if (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Equal)
        zoom(perPress, here);
    else if (event->key() == Qt::Key_Minus)
        zoom(1 / perPress, here);
    else if (event->key() == Qt::Key_0)
        view_.showAll();
    else
        QSlider::keyPressEvent(event);
    update();
}

void SeekSlider::sliderChange(SliderChange change) {
    if (change == SliderValueChange)
        view_.follow(place(value()));
    QSlider::sliderChange(change);
}

// ---- Drawing

void SeekSlider::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    frame.state |= QStyle::State_Sunken;
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, this);
    painter.setClipRect(track().adjusted(-knobWidth / 2, 0, knobWidth / 2, 0));
    paintGround(painter);
    paintShape(painter);
    paintHandle(painter);
}

void SeekSlider::fill(QPainter& painter, double from, double to, const QColor& colour) const {
    const int first = pixelOf(from);
    const int last = pixelOf(to);
    painter.fillRect(QRect(QPoint(std::min(first, last), track().top()),
                           QPoint(std::max(first, last), track().bottom())),
                     colour);
}

// Pauses stand back, and so does all that is not played again and again.
void SeekSlider::paintGround(QPainter& painter) const {
    constexpr float faint = 0.12F;
    QColor pause = palette().color(QPalette::Text);
    pause.setAlphaF(faint);
    for (const WaveShape::Silence& silence : silences_)
        fill(painter, silence.from, silence.to, pause);
    if (!loop_.isMarked())
        return;
    const double from = place(loop_.from() / loopScale_);
    const double to = loop_.isWhole() ? place(loop_.to() / loopScale_) : from;
    QColor stretch = palette().color(QPalette::Link);
    for (const double mark : {from, to})
        fill(painter, mark, mark, stretch);
    stretch.setAlphaF(2 * faint);
    fill(painter, from, to, stretch);
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
    for (int x = 0; x < along.width(); ++x) {
        const double share = (mirrored ? along.width() - 1.0 - x : x) / along.width();
        const sound::WavePeaks peaks =
            shape_.between(view_.placeAt(share), view_.placeAt(share + 1.0 / along.width()));
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
