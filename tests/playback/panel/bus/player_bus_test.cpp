// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "sound/wave_control.h"
#include "tests/playback/panel/bus/bus_fixture.h"
#include "tests/run_program.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <limits>

namespace ov {
namespace {

TEST_F(PlayerOnBus, PlaysPausesAndMovesForOthers) {
    EXPECT_EQ(playback(), "Stopped");
    EXPECT_FALSE(is("CanPlay"));
    selected = store.path("one.WAV");
    EXPECT_TRUE(is("CanPlay"));
    EXPECT_FALSE(is("CanPause") || is("CanSeek"));
    call(mpris, "PlayPause");
    waitFor([this] { return playback() == "Playing"; });
    EXPECT_TRUE(is("CanPause") && is("CanSeek"));
    EXPECT_EQ(shown().substr(9), "Playing");

    goTo(61000);
    EXPECT_NEAR(seconds(), 61, 2);
    EXPECT_EQ(set("Rate", 0.0), "");
    EXPECT_EQ(shown(), "00:01:01 Paused") << "as the standard wants";
    EXPECT_EQ(panel_->choices().speedPercent, 100);
    call(mpris, "Pause");
    EXPECT_EQ(playback(), "Paused") << "twice is once";
    const QVariant foreign = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/somebody")));
    const QVariant here = track();
    for (const QVariantList& late : {QVariantList{foreign, qlonglong{1000000}},
                                     {here, qlonglong{-1}},
                                     {here, qlonglong{100001000}},
                                     {here, std::numeric_limits<qlonglong>::max()}})
        EXPECT_EQ(error(mpris, "SetPosition", late), "") << "it is ignored";
    EXPECT_EQ(timeStamp(), "[00:01:01]");
    call(own, "Jump", {-11});
    EXPECT_EQ(timeStamp(), "[00:00:50]");
    EXPECT_EQ(playback(), "Paused") << "who moves what is paused does not play it";
    call(mpris, "Seek", {qlonglong{20000000}});
    EXPECT_NEAR(seconds(), 70, 2);
    EXPECT_NEAR(static_cast<double>(get("Position").toLongLong()) / 1e6, 70, 2);
    call(mpris, "SetPosition", {here, qlonglong{5000000}});
    EXPECT_NEAR(seconds(), 5, 0.1);
    for (const qlonglong far :
         {std::numeric_limits<qlonglong>::max(), std::numeric_limits<qlonglong>::min()})
        call(mpris, "Seek", {far});
    EXPECT_NEAR(seconds(), 0, 0.1);
    call(own, "Jump", {std::numeric_limits<int>::max()});
    EXPECT_NEAR(seconds(), 99, 0.1) << "not to its end, where it would be closed";

    selected = store.path("two.WAV");
    goTo(1000);
    call(mpris, "Play");
    EXPECT_EQ(playback(), "Playing");
    EXPECT_EQ(track(), here) << "the selection went elsewhere, what is heard did not";
    EXPECT_EQ(error(own, "CopyTimeStamp"), "");
    call(mpris, "Stop");
    EXPECT_EQ(playback(), "Stopped");
    EXPECT_EQ(error(own, "TimeStamp"), "org.orvanta.OVSearch.Error.NothingOpen");
}

TEST_F(PlayerOnBus, TellsWhatIsShownAndNoPath) {
    store.add("2$WAV@@14$Berta@@11$Knie@@5$secret.WAV", readBytes(store.native("one.WAV")));
    play("2$WAV@@14$Berta@@11$Knie@@5$secret.WAV");
    QVariantMap told = metadata();
    const QString said = child<QToolButton>(*panel_, "cmdPlayedDictation").accessibleName();
    EXPECT_EQ(told.take(QStringLiteral("xesam:artist")).toStringList(),
              QStringList(QStringLiteral("Berta")));
    const QString title = told.take(QStringLiteral("xesam:title")).toString();
    EXPECT_FALSE(title.isEmpty());
    EXPECT_TRUE(said.contains(title)) << said.toStdString() << " | " << title.toStdString();
    EXPECT_EQ(told.take(QStringLiteral("mpris:length")).toLongLong(), 100000000);
    const QVariant first = told.take(QStringLiteral("mpris:trackid"));
    EXPECT_TRUE(told.isEmpty());
    play("one.WAV");
    EXPECT_EQ(metadata().value(QStringLiteral("xesam:title")).toString(), QStringLiteral("one"));
    EXPECT_NE(track().value<QDBusObjectPath>().path(), first.value<QDBusObjectPath>().path());
}

TEST_F(PlayerOnBus, SetsSpeedAndVolume) {
    QSignalSpy chosen(panel_.get(), &PlayerPanel::choicesMade);
    EXPECT_EQ(set("Rate", 1.25), "");
    EXPECT_EQ(panel_->choices().speedPercent, 125);
    EXPECT_EQ(chosen.count(), 1) << "it is kept";
    EXPECT_EQ(get("Rate").toDouble(), 1.25);
    sound::WaveControl::instance().setShape({.evensOut = true}); // by another window
    EXPECT_EQ(set("Rate", 1.0), "");
    EXPECT_TRUE(sound::WaveControl::instance().shape().evensOut);
    sound::WaveControl::instance().setShape({});
    EXPECT_EQ(set("Volume", 0.5), "");
    EXPECT_NEAR(mixer().GetVolumeValue(), 32768, 1);
    EXPECT_NEAR(get("Volume").toDouble(), 0.5, 0.001);
    EXPECT_EQ(set("Volume", -3.0), "");
    EXPECT_EQ(mixer().GetVolumeValue(), 0);
    EXPECT_EQ(set("Volume", 1e300), "");
    EXPECT_EQ(mixer().GetVolumeValue(), 65535);
}

TEST_F(PlayerOnBus, TellsChangesOnceAndNoPositions) {
    client_->listen(properties, "PropertiesChanged");
    client_->listen(mpris, "Seeked");
    client_->names(); // the bus knows by now
    play("one.WAV");
    tick();
    tick();
    moveTo(50);
    tick();
    choose(&PlayerChoices::backUpSeconds, 2);
    call(mpris, "Pause");
    EXPECT_EQ(playback(), "Paused");
    waitFor([this] { return client_->heard.size() >= 4; });
    std::string all;
    for (const QDBusMessage& signal : client_->heard) {
        const QVariant last =
            signal.arguments().value(signal.member() == QLatin1String("Seeked") ? 0 : 1);
        if (signal.member() == QLatin1String("Seeked")) {
            EXPECT_NEAR(last.toDouble() / 1e6, all.ends_with("Paused ") ? 48.5 : 50.5, 1);
            all += "seeked ";
            continue;
        }
        const auto changed = qdbus_cast<QVariantMap>(last.value<QDBusArgument>());
        EXPECT_FALSE(changed.contains(QStringLiteral("Position")));
        all += changed.value(QStringLiteral("PlaybackStatus"), QStringLiteral("-"))
                   .toString()
                   .toStdString() +
               " ";
    }
    EXPECT_EQ(all, "Playing seeked Paused seeked ");
}

TEST_F(PlayerOnBus, RefusesWithASentenceWhatMakesNoSense) {
    play("one.WAV");
    press(1);
    const std::string invalid = "org.freedesktop.DBus.Error.InvalidArgs";
    const std::string unknown = "org.freedesktop.DBus.Error.UnknownMethod";
    const std::string readOnly = "org.freedesktop.DBus.Error.PropertyReadOnly";
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const auto setting = [](const char* name, const QVariant& value) {
        return QVariantList{QLatin1String(mpris), QLatin1String(name), variant(value)};
    };
    const std::tuple<const char*, const char*, QVariantList, std::string> cases[] = {
        {properties, "Set", setting("Rate", notANumber), invalid},
        {properties, "Set", setting("Rate", 0.49), invalid},
        {properties, "Set", setting("Rate", 2.01), invalid},
        {properties, "Set", setting("Rate", QStringLiteral("fast")), invalid},
        {properties, "Set", setting("Volume", notANumber), invalid},
        {properties, "Set", setting("Volume", 1), invalid},
        {properties, "Set", setting("Position", qlonglong{1}), readOnly},
        {properties, "Set", {QLatin1String(own), QLatin1String("Rate"), variant(1.0)}, readOnly},
        {properties, "Set", {QLatin1String(mpris)}, invalid},
        {properties, "Get", {QLatin1String(mpris), QString(100000, u'x')}, invalid},
        {mpris, "SetPosition", {QStringLiteral("/somebody"), qlonglong{1}}, invalid},
        {mpris, "Seek", {QStringLiteral("far")}, invalid},
        {mpris, "OpenUri", {QStringLiteral("file:///etc/passwd")}, invalid},
        {mpris, "Format", {}, unknown},
        {"org.nobody", "Play", {}, unknown},
        {own, "GoTo", {std::numeric_limits<qlonglong>::max()}, invalid},
        {own, "GoTo", {std::numeric_limits<qlonglong>::min()}, invalid},
        {own, "GoTo", {1}, invalid},
        {own, "Jump", {1.5}, invalid},
        {own, "Search", {}, invalid},
        {own, "Search", {QStringLiteral("mine")}, "org.orvanta.OVSearch.Error.Busy"}};
    const auto before = seconds();
    for (const auto& [interface, method, arguments, error] : cases) {
        const QDBusMessage answer = call(interface, method, arguments);
        EXPECT_EQ(answer.errorName().toStdString(), error) << method;
        EXPECT_TRUE(answer.errorMessage().endsWith(u'.')) << method;
    }
    EXPECT_EQ(seconds(), before);
    EXPECT_EQ(panel_->choices().speedPercent, 100);
}

TEST_F(PlayerOnBus, GoesOnWithoutTheBusAndComesBack) {
    play("one.WAV");
    client_ = nullptr;
    bus_->vanish();
    tick();
    tick();
    moveTo(50);
    waitUntilShown("00:00:50 Playing");
    bus_->start();
    client_ = std::make_unique<BusClient>(bus_->address());
    constexpr uint untilAnotherComes = 1;
    constexpr const char* daemon = "org.freedesktop.DBus";
    client_->call(daemon, "/", daemon, "RequestName",
                  {QLatin1String(macroName), untilAnotherComes});
    waitFor([&] {
        return client_->call(daemon, "/", daemon, "GetNameOwner", {QLatin1String(macroName)})
                   .arguments() != QVariantList{client_->bus().baseService()};
    });
    EXPECT_EQ(playback(), "Playing");
}

TEST_F(PlayerOnBus, GivesMacrosThePlayerThatPlayedLast) {
    play("one.WAV");
    waitFor([this] { return error(own, "Position").empty(); });
    auto other = std::move(panel_);
    const auto otherOnBus = std::move(player_);
    makePanel();
    join();
    waitFor([this] { return instances() == 2; });
    EXPECT_EQ(error(own, "Position"), "") << "who comes does not take it away";
    for (int i = 0; i < 3; ++i) { // whichever comes back first
        other->PlayerStop();
        EXPECT_NE(error(own, "Position"), "");
        play("one.WAV");
        waitFor([this] { return error(own, "Position").empty(); });
        client_ = nullptr;
        bus_->vanish();
        tick();
        tick();
        bus_->start();
        client_ = std::make_unique<BusClient>(bus_->address());
        waitFor([this] { return instances() == 2 && error(own, "Position").empty(); });
        std::swap(other, panel_);
    }
    player_ = nullptr;
    waitFor([this] { return !error(own, "Position").empty(); });
    EXPECT_EQ(instances(), 1);
}

// What is installed for other programs says of each method what the player itself answers.
TEST_F(PlayerOnBus, IsDescribedAsItIs) {
    // Without comments, names of arguments and blanks.
    const auto methods = [](const QString& xml) {
        static const QRegularExpression forPeople(
            QStringLiteral("<!--.*?-->|<annotation[^>]*>|(?<=<arg )name=\"\\w+\"|\\s"),
            QRegularExpression::DotMatchesEverythingOption);
        const QString mark = QStringLiteral("<interface name=\"%1\">").arg(QLatin1String(own));
        QString part = xml.section(mark, 1).section(QLatin1String("</interface>"), 0, 0);
        part.remove(forPeople).replace(QLatin1String("\"></method>"), QLatin1String("\"/>"));
        return part.toStdString();
    };
    const QString answered =
        call("org.freedesktop.DBus.Introspectable", "Introspect").arguments().value(0).toString();
    const QString installed = QString::fromStdString(
        readBytes(std::string(OV_SOURCE_DIR) + "/data/org.orvanta.OVSearch.Player1.xml"));
    EXPECT_EQ(methods(answered), methods(installed));
    EXPECT_EQ(installed.count(QLatin1String("<method ")), 9);
    EXPECT_TRUE(answered.contains(QLatin1String("<signal name=\"Seeked\">")));
}

TEST_F(PlayerOnBus, NeverWaitsForABusThatHangs) {
    player_ = nullptr;
    client_ = nullptr;
    bus_->hang();
    join();
    play("one.WAV");
    tick();
    EXPECT_EQ(shown(), "00:00:00 Playing");
    press(2);
    EXPECT_EQ(shown(), "00:00:00 -");
    bus_->goOn();
    client_ = std::make_unique<BusClient>(bus_->address());
    waitFor([this] { return isKnown(); });
    bus_->hang();
    play("one.WAV");
    press(1);
    EXPECT_EQ(shown(), "00:00:00 Paused") << "what is told goes nowhere";
    player_ = nullptr;
    bus_->goOn();
}

TEST_F(PlayerOnBus, LetsTheProgramEndThoughTheBusHangs) {
    player_ = nullptr;
    bus_->hang();
    ProgramRun run;
    run.arguments = {"--self-test", "--settings", store.native("settings")};
    EXPECT_EQ(runProgram(OV_HOST_PROGRAM, run).exitCode, 0);
    bus_->goOn();
}

// The host handles them on threads of its own.
TEST_F(PlayerOnBus, TakesNoSignalsFromTheHost) {
    int threads = 0;
    for (QDirIterator all(QStringLiteral("/proc/self/task"), QDir::Dirs | QDir::NoDotAndDotDot);
         all.hasNext();) {
        QFile file(all.next() + QLatin1String("/status"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QString status = QString::fromLatin1(file.readAll());
        if (!status.startsWith(QLatin1String("Name:\tov-bus\n")))
            continue;
        ++threads;
        const QRegularExpression blocked(QStringLiteral("SigBlk:\t([0-9a-f]+)"));
        const qulonglong mask = blocked.match(status).captured(1).toULongLong(nullptr, 16);
        for (const int signal : {SIGTERM, SIGINT, SIGCHLD, SIGUSR1})
            EXPECT_TRUE((mask >> static_cast<unsigned>(signal - 1)) & 1U) << signal;
    }
    EXPECT_EQ(threads, 1);
}

} // namespace
} // namespace ov
