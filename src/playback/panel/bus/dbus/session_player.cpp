// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/session_player.h"

#include "playback/panel/bus/dbus/bus_values.h"

#include <QDBusMessage>
#include <QStringList>
#include <utility>

namespace ov {

namespace {

// Flags of the bus.
constexpr uint allowReplacement = 1;
constexpr uint replaceExisting = 2;

constexpr const char* busService = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";
constexpr std::int32_t keySeconds = 5; // that a key leads on or back

QDBusMessage signalOf(const char* interface, const char* name, const QVariantList& values) {
    QDBusMessage signal = QDBusMessage::createSignal(QLatin1String(bus::objectPath),
                                                     QLatin1String(interface), QLatin1String(name));
    signal.setArguments(values);
    return signal;
}

} // namespace

std::unique_ptr<PlayerBus> makePlayerBus(PlayerPanel& player, BusCommands commands) {
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (address.isEmpty())
        return nullptr;
    return std::make_unique<SessionPlayer>(address, player, std::move(commands));
}

SessionPlayer::SessionPlayer(const QString& address, PlayerPanel& player, BusCommands commands)
    : told_(player, std::move(commands)),
      calls_(told_),
      bus_(address, QLatin1String(bus::objectPath), BusCalls::description()),
      shortcuts_(bus_) {
    soon_.setSingleShot(true);
    soon_.setInterval(0);
    connect(&soon_, &QTimer::timeout, this, &SessionPlayer::publish);
    connect(&bus_, &BusConnection::connected, this, &SessionPlayer::begin);
    connect(&bus_, &BusConnection::lost, this, [this] { isConnected_ = false; });
    connect(&bus_, &BusConnection::signalled, this, &SessionPlayer::takeSignal);
    connect(&shortcuts_, &ShortcutsPortal::pressed, this, &SessionPlayer::pressed);
    connect(&shortcuts_, &ShortcutsPortal::freed, this, &SessionPlayer::offerShortcuts);
    connect(&shortcuts_, &ShortcutsPortal::declined, this, [this] {
        if (told_.commands().declineShortcuts)
            told_.commands().declineShortcuts();
    });
    hearOfNames();
    connect(&bus_, &BusConnection::called, this, &SessionPlayer::take);
    connect(&player, &PlayerPanel::refreshed, this, &SessionPlayer::tell);
    connect(&player, &PlayerPanel::moved, this, [this] {
        hasMoved_ = true;
        tell();
    });
}

void SessionPlayer::begin(const QString& name) {
    isConnected_ = true;
    shortcuts_.begin(name);
    QString number = name; // ":1.42"
    number.remove(QLatin1Char(':')).replace(QLatin1Char('.'), QLatin1Char('_'));
    requestName(QLatin1String(bus::rootInterface) + QLatin1String(".OVSearch.instance") + number,
                0);
    requestName(QLatin1String(bus::ownName), allowReplacement | (isLast_ ? replaceExisting : 0));
    offerShortcuts();
    tell();
}

void SessionPlayer::requestName(const QString& name, uint flags) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(busService), QLatin1String(busPath),
                                       QLatin1String(busService), QStringLiteral("RequestName"));
    call.setArguments({name, flags});
    bus_.send(call);
}

void SessionPlayer::hearOfNames() {
    for (const char* name : {"NameAcquired", "NameLost"})
        bus_.listen({QLatin1String(busService), QLatin1String(busPath), QLatin1String(busService),
                     QLatin1String(name)});
}

void SessionPlayer::takeSignal(const QDBusMessage& signal) {
    if (signal.interface() == QLatin1String(busService) &&
        signal.arguments().value(0).toString() == QLatin1String(bus::ownName))
        isLast_ = signal.member() == QLatin1String("NameAcquired");
}

// As soon as it plays. The answer of another window counts too.
void SessionPlayer::offerShortcuts() {
    const BusCommands& commands = told_.commands();
    if (told_.player().status().mode == PlayerStatus::Mode::playing && shortcuts_.canOffer() &&
        commands.wantsShortcuts && commands.wantsShortcuts())
        shortcuts_.offer();
}

// They mean the player that played last, which may be in another window or program.
void SessionPlayer::pressed(PedalAction action) {
    const bool plays = action == PedalAction::playOrPause;
    const bool stamps = action == PedalAction::timeStamp;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QLatin1String(bus::ownName), QLatin1String(bus::objectPath),
        QLatin1String(plays ? bus::playerInterface : bus::ownInterface),
        QLatin1String(plays    ? "PlayPause"
                      : stamps ? "CopyTimeStamp"
                               : "Jump"));
    if (!plays && !stamps)
        call.setArguments({action == PedalAction::jumpBack ? -keySeconds : keySeconds});
    bus_.send(call);
}

void SessionPlayer::take(const QDBusMessage& call) {
    calls_.perform(std::make_shared<BusReply>(&bus_, call));
}

void SessionPlayer::publish() {
    const bool moved = std::exchange(hasMoved_, false);
    if (!isConnected_)
        return;
    const QVariantMap changes = told_.changes();
    if (changes.value(QStringLiteral("PlaybackStatus")) == QLatin1String("Playing")) {
        requestName(QLatin1String(bus::ownName), allowReplacement | replaceExisting);
        offerShortcuts();
    }
    if (!changes.isEmpty())
        bus_.send(signalOf("org.freedesktop.DBus.Properties", "PropertiesChanged",
                           {QLatin1String(bus::playerInterface), changes, QStringList()}));
    const PlayerStatus now = told_.player().status();
    if (moved && now.isOpen())
        bus_.send(signalOf(bus::playerInterface, "Seeked",
                           {static_cast<qlonglong>(now.position.count() * bus::microsecondsInMs)}));
}

} // namespace ov
