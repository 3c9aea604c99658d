// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How the player opens a file: one that takes long is opened while the window lives.

#include "playback/modMultimedia.h"
#include "playback/panel/player_panel.h"

#include <chrono>
#include <utility>

namespace ov {

using namespace modMultimedia;

namespace {

constexpr const char* playerAlias = "PBWave";
constexpr const char* deviceType = "waveaudio";
constexpr int openingInterval = 20; // ms
// What a click may take, and nearly every file does not.
constexpr std::chrono::milliseconds briefWait{300};

} // namespace

void PlayerPanel::PlayerOpenFile(const std::string& path) {
    if (path.empty() || path == (opening_ ? opening_->path() : file_))
        return;
    giveUpOpening();
    if (!FileOpening::mayBegin()) {
        PlayerClose();
        setProblem(platform::noAnswer(path).description());
        PlayerRefresh();
        return;
    }
    opening_ = std::make_unique<FileOpening>(path);
    if (opening_->wait(briefWait)) {
        takeOpened();
        return;
    }
    PlayerClose();
    setProblem({});
    PlayerRefresh();
    timerOpening_.start(openingInterval);
}

void PlayerPanel::giveUpOpening() {
    timerOpening_.stop();
    opening_ = nullptr;
}

void PlayerPanel::timerOpening_Timer() {
    if (!opening_ || !opening_->wait(std::chrono::milliseconds(0)))
        return;
    const bool plays = opening_->playsThen;
    takeOpened();
    if (plays && !alias_.empty())
        playOpen();
    PlayerRefresh();
}

void PlayerPanel::takeOpened() {
    timerOpening_.stop();
    const auto opening = std::exchange(opening_, nullptr);
    if (auto sound = opening->take())
        return load(opening->path(), std::move(*sound));
    PlayerRefresh(); // nothing is opening any more
    Q_EMIT fileMissing(opening->path());
}

void PlayerPanel::load(const std::string& path, sound::OpenedSound opened) {
    PlayerClose();
    file_ = path;
    const std::int64_t bytes = opened.bytes;
    const sound::OpenedAhead ahead(path, std::move(opened));
    const std::string problem = MciOpen(playerAlias, path, deviceType);
    setProblem(problem);
    PlayerLoad(problem.empty() ? playerAlias : "");
    if (!problem.empty()) {
        PlayerRefresh();
        return;
    }
    overview_.load(path);
    offerPlace(bytes);
}

} // namespace ov
