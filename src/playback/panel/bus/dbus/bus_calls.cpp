// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/bus_calls.h"

#include "playback/panel/bus/dbus/bus_values.h"
#include "widgets/text.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace ov {

using Refusal = BusReply::Refusal;
using std::chrono::milliseconds;

namespace {

milliseconds ofMicroseconds(const QVariant& value) {
    return milliseconds(value.toLongLong() / bus::microsecondsInMs);
}

BusCommands::Done doneBy(const BusCalls::Reply& reply,
                         QVariantList (*values)(const BusCommands::Answer&)) {
    return [reply, values](const BusCommands::Answer& answer) {
        if (answer.problem.empty())
            reply->give(values(answer));
        else
            reply->refuse(Refusal::notFound, widgets::toQt(answer.problem));
    };
}

QVariantList nothing(const BusCommands::Answer& /*answer*/) {
    return {};
}

QVariantList oneList(const BusCommands::Answer& answer) {
    QStringList texts;
    for (const std::string& text : answer.texts)
        texts << widgets::toQt(text);
    return {texts};
}

} // namespace

void BusCalls::raise(const Reply& reply) {
    QWidget* window = player().window();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    window->activateWindow();
    reply->give();
}

void BusCalls::refuseAll(const Reply& reply) {
    reply->refuse(Refusal::invalid,
                  QStringLiteral("OVSearch plays dictations of its list, and no addresses."));
}

void BusCalls::acceptAll(const Reply& reply) {
    reply->give(); // and does nothing, as CanQuit says
}

// ---- Playing

void BusCalls::play(const Reply& reply) {
    player().pedalPlay();
    reply->give();
}

void BusCalls::pause(const Reply& reply) {
    player().pedalRest();
    reply->give();
}

void BusCalls::playPause(const Reply& reply) {
    told_.playOrPause();
    reply->give();
}

void BusCalls::stop(const Reply& reply) {
    player().PlayerStop();
    reply->give();
}

void BusCalls::next(const Reply& reply) {
    playRow(reply, 1);
}

void BusCalls::previous(const Reply& reply) {
    playRow(reply, -1);
}

// Without one nothing is done, and nobody is told, as players do.
void BusCalls::playRow(const Reply& reply, int step) {
    const BusCommands& commands = told_.commands();
    if (commands.hasRow && commands.playRow && commands.hasRow(step))
        commands.playRow(step, doneBy(reply, nothing));
    else
        reply->give();
}

// ---- Places

bool BusCalls::isOpen(BusReply& reply) {
    if (player().isOpen())
        return true;
    reply.refuse(Refusal::nothingOpen,
                 QStringLiteral("No dictation is open in the player; play one first."));
    return false;
}

void BusCalls::seek(const Reply& reply) {
    if (!isOpen(*reply))
        return;
    const PlayerStatus now = player().status();
    const milliseconds offset =
        std::clamp(ofMicroseconds(reply->argument(0)), -now.length, now.length);
    player().goTo(now.position + offset);
    reply->give();
}

// What is meant for another dictation, or leads out of this one, is ignored: it came too late.
void BusCalls::setPosition(const Reply& reply) {
    const PlayerStatus now = player().status();
    const qlonglong place = reply->argument(1).toLongLong();
    const bool isOfThis =
        now.isOpen() && reply->argument(0).value<QDBusObjectPath>().path() == told_.track(now);
    if (isOfThis && place >= 0 && place <= now.length.count() * bus::microsecondsInMs)
        player().goTo(ofMicroseconds(reply->argument(1)));
    reply->give();
}

void BusCalls::position(const Reply& reply) {
    if (isOpen(*reply))
        reply->give({static_cast<qlonglong>(player().status().position.count())});
}

void BusCalls::copyTimeStamp(const Reply& reply) {
    if (!isOpen(*reply))
        return;
    player().copyTimeStamp();
    reply->give();
}

void BusCalls::timeStamp(const Reply& reply) {
    if (isOpen(*reply))
        reply->give({player().timeStampText()});
}

void BusCalls::jump(const Reply& reply) {
    if (!isOpen(*reply))
        return;
    const std::chrono::seconds way(reply->argument(0).toInt());
    player().goTo(player().status().position + way);
    reply->give();
}

void BusCalls::goTo(const Reply& reply) {
    if (!isOpen(*reply))
        return;
    const milliseconds place(reply->argument(0).toLongLong());
    const milliseconds length = player().status().length;
    if (place < milliseconds(0) || place > length)
        return reply->refuse(
            Refusal::invalid,
            QStringLiteral("The place must lie within the dictation, which is %1 ms long.")
                .arg(length.count()));
    player().goTo(place);
    reply->give();
}

// ---- Searches

void BusCalls::savedSearches(const Reply& reply) {
    if (told_.commands().savedSearches)
        told_.commands().savedSearches(doneBy(reply, oneList));
}

void BusCalls::search(const Reply& reply) {
    const std::string name = widgets::toUtf8(reply->argument(0).toString());
    if (told_.commands().search)
        told_.commands().search(name, doneBy(reply, nothing));
}

// ---- Properties

void BusCalls::getProperties(const Reply& reply) {
    const QString interface = reply->argument(0).toString();
    if (interface == QLatin1String(bus::playerInterface))
        reply->give({told_.properties()});
    else if (interface == QLatin1String(bus::rootInterface))
        reply->give({bus::rootProperties()});
    else
        reply->give({QVariantMap()});
}

void BusCalls::getProperty(const Reply& reply) {
    const QString interface = reply->argument(0).toString();
    const QString name = reply->argument(1).toString();
    const QVariantMap all = interface == QLatin1String(bus::playerInterface) ? told_.properties()
                            : interface == QLatin1String(bus::rootInterface) ? bus::rootProperties()
                                                                             : QVariantMap();
    if (!all.contains(name))
        return reply->refuse(Refusal::invalid, QStringLiteral("There is no such property."));
    reply->give({QVariant::fromValue(QDBusVariant(all.value(name)))});
}

void BusCalls::setProperty(const Reply& reply) {
    const QString name = reply->argument(1).toString();
    const bool isNumber = reply->argument(0).toString() == QLatin1String(bus::playerInterface) &&
                          (name == QLatin1String("Rate") || name == QLatin1String("Volume"));
    if (!isNumber)
        return reply->refuse(Refusal::readOnly,
                             QStringLiteral("Only Rate and Volume of the player can be set."));
    const QVariant value = reply->argument(2).value<QDBusVariant>().variant();
    if (value.userType() != QMetaType::Double || !std::isfinite(value.toDouble()))
        return reply->refuse(Refusal::invalid,
                             QStringLiteral("%1 must be a finite number of type d.").arg(name));
    setNumber(*reply, name, value.toDouble());
}

void BusCalls::setNumber(BusReply& reply, const QString& name, double value) {
    constexpr double percent = 100;
    if (name == QLatin1String("Volume")) {
        player().changeVolume(std::clamp(value, 0.0, 1.0));
        return reply.give();
    }
    if (value == 0) { // pauses, by the standard
        player().pedalRest();
        return reply.give();
    }
    if (value < PlayerChoices::slowest / percent || value > PlayerChoices::fastest / percent)
        return reply.refuse(Refusal::invalid, QStringLiteral("Rate must be from 0.5 to 2, or 0."));
    player().changeSpeed(static_cast<std::int32_t>(std::lround(value * percent)));
    reply.give();
}

} // namespace ov
