// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/bus/player_bus.h"
#include "playback/panel/player_panel.h"

#include <QString>
#include <QVariantMap>
#include <string>
#include <utility>

namespace ov {

// A player, what is told of it, and what has been told already.
class ToldPlayer {
public:
    ToldPlayer(PlayerPanel& player, BusCommands commands)
        : player_(player), commands_(std::move(commands)) {}

    PlayerPanel& player() { return player_; }
    const BusCommands& commands() const { return commands_; }

    void playOrPause();

    // The id of what is open now; another one each time that something is opened.
    QString track(const PlayerStatus& status);
    QVariantMap properties();
    // Those that are others than the last time; never the position, which others reckon.
    QVariantMap changes();

private:
    PlayerPanel& player_;
    BusCommands commands_;
    std::string path_;
    int opened_ = 0;
    QVariantMap told_;
};

} // namespace ov
