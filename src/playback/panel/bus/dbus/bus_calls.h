// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/bus/dbus/bus_reply.h"
#include "playback/panel/bus/dbus/told_player.h"

#include <QString>
#include <chrono>
#include <memory>

namespace ov {

// What others may call of a player, and what follows. Nothing that they send is trusted.
class BusCalls {
public:
    using Reply = std::shared_ptr<BusReply>;

    explicit BusCalls(ToldPlayer& told) : told_(told) {}

    // Lets no messages be handled.
    void perform(const Reply& reply);

    // Of all that can be called and asked for, in the bus's XML.
    static QString description();

private:
    struct Method;
    static const Method methods[];
    static const Method* methodOf(const QDBusMessage& call);
    PlayerPanel& player() { return told_.player(); }

    void raise(const Reply& reply);
    void play(const Reply& reply);
    void pause(const Reply& reply);
    void playPause(const Reply& reply);
    void stop(const Reply& reply);
    void seek(const Reply& reply);
    void setPosition(const Reply& reply);
    void getProperty(const Reply& reply);
    void getProperties(const Reply& reply);
    void setProperty(const Reply& reply);
    void position(const Reply& reply);
    void timeStamp(const Reply& reply);
    void copyTimeStamp(const Reply& reply);
    void jump(const Reply& reply);
    void goTo(const Reply& reply);
    void next(const Reply& reply);
    void previous(const Reply& reply);
    void savedSearches(const Reply& reply);
    void search(const Reply& reply);
    void refuseAll(const Reply& reply);
    void acceptAll(const Reply& reply);

    bool isOpen(BusReply& reply);
    void playRow(const Reply& reply, int step);
    void setNumber(BusReply& reply, const QString& name, double value);

    ToldPlayer& told_;
};

} // namespace ov
