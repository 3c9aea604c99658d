// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/files.h"
#include "tests/failing_reads.h"
#include "tests/playback/panel/player_fixture.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWheelEvent>

namespace ov {
namespace {

// The picture of the seek slider, which stands at the start, with the shape of the sound in it.
class Waveform : public Player {
protected:
    Waveform() {
        plain_ = picture();
        writeWave(store.native("two.WAV"), {}, std::vector<float>(800000, 0.9F));
    }
    QImage picture() { return seek().grab().toImage(); }
    // Loads it without a sound, and waits for a picture that is not one of these.
    QImage openAndSee(const char* name, const std::vector<QImage>& others) {
        panel_->PlayerStop();
        EXPECT_EQ(picture(), plain_);
        panel_->PlayerOpenFile(store.path(name));
        waitFor([&] { return std::count(others.begin(), others.end(), picture()) == 0; });
        return picture();
    }
    QImage plain_;
};

TEST_F(Waveform, IsThatOfTheFileAsItIsNow) {
    const QImage two = openAndSee("two.WAV", {plain_});
    const QImage one = openAndSee("one.WAV", {plain_, two});
    EXPECT_EQ(openAndSee("one.WAV", {plain_}), one);
    const std::string loud = readBytes(store.native("one.WAV"));
    store.add("one.WAV", readBytes(store.native("two.WAV")));
    EXPECT_EQ(openAndSee("one.WAV", {plain_}), two) << "of the same size, later";
    const auto time = fs::last_write_time(store.native("one.WAV"));
    store.add("one.WAV", loud.substr(0, loud.size() / 2));
    fs::last_write_time(store.native("one.WAV"), time);
    EXPECT_NE(openAndSee("one.WAV", {plain_}), two) << "of the same time, shorter";
}

TEST_F(Waveform, IsNotWaitedForWhenTheDiskStalls) {
    const QImage two = openAndSee("two.WAV", {plain_});
    const FailingReads stalled(store.native("one.WAV"), FailingReads::How::stall,
                               std::int64_t{4} * 65536);
    panel_->PlayerStop();
    panel_->PlayerOpenFile(store.path("one.WAV"));
    FailingReads::waitUntilMet();
    EXPECT_EQ(openAndSee("two.WAV", {plain_}), two);
    panel_->PlayerOpenFile(store.path("one.WAV"));
    FailingReads::waitUntilMet();
    panel_ = nullptr;
    EXPECT_FALSE(FailingReads::keptSomebody());
}

TEST_F(Waveform, IsReadOnceForAllWindows) {
    const auto load = [](const char* path) {
        OverviewLoader loader;
        bool isReady = false;
        QObject::connect(&loader, &OverviewLoader::ready, [&] { isReady = true; });
        loader.load(path);
        waitFor([&] { return isReady; });
    };
    store.addFolder("drives");
    fs::create_directory_symlink(store.native(""), store.native("drives/d"));
    platform::setDriveFolder(store.native("drives"));
    load("D:\\two.WAV");
    load("D:\\one.WAV");
    const FailingReads bad(store.native("two.WAV"), FailingReads::How::fail);
    load("D:\\two.WAV");
    platform::setDriveFolder({});
}

TEST_F(Waveform, ShowsAPartAndTurnsItsPage) {
    panel_->resize(1200, panel_->height());
    plain_ = picture();
    const QImage whole = openAndSee("one.WAV", {plain_});
    const auto turn = [this](int x, int by, Qt::KeyboardModifier with = Qt::NoModifier) {
        const QPointF at(x, seek().height() / 2.0);
        QWheelEvent event(at, seek().mapToGlobal(at), {}, {0, by}, Qt::NoButton, with,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&seek(), &event);
    };
    const auto clickAt = [this](int x) {
        QTest::mouseClick(&seek(), Qt::LeftButton, Qt::NoModifier, {x, seek().height() / 2});
        return position();
    };
    const int half = seek().width() / 2;
    EXPECT_NEAR(clickAt(half), 50000, 1000);
    EXPECT_NEAR(clickAt(half / 2), 25000, 1000);
    turn(half / 2, 8 * 120); // eight times as large, a quarter of the way stays where it is
    EXPECT_NEAR(clickAt(half / 2), 25000, 1000);
    EXPECT_NEAR(clickAt(half), 25000 + 25000 / 8.16, 1000);
    EXPECT_NE(picture(), whole);
    turn(half, -100 * 120, Qt::ShiftModifier);
    EXPECT_NEAR(clickAt(half), 100000 - 50000 / 8.16, 1000) << "its end";
    panel_->skip(-60);
    const int before = position();
    EXPECT_NEAR(clickAt(half) - before, 0.45 * 100000 / 8.16, 1000) << "the page is turned";
    turn(half, -100 * 120);
    clickAt(half / 2);
    EXPECT_NEAR(position(), 25000, 1000) << "all is seen";
    for (int press = 0; press < 20; ++press)
        QTest::keyClick(&seek(), Qt::Key_Plus);
    const int least = clickAt(half);
    EXPECT_NEAR(clickAt(half * 3 / 2) - least, 500, 60) << "two seconds are the least";
    QTest::keyClick(&seek(), Qt::Key_Minus);
    EXPECT_NEAR(clickAt(half) - clickAt(half / 2), 1000, 120);
    QTest::keyClick(&seek(), Qt::Key_0);
    EXPECT_NEAR(clickAt(half), 50000, 1000);
    QTest::mouseMove(&seek(), {half / 2 + 4, 5});
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text() == u"00:00:25"; }));
    QHelpEvent help(QEvent::ToolTip, {half + 4, 5}, seek().mapToGlobal(QPoint(half + 4, 5)));
    QApplication::sendEvent(&seek(), &help);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("00:00:50"));
}

TEST_F(Waveform, ShadesThePassageThatIsRepeated) {
    writeWave(store.native("two.WAV"), {}, std::vector<float>(800000, 0.5F));
    const QImage seen = openAndSee("two.WAV", {plain_});
    for (const int seconds : {10, 40}) {
        moveTo(seconds);
        panel_->markLoop();
    }
    const QImage marked = picture();
    EXPECT_NEAR(seek().value(), 10.5 / 100 * 32767, 2) << "it begins there";
    for (const int percent : {25, 45}) {
        const int at = seen.width() * percent / 100;
        EXPECT_EQ(marked.pixel(at, 5) != seen.pixel(at, 5), percent == 25) << percent;
    }
}

} // namespace
} // namespace ov
