// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/overview_loader.h"

#include "platform/threads/detached_thread.h"

#include <mutex>
#include <stop_token>
#include <utility>

namespace ov {

namespace {

constexpr std::size_t stretches = 1200; // more than a slider has pixels on most screens

} // namespace

// What a reader shares with its loader, which may be long gone when a stalled disk answers.
struct OverviewLoader::Reading {
    Reading(OverviewLoader& loader, std::string thePath)
        : path(std::move(thePath)),
          known(loader.key_),
          folder(platform::driveFolder()),
          receiver(&loader) {}

    const std::string path;
    const Key known; // of what the loader has already
    const std::string folder;
    std::stop_source stop;
    std::mutex mutex;
    OverviewLoader* receiver; // guarded; nullptr when nobody waits any more
};

OverviewLoader::~OverviewLoader() {
    giveUp();
}

void OverviewLoader::load(const std::string& path) {
    giveUp();
    reading_ = std::make_shared<Reading>(*this, path);
    if (!platform::startDetached([reading = reading_] { read(reading); }))
        giveUp(); // no thread can be had: the dictation plays without its picture
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
    platform::setDriveFolder(reading->folder);
    const Key key{reading->path, platform::fileStamp(reading->path)};
    std::vector<sound::WavePeaks> peaks; // of a fixed size, whatever the file is
    const bool isKnown = key == reading->known;
    if (!isKnown &&
        !sound::readWaveOverview(reading->path, stretches, reading->stop.get_token(), peaks))
        return;
    const std::lock_guard<std::mutex> lock(reading->mutex);
    if (OverviewLoader* receiver = reading->receiver)
        QMetaObject::invokeMethod(
            receiver,
            [receiver, reading, key, isKnown, read = std::move(peaks)] {
                if (receiver->reading_ == reading)
                    receiver->take(key, isKnown ? receiver->peaks_ : read);
            },
            Qt::QueuedConnection);
}

void OverviewLoader::take(const Key& key, std::vector<sound::WavePeaks> peaks) {
    key_ = key;
    peaks_ = std::move(peaks);
    Q_EMIT ready(peaks_);
}

} // namespace ov
