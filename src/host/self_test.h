// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

namespace ov::host {

class MainWindow;

// Watches a window being loaded, closes it when its control is ready, and keeps what went wrong.
class SelfTest final : public QObject {
    Q_OBJECT

public:
    // `window` outlives the test. With a file name a picture of the window is saved first.
    SelfTest(MainWindow& window, QString screenshot);

    // What went wrong; empty when all is well.
    const QString& failure() const { return failure_; }

private:
    void note(const QString& failure);
    void finish();
    void savePicture();

    MainWindow& window_;
    QString screenshot_;
    QString failure_;
    QTimer deadline_;
    bool finishing_ = false;
};

} // namespace ov::host
