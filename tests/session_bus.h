// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/environment.h"
#include "tests/sound_server.h"
#include "tests/temporary_store.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QTest>
#include <memory>

// A message bus of the test's own, and a program that is on it.

namespace ov::tests {

// The session's for what asks for it while this lives. It starts no services.
class SessionBus {
public:
    static bool isInstalled() { return std::system("command -v dbus-daemon >/dev/null 2>&1") == 0; }

    SessionBus() {
        std::ofstream(store_.native("bus.conf"))
            << "<busconfig><type>session</type><listen>" << address()
            << "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
               "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow "
               "eavesdrop=\"true\"/><allow own=\"*\"/>"
               "</policy></busconfig>";
        start();
    }

    std::string address() const { return "unix:path=" + store_.native("bus"); }
    void start() {
        fs::remove(store_.native("bus"));
        daemon_ = std::make_unique<Process>(
            "dbus-daemon --nofork --nopidfile --config-file=" + store_.native("bus.conf") + " >" +
            store_.native("log") + " 2>&1");
        // A moment before, the socket is there and takes no connections.
        EXPECT_TRUE(QTest::qWaitFor([this] { return takesConnections(); }, 60000));
    }
    void vanish() { daemon_ = nullptr; }
    // It takes connections and answers nobody.
    void hang() { daemon_->send(SIGSTOP); }
    void goOn() { daemon_->send(SIGCONT); }

private:
    bool takesConnections() const {
        const QString name = QStringLiteral("look");
        const bool isTaken =
            QDBusConnection::connectToBus(QString::fromStdString(address()), name).isConnected();
        QDBusConnection::disconnectFromBus(name);
        return isTaken;
    }

    TemporaryStore store_;
    Environment session_{"DBUS_SESSION_BUS_ADDRESS", address()};
    std::unique_ptr<Process> daemon_;
};

// Another program; it lets this one go on while it waits for an answer.
class BusClient : public QObject {
    Q_OBJECT

public:
    explicit BusClient(const std::string& address)
        : bus_(QDBusConnection::connectToBus(QString::fromStdString(address),
                                             QStringLiteral("client"))) {
        EXPECT_TRUE(bus_.isConnected());
    }
    ~BusClient() override { QDBusConnection::disconnectFromBus(QStringLiteral("client")); }

    QDBusConnection& bus() { return bus_; }

    QDBusMessage call(const char* service, const char* path, const char* interface,
                      const char* method, const QVariantList& arguments = {}) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QString::fromLatin1(service), QString::fromLatin1(path), QString::fromLatin1(interface),
            QString::fromLatin1(method));
        message.setArguments(arguments);
        const QDBusPendingCall pending = bus_.asyncCall(message);
        EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }, 60000)) << method;
        return pending.reply();
    }
    QStringList names() {
        constexpr const char* service = "org.freedesktop.DBus";
        return call(service, "/org/freedesktop/DBus", service, "ListNames")
            .arguments()
            .value(0)
            .toStringList();
    }
    // The signals of that name are kept, also those that hold the same as before.
    void listen(const char* interface, const char* name) {
        bus_.connect({}, {}, QString::fromLatin1(interface), QString::fromLatin1(name), this,
                     SLOT(keep(QDBusMessage)));
    }
    std::vector<QDBusMessage> heard;

public Q_SLOTS:
    void keep(const QDBusMessage& signal) { heard.push_back(signal); }

private:
    QDBusConnection bus_;
};

// Tests that are on a bus, as `client_` is. Where there is none they are skipped.
template <typename Fixture>
class OnBus : public Fixture {
protected:
    void SetUp() override {
        if (!SessionBus::isInstalled())
            GTEST_SKIP() << "no dbus-daemon is installed";
        bus_ = std::make_unique<SessionBus>();
        client_ = std::make_unique<BusClient>(bus_->address());
    }

    std::unique_ptr<SessionBus> bus_;
    std::unique_ptr<BusClient> client_;
};

} // namespace ov::tests
