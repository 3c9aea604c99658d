// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/overview_loader.h"

#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

namespace ov {

namespace {

constexpr std::size_t stretches = 1200; // more than a slider has pixels on most screens

} // namespace

// What a reader shares with its loader, which may be long gone when a stalled disk answers.
struct OverviewLoader::Reading {
    Reading(OverviewLoader& loader, Key theKey) : key(std::move(theKey)), receiver(&loader) {}

    const Key key;
    std::stop_source stop;
    std::mutex mutex;
    OverviewLoader* receiver; // guarded; nullptr when nobody waits any more
};

OverviewLoader::~OverviewLoader() {
    giveUp();
}

void OverviewLoader::load(const std::string& path) {
    giveUp();
    Key key{path, platform::fileStamp(path)};
    if (key == key_) {
        Q_EMIT ready(peaks_);
        return;
    }
    reading_ = std::make_shared<Reading>(*this, std::move(key));
    try {
        std::thread([reading = reading_] { read(reading); }).detach();
    } catch (const std::system_error&) {
        giveUp(); // no thread can be had: the dictation plays without its picture
    }
}

void OverviewLoader::giveUp() {
    if (const auto reading = std::exchange(reading_, nullptr)) {
        reading->stop.request_stop();
        const std::lock_guard<std::mutex> lock(reading->mutex);
        reading->receiver = nullptr;
    }
}

// On the reader's thread.
void OverviewLoader::read(const std::shared_ptr<Reading>& reading) {
    std::vector<sound::WavePeaks> peaks; // of a fixed size, whatever the file is
    if (!sound::readWaveOverview(reading->key.path, stretches, reading->stop.get_token(), peaks))
        return;
    const std::lock_guard<std::mutex> lock(reading->mutex);
    if (OverviewLoader* receiver = reading->receiver)
        QMetaObject::invokeMethod(
            receiver,
            [receiver, reading, read = std::move(peaks)] {
                if (receiver->reading_ == reading)
                    receiver->take(reading->key, read);
            },
            Qt::QueuedConnection);
}

void OverviewLoader::take(const Key& key, std::vector<sound::WavePeaks> peaks) {
    key_ = key;
    peaks_ = std::move(peaks);
    Q_EMIT ready(peaks_);
}

} // namespace ov
