// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/play/played_file.h"

#include "platform/files.h"
#include "playback/milliseconds.h"
#include "playback/modMultimedia.h"
#include "playback/play_speeds.h"

#include <algorithm>

namespace ov::cli {

using namespace modMultimedia;

namespace {

constexpr const char* alias = "Player"; // which counts in milliseconds
constexpr std::int32_t anyOutput = -1;

} // namespace

PlayedFile::~PlayedFile() {
    MciClose(alias);
}

std::string PlayedFile::play(const std::string& native, const WantedSpan& wanted,
                             std::int32_t speed) {
    if (platform::directoryExists(platform::fromNativePath(native)))
        return "is a folder; play takes sound files, and --root the folder of a store";
    if (std::string error = MciOpen(alias, platform::fromNativePath(native), "waveaudio");
        !error.empty())
        return error;
    length_ = std::max(MciGetLength(alias), 0);
    const auto span = spanOf(wanted, length_);
    if (!span)
        return "has nothing between --from and --to";
    span_ = *span;
    if (speed != usualPlaySpeed)
        setSpeed(speed);
    return MciPlay(alias, anyOutput, span_.from, span_.to);
}

PlayedFile::State PlayedFile::state() const {
    const std::string mode = MciGetMode(alias);
    if (mode == "ERROR")
        return State::failed;
    if (stands_)
        return State::standing;
    return (mode == "playing" || playsLoop_) && !skipped_ ? State::playing : State::over;
}

void PlayedFile::goOn() {
    if (playsLoop_ && !stands_ && MciGetMode(alias) == "stopped")
        playFrom(loop_.from());
}

// What a device that failed answers.
std::string PlayedFile::problem() const {
    return MciPause(alias);
}

std::int32_t PlayedFile::position() const {
    return MciGetPosition(alias);
}

void PlayedFile::playFrom(std::int32_t position) {
    playsLoop_ = loop_.isBefore(position);
    MciPlay(alias, anyOutput, position, playsLoop_ ? loop_.to() : span_.to);
    stands_ = false;
}

void PlayedFile::pauseOrGoOn() {
    goOn();
    if (stands_)
        playFrom(position() < span_.to ? position() : span_.from);
    else if (MciPause(alias).empty())
        stands_ = true;
}

void PlayedFile::stop() {
    MciStop(alias);
    MciSeek(alias, span_.from);
    stands_ = true;
}

void PlayedFile::skip(std::int32_t seconds) {
    moveTo(position() + std::int64_t{seconds} * msOfSecond);
}

bool PlayedFile::goTo(const TypedTime& time) {
    const std::int64_t here = position();
    const std::int64_t place =
        (time.isRelative ? here : 0) + std::int64_t{time.seconds} * msOfSecond;
    if (!time.isRelative && place > span_.to)
        return false;
    // Not to its end, where it would be left.
    moveTo(std::min(place, std::max<std::int64_t>(here, span_.to - msOfSecond)));
    return true;
}

const PlayLoop& PlayedFile::markLoop() {
    constexpr std::int32_t shortest = 500;
    const std::int32_t here = position();
    loop_.mark(here, shortest);
    // What plays already has its end.
    if (loop_.isWhole())
        moveTo(loop_.from());
    else if (!loop_.isMarked())
        moveTo(here);
    return loop_;
}

void PlayedFile::moveTo(std::int64_t position) {
    const auto target =
        static_cast<std::int32_t>(std::clamp<std::int64_t>(position, span_.from, span_.to));
    if (stands_)
        MciSeek(alias, target);
    else if (target < span_.to)
        playFrom(target);
    else
        skipped_ = true;
}

void PlayedFile::setSpeed(std::int32_t percent) {
    MciCommand(std::string("set ") + alias + " tempo " + std::to_string(percent));
}

} // namespace ov::cli
