// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "sound/wave_overview.h"

#include <QSlider>
#include <vector>

namespace ov {

// A slider with the shape of the sound behind it. A click moves it to the place clicked.
class SeekSlider final : public QSlider {
    Q_OBJECT

public:
    explicit SeekSlider(QWidget* parent);

    // Empty: no shape.
    void setOverview(std::vector<sound::WavePeaks> peaks);

    QSize sizeHint() const override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect groove() const;
    int valueAt(int x) const;

    std::vector<sound::WavePeaks> peaks_;
};

} // namespace ov
