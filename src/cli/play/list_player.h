// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/exit_code.h"
#include "cli/play/play_keys.h"
#include "cli/play/play_span.h"
#include "cli/play/played_file.h"
#include "platform/terminal/terminal.h"
#include "playback/clsMixer.h"
#include "playback/play_speeds.h"
#include "sound/effects/sound_shape.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ov::cli {

class TerminalInterface;

struct ListOptions {
    WantedSpan span; // of each file
    std::int32_t speed = usualPlaySpeed;
    sound::SoundShape shape;
    bool loops = false;
};

// Plays files one after the other, as the keys say. On a terminal shows on one line what plays and
// where it is.
class ListPlayer {
public:
    // The files are native.
    ListPlayer(std::vector<std::string> files, const ListOptions& options,
               TerminalInterface& terminal);

    // A file that cannot be played is told and left out.
    ExitCode play();

private:
    enum class Then : std::uint8_t { next, previous, end, interrupted };

    Then playOne(const std::string& file);
    Then follow(PlayedFile& played, const std::string& title);
    std::optional<Then> take(char typed, PlayedFile& played);
    std::optional<Then> obey(PlayKey key, PlayedFile& played);
    static std::optional<Then> leavingBy(PlayKey key);
    void takeTime(char typed, PlayedFile& played);
    void goTo(const std::string& text, PlayedFile& played);
    void tell(const std::string& words);
    void tellLoop(const PlayLoop& loop);
    void changeSpeed(int steps, PlayedFile& played);
    void show(const PlayedFile& played, const std::string& title);
    void tellFailure(const std::string& file, const std::string& problem);
    void tellMissingOutput();
    std::int32_t level();

    std::vector<std::string> files_;
    ListOptions options_;
    TerminalInterface& terminal_;
    platform::TerminalKeys keys_;
    PlayKeys meanings_;
    std::optional<std::string> time_; // to go to, as far as it has been typed
    clsMixer mixer_;
    bool hasLevel_;
    std::size_t at_ = 0;
    bool hasPlayed_ = false; // something, since the list began
    bool hasFailed_ = false;
    std::string missingOutput_; // that was told of
};

} // namespace ov::cli
