// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLineEdit>
#include <QPointer>
#include <cstdint>
#include <optional>

namespace ov {

// A time as it is typed: "83", "1:23" and "0:01:23" are places; "+30" and "-1:00" lead on and back
// from where one is.
struct TypedTime {
    std::int32_t seconds = 0;
    bool isRelative = false;
    bool operator==(const TypedTime&) const = default;
};
std::optional<TypedTime> readTypedTime(const QString& text);

// Asks for a time, and goes when it has one, on Esc and when the keyboard goes elsewhere.
class TimeEdit final : public QLineEdit {
    Q_OBJECT

public:
    explicit TimeEdit(QWidget* parent);

    // For places up to that second.
    void open(std::int32_t longest);
    void leave();

Q_SIGNALS:
    void typed(const TypedTime& time);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void accept();

    std::int32_t longest_ = 0;
    QPointer<QWidget> before_; // had the keyboard
};

} // namespace ov
