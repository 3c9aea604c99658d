// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How much room the criteria take of the window.

#include "tests/control/control_fixture.h"

namespace ov {
namespace {

class CriteriaRooms : public ControlTest {
protected:
    void openWith(int count) {
        std::string lines;
        for (int i = 0; i < count; ++i)
            lines += "5|17|Anna " + std::to_string(i) + "|\r\n";
        ControlTest::openWith(lines);
        settle();
    }
    static void settle() {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }
    // What the list has room for, in tenths of a row.
    int tenths() {
        if (criteria().topLevelItemCount() > 0)
            row_ = criteria().visualItemRect(criteria().topLevelItem(0)).height();
        return 10 * criteria().viewport()->height() / row_;
    }
    QSplitter& splitter() { return *window().findChild<QSplitter*>(); }
    void drag(int distance) {
        QWidget* line = splitter().handle(1);
        const QPoint start = line->rect().center();
        QTest::mousePress(line, Qt::LeftButton, {}, start);
        QTest::mouseMove(line, start + QPoint(0, distance));
        QTest::mouseRelease(line, Qt::LeftButton, {}, start + QPoint(0, distance));
    }
    int row_ = 0;
};

TEST_F(CriteriaRooms, HasARowForEachUntilTheUserDragsTheLine) {
    for (const auto& [count, rows] :
         std::vector<std::pair<int, int>>{{4, 4}, {2, 3}, {8, 8}, {12, 8}}) {
        openWith(count);
        EXPECT_NEAR(tenths(), 10 * rows, 5) << count;
    }
    openWith(3);
    for (const int rows : {4, 5}) {
        enter([&] { key(criteria(), Qt::Key_Insert); }, rows == 4 ? "Berta" : "Carla");
        settle();
        EXPECT_NEAR(tenths(), 10 * rows, 5) << "follows each change";
    }
    key(criteria(), Qt::Key_Delete);
    settle();
    EXPECT_NEAR(tenths(), 40, 4);
    EXPECT_EQ(setting("CriteriaShare"), "");

    const int before = splitter().sizes()[0];
    drag(90);
    EXPECT_EQ(splitter().sizes()[0], before + 90);
    key(criteria(), Qt::Key_Delete);
    settle();
    EXPECT_EQ(splitter().sizes()[0], before + 90) << "the height is the user's";
    openControl();
    settle();
    EXPECT_NEAR(splitter().sizes()[0], before + 90, 2) << "and stays it";
}

TEST_F(CriteriaRooms, LeavesRoomForTheHitsInASmallWindow) {
    store.add("2$WAV@@14$Anna.WAV");
    openWith(8);
    searchAll();
    for (const char* language : {"9", "7"}) {
        speak(language);
        window().resize(640, 480);
        settle();
        EXPECT_TRUE(isTidy(window()));
        EXPECT_EQ(window().height(), 480);
        EXPECT_GE(tenths(), 30);
        EXPECT_GT(results().viewport()->height(),
                  3 * results().verticalHeader()->defaultSectionSize());
        window().resize(900, 1000);
        settle();
        EXPECT_NEAR(tenths(), 80, 4) << "and takes it again where there is enough";
    }
}

} // namespace
} // namespace ov
