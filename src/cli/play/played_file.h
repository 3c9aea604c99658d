// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/play/play_span.h"
#include "playback/play_loop.h"

#include <cstdint>
#include <string>

namespace ov::cli {

// A file that the terminal plays, or a span of it. One at a time.
class PlayedFile {
public:
    PlayedFile() = default;
    ~PlayedFile();
    PlayedFile(const PlayedFile&) = delete;
    PlayedFile& operator=(const PlayedFile&) = delete;

    // Opens and plays it. Empty, or what went wrong.
    std::string play(const std::string& native, const WantedSpan& wanted, std::int32_t speed);

    enum class State : std::uint8_t { playing, standing, over, failed };
    State state() const;
    // Begins the next round of a loop.
    void goOn();
    // Why it failed.
    std::string problem() const;
    std::int32_t position() const;
    std::int32_t length() const { return length_; }
    std::int32_t end() const { return span_.to; } // of what is played of it

    void pauseOrGoOn();
    void stop(); // stands at its beginning
    void skip(std::int32_t seconds);
    // "-30" counts from where it is. False, and nothing done, for a place beyond end().
    bool goTo(const TypedTime& time);
    // See PlayLoop. What it has marked now.
    const PlayLoop& markLoop();
    void setSpeed(std::int32_t percent);

private:
    void playFrom(std::int32_t position);
    void moveTo(std::int64_t position);

    PlaySpan span_;
    PlayLoop loop_;
    bool playsLoop_ = false; // what plays ends where that does
    std::int32_t length_ = 0;
    bool stands_ = false;  // as the user wants it to
    bool skipped_ = false; // to its end
};

} // namespace ov::cli
