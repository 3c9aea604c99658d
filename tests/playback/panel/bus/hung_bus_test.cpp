// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/playback/panel/bus/bus_fixture.h"
#include "tests/run_program.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace ov {
namespace {

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
    waitUntilKnown();
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
