// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Built where there is no D-Bus.

#include "playback/panel/bus/player_bus.h"

namespace ov {

std::unique_ptr<PlayerBus> makePlayerBus(PlayerPanel& /*player*/, BusCommands /*commands*/) {
    return nullptr;
}

} // namespace ov
