// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <algorithm>

namespace ov::bench {

// The longest time between two events of a timer that is always due.
class StallWatch {
public:
    StallWatch() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { note(); });
        timer_.start(1);
        clock_.start();
    }
    double worstMilliseconds() {
        note();
        return static_cast<double>(worst_) / 1e6;
    }

private:
    void note() {
        worst_ = std::max(worst_, clock_.nsecsElapsed());
        clock_.restart();
    }

    QTimer timer_;
    QElapsedTimer clock_;
    qint64 worst_ = 0;
};

} // namespace ov::bench
