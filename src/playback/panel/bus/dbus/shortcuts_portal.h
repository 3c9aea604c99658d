// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/bus/dbus/bus_connection.h"
#include "playback/pedal/pedal_action.h"

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <cstdint>

namespace ov {

// Keys of the player that work in all programs, where the desktop gives some (the portal
// org.freedesktop.portal.GlobalShortcuts): it asks the user which, and remembers that. Where there
// is no such desktop nobody answers, and nothing happens.
class ShortcutsPortal final : public QObject {
    Q_OBJECT

public:
    explicit ShortcutsPortal(BusConnection& bus);

    // What the bus calls us, ":1.42": nothing has been asked for there.
    void begin(const QString& name);
    bool canOffer() const { return step_ == Step::idle && !name_.isEmpty(); }
    // Asks for the keys, once and for all players of the process. While another has asked nothing
    // happens until freed().
    void offer();

Q_SIGNALS:
    void pressed(ov::PedalAction action);
    void declined(); // the user wants none
    void freed();    // the player that had asked is gone

private:
    enum class Step : std::uint8_t { idle, creating, binding, done };

    void end();
    void take(const QDBusMessage& signal);
    void answered(uint response, const QVariantMap& results);
    void bind();
    void ask(const char* method, QVariantList arguments, QVariantMap options);
    QString requestPath() const;

    BusConnection& bus_;
    QString name_;
    QString session_;
    Step step_ = Step::idle;
};

} // namespace ov
