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

// What a program on the bus finds of the panel.
class PlayerOnBus : public OnBus<Player> {
protected:
    void SetUp() override {
        OnBus::SetUp();
        if (IsSkipped())
            return;
        join();
        waitUntilKnown();
    }
    void TearDown() override {
        player_ = nullptr;
        panel_ = nullptr;
        client_ = nullptr;
    }
    void join() { player_ = makePlayerBus(*panel_, commands_); }
    void waitUntilKnown() {
        waitFor([this] { return client_->names().contains(QLatin1String(macroName)); });
    }

    QDBusMessage call(const char* interface, const char* method,
                      const QVariantList& arguments = {}) {
        return client_->call(macroName, playerPath, interface, method, arguments);
    }
    QVariant result(const char* method) { return call(own, method).arguments().value(0); }
    QVariant get(const char* name) {
        return call(properties, "Get", {QLatin1String(mpris), QLatin1String(name)})
            .arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant();
    }
    std::string set(const char* name, const QVariant& value) {
        return call(properties, "Set", {QLatin1String(mpris), QLatin1String(name), variant(value)})
            .errorName()
            .toStdString();
    }
    QVariantMap metadata() {
        return qdbus_cast<QVariantMap>(get("Metadata").value<QDBusArgument>());
    }
    std::string playback() { return get("PlaybackStatus").toString().toStdString(); }
    double seconds() { return result("Position").toDouble() / 1000; }

    BusCommands commands_;
    std::unique_ptr<PlayerBus> player_;
};

} // namespace ov
