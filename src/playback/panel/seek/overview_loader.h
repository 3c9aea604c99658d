// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/files.h"
#include "sound/wave_overview.h"

#include <QObject>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ov {

// The shapes of the last twenty files, for all windows of the program. For the thread of
// the windows only.
class OverviewStore {
public:
    struct Overview {
        std::string path;
        platform::FileStamp stamp; // when it was read
        std::vector<sound::WavePeaks> peaks;
    };
    // Readers hold it too: it may be dropped here meanwhile.
    using Shared = std::shared_ptr<const Overview>;

    static OverviewStore& instance();

    Shared find(std::string_view path) const;
    // In place of another one of that path.
    void keep(Shared overview);

private:
    std::vector<Shared> kept_; // the newest first
};

// Reads the shape of a sound file on a thread of its own, unless it is in the store, and tells when
// it is there. Never waits for a disk: a reader that is not wanted any more ends by itself.
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
    struct Reading;
    static void read(const std::shared_ptr<Reading>& reading);
    static OverviewStore::Shared overviewOf(const Reading& reading);

    std::shared_ptr<Reading> reading_; // that is wanted
};

} // namespace ov
