// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/files.h"
#include "sound/wave_overview.h"

#include <QObject>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace ov {

// Reads the shape of a sound file on a thread of its own and tells when it is there. Keeps those
// of the last twenty files. Never waits for a disk: a reader that is not wanted any more ends by
// itself.
class OverviewLoader final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    ~OverviewLoader() override;
    OverviewLoader(const OverviewLoader&) = delete;
    OverviewLoader& operator=(const OverviewLoader&) = delete;

    // Asks for the shape of the file `path`; what was asked for before is given up. ready() comes
    // later from the event loop, and soon for a file that is kept, unless it has changed.
    void load(const std::string& path);
    void giveUp();

Q_SIGNALS:
    void ready(const std::vector<ov::sound::WavePeaks>& peaks);

private:
    struct Key {
        std::string path;
        platform::FileStamp stamp;
        bool operator==(const Key&) const = default;
    };
    struct Reading;
    static void read(const std::shared_ptr<Reading>& reading);
    struct Kept {
        Key key;
        std::vector<sound::WavePeaks> peaks;
    };
    void take(Kept read);

    std::list<Kept> kept_;             // the newest first
    std::shared_ptr<Reading> reading_; // that is wanted
};

} // namespace ov
