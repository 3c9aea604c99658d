// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/seek/seek_slider.h"
#include "tests/window/looked_through.h"
#include "tests/window/window_fixture.h"

#include <QStyleFactory>

namespace ov {
namespace {

// Within the frame; each letter is a colour.
std::string drawn(QWidget& widget, std::map<QRgb, char>& letters) {
    const QImage image = widget.grab(widget.rect().adjusted(3, 3, -3, -3)).toImage();
    std::string all = "\n";
    for (int y = 0; y < image.height(); ++y, all += '\n')
        for (int x = 0; x < image.width(); ++x) {
            const auto next = static_cast<char>('a' + letters.size() - 2);
            all += letters.emplace(image.pixel(x, y), next).first->second;
        }
    return all;
}

// Loud, a long and a short pause, ever louder.
std::vector<sound::WavePeaks> shape() {
    std::vector<sound::WavePeaks> peaks(400);
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const bool pauses = (i >= 120 && i < 200) || (i >= 240 && i < 246);
        const auto high = static_cast<std::int16_t>(pauses ? 329 : i < 120 ? 24000 : i * 80);
        peaks[i] = {static_cast<std::int16_t>(pauses ? -329 : -high / 2), high};
    }
    return peaks;
}

TEST(SeekPicture, IsAsItWasLookedThrough) {
    SeekSlider slider(nullptr);
    const std::unique_ptr<QStyle> style(QStyleFactory::create(QStringLiteral("fusion")));
    slider.setStyle(style.get());
    QPalette colours(Qt::black, Qt::gray, Qt::white, Qt::black, Qt::gray, Qt::black, Qt::white);
    colours.setColor(QPalette::Highlight, Qt::blue);
    colours.setColor(QPalette::Link, Qt::red);
    slider.setPalette(colours);
    slider.resize(90, 25);
    slider.setRange(100, 1100);
    std::map<QRgb, char> letters{{qRgb(255, 255, 255), '.'}, {qRgb(0, 0, 0), '#'}};
    std::string all = drawn(slider, letters);
    slider.setStepsPerSecond(50); // twenty seconds
    slider.setOverview(shape());
    const auto loop = [](std::initializer_list<std::int32_t> places) {
        PlayLoop marked;
        for (const std::int32_t place : places)
            marked.mark(place, 1);
        return marked;
    };
    const std::function<void()> changes[] = {
        [&] { slider.setValue(400); },
        [&] { slider.setLoop(loop({3000}), 10); },
        [&] {
            slider.setLoop(loop({7000, 3000}), 10);
        },
        [&] { QTest::keyClick(&slider, Qt::Key_Plus); },
        [&] { slider.setValue(800); }, // the page is turned
        [&] { slider.setOverview({}); },
        [&] { slider.setLoop({}, 10); },
    };
    for (const auto& change : changes) {
        change();
        all += drawn(slider, letters);
    }
    expectLookedThrough(all, "playback/panel/seek/seek_picture.txt");
}

} // namespace
} // namespace ov
