// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>

namespace ov {

class SeekSlider;

// The slider of a player as screen readers find it: its value is in seconds from the beginning, and
// reads as the clock beside it does.
class AccessibleSeek final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    // From now on sliders of players are found so.
    static void install();

    explicit AccessibleSeek(SeekSlider& slider);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text kind) const override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& seconds) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    double seconds(int steps) const;

    SeekSlider& slider_;
};

} // namespace ov
