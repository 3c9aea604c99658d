// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/overview_loader.h"

#include <utility>

namespace ov {

namespace {

constexpr std::size_t stretches = 1200; // more than a slider has pixels on most screens

} // namespace

void OverviewLoader::load(const std::string& path) {
    wanted_ = path;
    if (path == path_) {
        Q_EMIT ready(peaks_);
        return;
    }
    // Replacing the thread stops the one before and waits for the piece it is reading.
    thread_ = std::jthread([this, path](const std::stop_token& stop) {
        std::vector<platform::WavePeaks> peaks;
        if (!platform::readWaveOverview(path, stretches, stop, peaks) || stop.stop_requested())
            return;
        QMetaObject::invokeMethod(
            this, [this, path, read = std::move(peaks)] { take(path, read); },
            Qt::QueuedConnection);
    });
}

void OverviewLoader::giveUp() {
    wanted_.clear();
    thread_.request_stop();
}

void OverviewLoader::take(const std::string& path, std::vector<platform::WavePeaks> peaks) {
    if (path != wanted_)
        return;
    path_ = path;
    peaks_ = std::move(peaks);
    Q_EMIT ready(peaks_);
}

} // namespace ov
