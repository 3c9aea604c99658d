// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/told_player.h"

#include "playback/panel/bus/dbus/bus_values.h"

namespace ov {

void ToldPlayer::playOrPause() {
    if (player_.status().mode == PlayerStatus::Mode::playing)
        player_.pedalRest();
    else
        player_.pedalPlay();
}

QString ToldPlayer::track(const PlayerStatus& status) {
    if (path_ != status.path) {
        path_ = status.path;
        opened_ += path_.empty() ? 0 : 1;
    }
    return bus::trackId(status, opened_);
}

QVariantMap ToldPlayer::properties() {
    const PlayerStatus status = player_.status();
    const auto has = [this](int step) { return commands_.hasRow && commands_.hasRow(step); };
    return bus::playerProperties(status, track(status), has(1), has(-1));
}

QVariantMap ToldPlayer::changes() {
    QVariantMap now = properties();
    now.remove(QStringLiteral("Position"));
    QVariantMap changed;
    for (auto property = now.cbegin(); property != now.cend(); ++property)
        if (told_.value(property.key()) != property.value())
            changed.insert(property.key(), property.value());
    told_ = std::move(now);
    return changed;
}

} // namespace ov
