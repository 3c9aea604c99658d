// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/seek/overview_loader.h"

#include "platform/threads/detached_thread.h"

#include <mutex>
#include <stop_token>
#include <utility>

namespace ov {

namespace {

// More than a slider has pixels on most screens, and enough to look at single words.
constexpr sound::OverviewDetail detail{1200, 20};
constexpr std::size_t mostKept = 20;

} // namespace

OverviewStore::Shared OverviewStore::find(std::string_view path) const {
    for (const Shared& one : kept_)
        if (one->path == path)
            return one;
    return nullptr;
}

void OverviewStore::keep(Shared overview) {
    std::erase_if(kept_, [&](const Shared& one) { return one->path == overview->path; });
    kept_.insert(kept_.begin(), std::move(overview));
    if (kept_.size() > mostKept)
        kept_.pop_back();
}

OverviewStore& OverviewStore::instance() {
    static OverviewStore theStore;
    return theStore;
}

// What a reader shares with its loader, which may be long gone when a stalled disk answers.
struct OverviewLoader::Reading {
    Reading(OverviewLoader& loader, std::string thePath)
        : path(std::move(thePath)),
          known(OverviewStore::instance().find(path)),
          folder(platform::driveFolder()),
          receiver(&loader) {}

    const std::string path;
    const OverviewStore::Shared known; // may be that of an older file, or none
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
    const OverviewStore::Shared overview = overviewOf(*reading);
    if (!overview)
        return;
    const std::lock_guard<std::mutex> lock(reading->mutex);
    if (OverviewLoader* receiver = reading->receiver)
        QMetaObject::invokeMethod(
            receiver,
            [receiver, reading, overview] {
                if (receiver->reading_ != reading)
                    return;
                OverviewStore::instance().keep(overview);
                Q_EMIT receiver->ready(overview->peaks);
            },
            Qt::QueuedConnection);
}

// Nothing when it cannot be had, or is not wanted any more.
OverviewStore::Shared OverviewLoader::overviewOf(const Reading& reading) {
    OverviewStore::Overview read{reading.path, platform::fileStamp(reading.path), {}};
    if (reading.known && reading.known->stamp == read.stamp)
        return reading.known;
    if (!sound::readWaveOverview(read.path, detail, reading.stop.get_token(), read.peaks))
        return nullptr;
    return std::make_shared<const OverviewStore::Overview>(std::move(read));
}

} // namespace ov
