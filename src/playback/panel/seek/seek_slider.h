// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "playback/panel/seek/seek_view.h"
#include "playback/panel/seek/wave_shape.h"
#include "playback/play_loop.h"

#include <QSlider>
#include <vector>

namespace ov {

// A slider whose track is the shape of the sound, pauses shaded. A click moves it to the place
// clicked; the keys are those of any slider. The wheel, or + and -, show a part of it, which turns
// its page while it plays; 0 shows all. Over it the pointer tells the time. To a screen reader its
// value is a time.
class SeekSlider final : public QSlider {
    Q_OBJECT

public:
    explicit SeekSlider(QWidget* parent);

    // Empty: no shape.
    void setOverview(std::vector<sound::WavePeaks> peaks);

    // How many of its steps are a second; 0 while there is nothing to move through.
    void setStepsPerSecond(double steps) { stepsPerSecond_ = steps; }
    double stepsPerSecond() const { return stepsPerSecond_; }
    // In units of which `scale` are a step.
    void setLoop(const PlayLoop& loop, double scale);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void sliderChange(SliderChange change) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect track() const;
    double shareAt(int x) const;
    int pixelOf(double place) const;
    double place(double value) const;
    int handlePlace() const { return pixelOf(place(sliderPosition())); }
    int valueAt(int x) const;
    bool tellTime(QPoint at);
    void zoom(double factor, double at);
    void fill(QPainter& painter, double from, double to, const QColor& colour) const;
    void paintGround(QPainter& painter) const;
    void paintShape(QPainter& painter) const;
    void paintHandle(QPainter& painter) const;

    WaveShape shape_;
    std::vector<WaveShape::Silence> silences_;
    SeekView view_;
    PlayLoop loop_;
    double loopScale_ = 0;
    double stepsPerSecond_ = 0;
};

} // namespace ov
