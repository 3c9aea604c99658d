// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "sound/wave_overview.h"

#include <QSlider>
#include <vector>

namespace ov {

// A slider whose track is the shape of the sound. A click moves it to the place clicked; the keys
// are those of any slider. To a screen reader its value is a time.
class SeekSlider final : public QSlider {
    Q_OBJECT

public:
    explicit SeekSlider(QWidget* parent);

    // Empty: no shape.
    void setOverview(std::vector<sound::WavePeaks> peaks);

    // How many of its steps are a second; 0 while there is nothing to move through.
    void setStepsPerSecond(double steps) { stepsPerSecond_ = steps; }
    double stepsPerSecond() const { return stepsPerSecond_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect track() const;
    int handlePlace() const;
    int valueAt(int x) const;
    void paintShape(QPainter& painter) const;
    void paintHandle(QPainter& painter) const;

    std::vector<sound::WavePeaks> peaks_;
    double stepsPerSecond_ = 0;
};

} // namespace ov
