// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/seek_slider.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionSlider>
#include <algorithm>
#include <limits>
#include <utility>

namespace ov {

SeekSlider::SeekSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setFocusPolicy(Qt::StrongFocus);
}

void SeekSlider::setOverview(std::vector<sound::WavePeaks> peaks) {
    peaks_ = std::move(peaks);
    update();
}

QSize SeekSlider::sizeHint() const {
    constexpr int shapeHeight = 34;
    const QSize hint = QSlider::sizeHint();
    return {hint.width(), std::max(hint.height(), shapeHeight)};
}

// The stretch that the middle of the handle moves along.
QRect SeekSlider::groove() const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const int handle = style()->pixelMetric(QStyle::PM_SliderLength, &option, this);
    return rect().adjusted(handle / 2, 1, -handle / 2, -1);
}

int SeekSlider::valueAt(int x) const {
    const QRect along = groove();
    return QStyle::sliderValueFromPosition(minimum(), maximum(), x - along.left(), along.width(),
                                           layoutDirection() == Qt::RightToLeft);
}

// With the handle under the pointer, the press then begins to drag it.
void SeekSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setValue(valueAt(event->pos().x()));
    QSlider::mousePressEvent(event);
}

void SeekSlider::paintEvent(QPaintEvent* event) {
    if (!peaks_.empty()) {
        QPainter painter(this);
        QColor colour = palette().color(QPalette::Highlight);
        colour.setAlphaF(isEnabled() ? 0.45F : 0.2F);
        const QRect along = groove();
        const double middle = along.center().y();
        const double scale = along.height() / 2.0 / std::numeric_limits<std::int16_t>::max();
        for (int x = 0; x < along.width(); ++x) {
            const auto count = static_cast<int>(peaks_.size());
            const auto& peaks = peaks_[static_cast<std::size_t>(x * count / along.width())];
            const double top = middle - peaks.highest * scale;
            const double bottom = middle - peaks.lowest * scale;
            painter.fillRect(QRectF(along.left() + x, top, 1, std::max(1.0, bottom - top)), colour);
        }
    }
    QSlider::paintEvent(event);
}

} // namespace ov
