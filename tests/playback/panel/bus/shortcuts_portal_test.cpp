// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/playback/panel/bus/bus_fixture.h"

#include <QDBusVirtualObject>

namespace ov {
namespace {

constexpr const char* shortcuts = "org.freedesktop.portal.GlobalShortcuts";
constexpr const char* desktop = "/org/freedesktop/portal/desktop";

// A desktop that gives keys, if `answer` is 0.
class FakePortal final : public QDBusVirtualObject {
public:
    FakePortal(const std::string& address, uint answer)
        : bus_(QDBusConnection::connectToBus(QString::fromStdString(address),
                                             QStringLiteral("portal"))),
          answer_(answer) {
        EXPECT_TRUE(bus_.registerVirtualObject(QLatin1String(desktop), this));
        EXPECT_TRUE(bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus(QStringLiteral("portal")); }

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& /*connection*/) override {
        asked.push_back(call.member().toStdString() + " " + call.signature().toStdString());
        const auto options =
            qdbus_cast<QVariantMap>(call.arguments().last().value<QDBusArgument>());
        QString sender = call.service();
        sender.remove(u':').replace(u'.', u'_');
        const QString request = QStringLiteral("%1/request/%2/%3")
                                    .arg(QLatin1String(desktop), sender,
                                         options.value(QStringLiteral("handle_token")).toString());
        bus_.send(call.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        const bool creates = call.member() == QLatin1String("CreateSession");
        if (creates)
            session_ = QStringLiteral("%1/session/%2/ovsearch").arg(QLatin1String(desktop), sender);
        else
            readShortcuts(call.arguments().at(1).value<QDBusArgument>());
        QDBusMessage response = QDBusMessage::createSignal(
            request, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
        const QVariantMap handle{{QStringLiteral("session_handle"), session_}};
        response.setArguments({creates ? 0U : answer_, creates ? handle : QVariantMap()});
        bus_.send(response);
        return true;
    }
    // In the session that was made last.
    void press(const char* id) { press(id, session_); }
    void press(const char* id, const QString& inSession) {
        QDBusMessage signal = QDBusMessage::createSignal(
            QLatin1String(desktop), QLatin1String(shortcuts), QStringLiteral("Activated"));
        signal.setArguments({QVariant::fromValue(QDBusObjectPath(inSession)), QLatin1String(id),
                             qulonglong{1}, QVariantMap()});
        bus_.send(signal);
    }
    void closeSession() {
        bus_.send(QDBusMessage::createSignal(
            session_, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Closed")));
    }

    std::vector<std::string> asked;
    std::string offered; // "back=Jump back; "

private:
    void readShortcuts(const QDBusArgument& list) {
        for (list.beginArray(); !list.atEnd();) {
            QString id;
            QVariantMap options;
            list.beginStructure();
            list >> id >> options;
            list.endStructure();
            const QString words = options.value(QStringLiteral("description")).toString();
            offered += (id + u'=' + words + QLatin1String("; ")).toStdString();
        }
        list.endArray(); // lets go of what it read with
    }

    QDBusConnection bus_;
    uint answer_;
    QString session_;
};

class ShortcutsOnBus : public PlayerOnBus {
protected:
    void openBefore(uint answer) {
        portal_ = std::make_unique<FakePortal>(bus_->address(), answer);
        commands_.wantsShortcuts = [this] { return declined_ == 0; };
        commands_.declineShortcuts = [this] { ++declined_; };
        player_ = nullptr;
        join();
        waitFor([this] { return isKnown(); });
        EXPECT_TRUE(portal_->asked.empty()) << "nobody is asked before he plays";
        play("one.WAV");
        waitFor([this] { return portal_->asked.size() == 2; });
        EXPECT_EQ(portal_->asked[0], "CreateSession a{sv}");
        EXPECT_EQ(portal_->asked[1], "BindShortcuts oa(sa{sv})sa{sv}");
    }
    void TearDown() override {
        other_ = nullptr;
        PlayerOnBus::TearDown();
        otherPanel_ = nullptr;
        portal_ = nullptr;
    }
    // What was the window becomes the other one.
    void openAnother() {
        press(2);
        otherPanel_ = std::move(panel_);
        other_ = std::move(player_);
        makePanel();
        join();
        waitFor([this] { return instances() == 2; });
    }
    void pauseAndGoBack() {
        goTo(50000);
        EXPECT_EQ(playback(), "Playing");
        portal_->press("play-pause");
        waitUntilShown("00:00:50 Paused");
        portal_->press("back");
        waitFor([this] { return shown().starts_with("00:00:45"); });
    }
    void playHere() {
        play("two.WAV");
        waitFor([this] { return playback() == "Playing"; });
    }

    std::unique_ptr<FakePortal> portal_;
    std::unique_ptr<PlayerPanel> otherPanel_;
    std::unique_ptr<PlayerBus> other_;
    int declined_ = 0;
};

TEST_F(ShortcutsOnBus, DriveThePlayerFromAllPrograms) {
    openBefore(0);
    EXPECT_EQ(portal_->offered, "play-pause=Play or pause; back=Jump back; forward=Jump forward; "
                                "time-stamp=Copy the time stamp; ");
    portal_->press("play-pause", QStringLiteral("/somebody"));
    portal_->press("format");
    pauseAndGoBack();
    portal_->press("forward");
    waitFor([this] { return shown().starts_with("00:00:50"); });
    portal_->press("time-stamp");
    waitFor([] { return QApplication::clipboard()->text() == QLatin1String("[00:00:50]"); });
    press(0);
    press(1);
    EXPECT_EQ(portal_->asked.size(), 2) << "once";
    EXPECT_EQ(declined_, 0);
}

TEST_F(ShortcutsOnBus, AreNotOfferedToWhoWantsNone) {
    openBefore(1);
    waitFor([this] { return declined_ == 1; });
    openAnother();
    other_ = nullptr;
    portal_->asked.clear();
    playHere();
    EXPECT_TRUE(portal_->asked.empty());
}

TEST_F(ShortcutsOnBus, AreAskedForOnceByAllWindows) {
    openBefore(0);
    openAnother();
    playHere();
    EXPECT_EQ(portal_->asked.size(), 2);
    pauseAndGoBack();
    portal_->press("play-pause");
    waitFor([this] { return playback() == "Playing"; });
    other_ = nullptr;
    waitFor([this] { return portal_->asked.size() == 4; });
    portal_->press("play-pause");
    waitFor([this] { return playback() == "Paused"; });
}

TEST_F(ShortcutsOnBus, AreAskedForAgainWhereTheDesktopTookThemAway) {
    openBefore(0);
    portal_->closeSession();
    portal_->press("play-pause");
    client_->names();
    EXPECT_EQ(playback(), "Playing");
    EXPECT_EQ(portal_->asked.size(), 2) << "not before it plays again";
    press(2);
    waitFor([this] { return playback() == "Stopped"; });
    play("two.WAV");
    waitFor([this] { return portal_->asked.size() == 4; });
    portal_->press("play-pause");
    waitFor([this] { return playback() == "Paused"; });
}

} // namespace
} // namespace ov
