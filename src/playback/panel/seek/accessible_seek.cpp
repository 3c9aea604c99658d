// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/seek/accessible_seek.h"

#include "playback/panel/player_texts.h"
#include "playback/panel/seek/seek_slider.h"

#include <cmath>

namespace ov {

namespace {

QAccessibleInterface* makeSeek(const QString& /*className*/, QObject* object) {
    auto* slider = qobject_cast<SeekSlider*>(object);
    return slider != nullptr ? new AccessibleSeek(*slider) : nullptr;
}

} // namespace

void AccessibleSeek::install() {
    static const bool installed = [] {
        QAccessible::installFactory(&makeSeek);
        return true;
    }();
    static_cast<void>(installed);
}

AccessibleSeek::AccessibleSeek(SeekSlider& slider)
    : QAccessibleWidget(&slider, QAccessible::Slider), slider_(slider) {}

void* AccessibleSeek::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString AccessibleSeek::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Value)
        return FormatPlayTime(currentValue().toInt(), 1);
    return QAccessibleWidget::text(kind);
}

double AccessibleSeek::seconds(int steps) const {
    return slider_.stepsPerSecond() > 0 ? steps / slider_.stepsPerSecond() : 0;
}

QVariant AccessibleSeek::currentValue() const {
    return std::floor(seconds(slider_.value()));
}

void AccessibleSeek::setCurrentValue(const QVariant& seconds) {
    slider_.setValue(static_cast<int>(std::lround(seconds.toDouble() * slider_.stepsPerSecond())));
}

QVariant AccessibleSeek::maximumValue() const {
    return seconds(slider_.maximum());
}

QVariant AccessibleSeek::minimumValue() const {
    return seconds(slider_.minimum());
}

QVariant AccessibleSeek::minimumStepSize() const {
    return seconds(slider_.singleStep());
}

} // namespace ov
