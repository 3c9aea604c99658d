// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The one door to sound: each function builds the texts of media commands and sends them to the
// platform (sound/media.h), all from one thread, none waiting for sound.
//
// A command is sent as exactly 128 characters: cut, or filled up with blanks. A file name is
// shortened before, so that no usual command is cut.
//
// Nothing here raises. Commands return "" or what went wrong, in the words of the platform.
// Queries return -1 for a failure. Positions and lengths are in the device's time format,
// which is milliseconds unless somebody set another.

namespace ov::modMultimedia {

std::string MciCommand(std::string_view command);

// `file` is a path; one that is missing is given to the device as an empty name, which it refuses.
std::string MciOpen(std::string_view alias, std::string_view file, std::string_view deviceType);
std::string MciClose(std::string_view alias);
// Every device of the process.
std::string MciCloseAll();

// Plays on `outputDevice` (-1: any; a device that refuses it plays all the same). -1 as `from` is
// the position, as `to` the length. A play from the length starts at 0.
std::string MciPlay(std::string_view alias, std::int32_t outputDevice, std::int32_t from,
                    std::int32_t to);
std::string MciPause(std::string_view alias);
std::string MciResume(std::string_view alias);
std::string MciStop(std::string_view alias);
// Leaves the device stopped at `position`.
std::string MciSeek(std::string_view alias, std::int32_t position);
// Plays on from `position`. The result is that of the seek.
std::string MciSeekAndPlay(std::string_view alias, std::int32_t position);

std::int32_t MciGetPosition(std::string_view alias);
std::int32_t MciGetLength(std::string_view alias);
// Sets the time format to milliseconds, and to frames afterwards, which most devices refuse.
std::int32_t MciGetLengthMs(std::string_view alias);
std::int32_t MciGetSpeed(std::string_view alias);
// "stopped", "playing", "paused" or another word of the device; "ERROR" for a failure.
std::string MciGetMode(std::string_view alias);
// Units of the time format per second; -1 also for an empty file.
std::int32_t MciGetRate(std::string_view alias);

// An alias whose play ranges are kept and whose timer is ended when it is closed. None is tracked
// unless somebody sets it. One per thread.
struct TrackedAlias {
    std::string alias;
    void* window = nullptr; // owns the timer
    std::int32_t from = 0;
    std::int32_t to = 0;
};
TrackedAlias& trackedAlias();

} // namespace ov::modMultimedia
