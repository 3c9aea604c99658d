// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/legible.h"

#include <QAbstractButton>
#include <QEvent>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace ov::widgets {

namespace {

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor& one, const QColor& other, int percentOfOther) {
    const auto mix = [&](int a, int b) { return a + (b - a) * percentOfOther / 100; };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()),
            mix(one.blue(), other.blue())};
}

// Does something now and after each event of that kind.
class Follower final : public QObject {
public:
    Follower(QWidget& widget, QEvent::Type type, std::function<void()> follow)
        : QObject(&widget), type_(type), follow_(std::move(follow)) {
        widget.installEventFilter(this);
        follow_();
    }
    // A change of its own comes back as an event like those from outside.
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == type_ && !std::exchange(following_, true)) {
            follow_();
            following_ = false;
        }
        return false;
    }

private:
    QEvent::Type type_;
    std::function<void()> follow_;
    bool following_ = false;
};

void colourHint(QWidget& label) {
    const QWidget* below = label.parentWidget();
    QPalette palette = below != nullptr ? below->palette() : QPalette();
    palette.setColor(QPalette::WindowText, hintColour(palette.color(QPalette::WindowText),
                                                      palette.color(QPalette::Window)));
    label.setPalette(palette);
}

void sizeIcon(QAbstractButton& button) {
    const int usual = button.style()->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, &button);
    const int side = std::max(usual, button.fontMetrics().height());
    button.setIconSize({side, side});
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    constexpr double flare = 0.05; // light that any screen reflects
    const auto [dark, bright] = std::minmax({luminance(one), luminance(other)});
    return (bright + flare) / (dark + flare);
}

QColor hintColour(const QColor& text, const QColor& background) {
    constexpr int faintest = 45;
    for (int percent = faintest; percent > 0; --percent)
        if (const QColor hint = mixed(text, background, percent);
            contrast(hint, background) >= legibleContrast)
            return hint;
    return text;
}

void setHint(QWidget& label) {
    new Follower(label, QEvent::PaletteChange, [&label] { colourHint(label); });
}

void fitIcon(QAbstractButton& button) {
    new Follower(button, QEvent::FontChange, [&button] { sizeIcon(button); });
}

} // namespace ov::widgets
