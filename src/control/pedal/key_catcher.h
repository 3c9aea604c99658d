// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

namespace ov {

// Keeps keys from all windows: a pedal that is a keyboard shall not press buttons while it is being
// assigned. Esc is told.
class KeyCatcher final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    void start();
    void stop();

Q_SIGNALS:
    void escaped();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace ov
