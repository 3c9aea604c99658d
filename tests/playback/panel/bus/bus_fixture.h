// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/bus/player_bus.h"
#include "tests/playback/panel/player_fixture.h"
#include "tests/session_bus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

namespace ov {

inline constexpr const char* playerPath = "/org/mpris/MediaPlayer2";
inline constexpr const char* mpris = "org.mpris.MediaPlayer2.Player";
inline constexpr const char* own = "org.orvanta.OVSearch.Player1";
inline constexpr const char* properties = "org.freedesktop.DBus.Properties";
inline constexpr const char* macroName = "org.orvanta.OVSearch";

inline QVariant variant(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

// What a program on the bus says to the player and hears of it.
template <typename Fixture>
class PlayerClient : public OnBus<Fixture> {
protected:
    bool isKnown() { return this->client_->names().contains(QLatin1String(macroName)); }
    qsizetype instances() {
        return this->client_->names().filter(QLatin1String("OVSearch.instance")).size();
    }
    QDBusMessage call(const char* interface, const char* method,
                      const QVariantList& arguments = {}) {
        return this->client_->call(macroName, playerPath, interface, method, arguments);
    }
    std::string error(const char* interface, const char* method,
                      const QVariantList& arguments = {}) {
        return call(interface, method, arguments).errorName().toStdString();
    }
    QVariant get(const char* name) {
        const QDBusMessage answer =
            call(properties, "Get", {QLatin1String(mpris), QLatin1String(name)});
        return qvariant_cast<QDBusVariant>(answer.arguments().value(0)).variant();
    }
    bool is(const char* name) { return get(name).toBool(); }
    std::string set(const char* name, const QVariant& value) {
        return error(properties, "Set",
                     {QLatin1String(mpris), QLatin1String(name), variant(value)});
    }
};

class PlayerOnBus : public PlayerClient<Player> {
protected:
    void SetUp() override {
        OnBus::SetUp();
        if (IsSkipped())
            return;
        join();
        waitFor([this] { return isKnown(); });
    }
    void TearDown() override {
        player_ = nullptr;
        panel_ = nullptr;
        client_ = nullptr;
    }
    void join() { player_ = makePlayerBus(*panel_, commands_); }
    QVariant result(const char* method) { return call(own, method).arguments().value(0); }
    std::string timeStamp() { return result("TimeStamp").toString().toStdString(); }
    QVariantMap metadata() {
        return qdbus_cast<QVariantMap>(get("Metadata").value<QDBusArgument>());
    }
    QVariant track() { return metadata().value(QStringLiteral("mpris:trackid")); }
    void goTo(qlonglong milliseconds) { call(own, "GoTo", {milliseconds}); }
    std::string playback() { return get("PlaybackStatus").toString().toStdString(); }
    double seconds() { return result("Position").toDouble() / 1000; }

    BusCommands commands_;
    std::unique_ptr<PlayerBus> player_;
};

} // namespace ov
