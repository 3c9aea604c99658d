// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/bus/dbus/bus_calls.h"
#include "playback/panel/bus/dbus/bus_connection.h"
#include "playback/panel/bus/dbus/shortcuts_portal.h"
#include "playback/panel/bus/dbus/told_player.h"
#include "playback/panel/bus/player_bus.h"

#include <QObject>
#include <QTimer>

namespace ov {

// A player on the session bus. Each has a connection and an MPRIS name of its own; the name that
// macros use belongs to the one that played last.
class SessionPlayer final : public QObject, public PlayerBus {
    Q_OBJECT

public:
    SessionPlayer(const QString& address, PlayerPanel& player, BusCommands commands);

    void tell() override { soon_.start(); }

private:
    void begin(const QString& name);
    void take(const QDBusMessage& call);
    void publish();
    void requestName(const QString& name, uint flags);
    void hearOfNames();
    void takeSignal(const QDBusMessage& signal);
    void offerShortcuts();
    void pressed(PedalAction action);

    ToldPlayer told_;
    BusCalls calls_;
    BusConnection bus_;
    ShortcutsPortal shortcuts_;
    bool isLast_ = false; // it has the name that macros use, or had it when the bus was lost
    QTimer soon_;         // several changes are told at once
    bool isConnected_ = false;
    bool hasMoved_ = false;
};

} // namespace ov
