// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ov {

class PlayerPanel;

// What the window around a player does for other programs.
struct BusCommands {
    // What came of a command. It has to be told neither at once nor at all: who asked hears that
    // nothing was done when the last copy of `Done` goes away.
    struct Answer {
        std::vector<std::string> texts;
        std::string problem; // a sentence; empty: it was done, or has begun
    };
    using Done = std::function<void(const Answer&)>;

    // Whether there is a row `step` (1 or -1) rows below the one that plays.
    std::function<bool(int step)> hasRow;
    std::function<void(int step, Done)> playRow;
    std::function<void(Done)> savedSearches;
    std::function<void(const std::string& name, Done)> search;

    // Where the desktop gives keys that work in all programs: whether the user is asked for them,
    // in any window so far, and that he wants none.
    std::function<bool()> wantsShortcuts;
    std::function<void()> declineShortcuts;
};

// Makes a player known to other programs of the user's session, who then see what it does and
// drive it: media keys, the desktop's own player window, macros of a word processor. See
// docs/dbus.md. While there is no bus, or one that does not answer, nothing happens.
class PlayerBus {
public:
    virtual ~PlayerBus() = default;
    PlayerBus(const PlayerBus&) = delete;
    PlayerBus& operator=(const PlayerBus&) = delete;

    // hasRow() may answer otherwise than before.
    virtual void tell() = 0;

protected:
    PlayerBus() = default;
};

// For a player that lives longer. Nothing where this was built without a bus, or the session has
// none.
std::unique_ptr<PlayerBus> makePlayerBus(PlayerPanel& player, BusCommands commands);

} // namespace ov
