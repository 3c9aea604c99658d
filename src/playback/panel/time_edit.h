// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "playback/typed_time.h"

#include <QLineEdit>
#include <QPointer>
#include <cstdint>

namespace ov {

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
