// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/wave_overview.h"

#include <QObject>
#include <string>
#include <thread>
#include <vector>

namespace ov {

// Reads the shape of a sound file on a thread of its own and tells when it is there. Keeps that
// of the last file.
class OverviewLoader final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Asks for the shape of the file `path`; what was asked for before is given up. ready() comes
    // at once for the file that was read last.
    void load(const std::string& path);
    void giveUp();

Q_SIGNALS:
    void ready(const std::vector<ov::platform::WavePeaks>& peaks);

private:
    void take(const std::string& path, std::vector<platform::WavePeaks> peaks);

    std::string path_; // that the peaks are of
    std::string wanted_;
    std::vector<platform::WavePeaks> peaks_;
    std::jthread thread_; // the last member: ends before the others
};

} // namespace ov
