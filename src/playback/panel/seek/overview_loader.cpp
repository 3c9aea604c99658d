// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/seek/overview_loader.h"

#include "platform/threads/detached_thread.h"

#include <algorithm>
#include <mutex>
#include <stop_token>
#include <utility>

namespace ov {

namespace {

// More than a slider has pixels on most screens, and enough to look at single words.
constexpr sound::OverviewDetail detail{1200, 20};
constexpr std::size_t mostKept = 20;

} // namespace

// What a reader shares with its loader, which may be long gone when a stalled disk answers.
struct OverviewLoader::Reading {
    Reading(OverviewLoader& loader, std::string thePath)
        : path(std::move(thePath)), folder(platform::driveFolder()), receiver(&loader) {
        for (const Kept& one : loader.kept_)
            known.push_back(one.key);
    }

    const std::string path;
    std::vector<Key> known; // what the loader has already
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
    Kept kept{{reading->path, platform::fileStamp(reading->path)}, {}};
    const std::vector<Key>& known = reading->known;
    if (std::find(known.begin(), known.end(), kept.key) == known.end() &&
        !sound::readWaveOverview(reading->path, detail, reading->stop.get_token(), kept.peaks))
        return;
    const std::lock_guard<std::mutex> lock(reading->mutex);
    if (OverviewLoader* receiver = reading->receiver)
        QMetaObject::invokeMethod(
            receiver,
            [receiver, reading, read = std::move(kept)] {
                if (receiver->reading_ == reading)
                    receiver->take(read);
            },
            Qt::QueuedConnection);
}

// Without peaks it is one that is kept.
void OverviewLoader::take(Kept read) {
    const auto known = std::find_if(kept_.begin(), kept_.end(),
                                    [&](const Kept& one) { return one.key == read.key; });
    if (known != kept_.end())
        kept_.splice(kept_.begin(), kept_, known);
    else
        kept_.push_front(std::move(read));
    if (kept_.size() > mostKept)
        kept_.pop_back();
    Q_EMIT ready(kept_.front().peaks);
}

} // namespace ov
