// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/bus/player_status.h"

#include <QString>
#include <QVariantMap>
#include <cstdint>

// What is told of a player on the bus.

namespace ov::bus {

inline constexpr const char* objectPath = "/org/mpris/MediaPlayer2";
inline constexpr const char* rootInterface = "org.mpris.MediaPlayer2";
inline constexpr const char* playerInterface = "org.mpris.MediaPlayer2.Player";
inline constexpr const char* ownInterface = "org.orvanta.OVSearch.Player1";
inline constexpr const char* ownName = "org.orvanta.OVSearch";

inline constexpr std::int64_t microsecondsInMs = 1000;

// The one that is open as the `number`th; an id of its own each, none while nothing is open.
QString trackId(const PlayerStatus& status, int number);

QVariantMap rootProperties();
// Of playerInterface; `track` is the id.
QVariantMap playerProperties(const PlayerStatus& status, const QString& track, bool hasNext,
                             bool hasPrevious);

} // namespace ov::bus
