// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/criteria/criteria_fixture.h"

// What a user does to the list of criteria itself, also by the clipboard, and its room.

namespace ov {
namespace {

TEST_F(CriteriaListTest, ChangesSeveralAtOnceAndTakesItBack) {
    open("ABCD");
    using Step = std::tuple<std::vector<int>, Qt::Key, Qt::KeyboardModifiers, std::string>;
    for (const auto& [rows, pressed, modifiers, after] :
         std::vector<Step>{{{0, 2}, Qt::Key_Down, Qt::AltModifier, "BD*A*C"},
                           {{2, 3}, Qt::Key_Up, Qt::AltModifier, "B*A*CD"},
                           {{0}, Qt::Key_Up, Qt::AltModifier, "*BACD"},
                           {{1, 3}, Qt::Key_Space, {}, "B*-AC*-D"},
                           {{0, 1}, Qt::Key_Space, {}, "*-B*-AC-D"},
                           {{1, 2}, Qt::Key_Delete, {}, "-B*-D"},
                           {{}, Qt::Key_Delete, {}, "-B-D"},
                           {{}, Qt::Key_Z, Qt::ControlModifier, "-B*-AC-D"},
                           {{}, Qt::Key_Z, Qt::ControlModifier, "*B-AC-D"},
                           {{}, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, "*-B-AC-D"},
                           {{3}, Qt::Key_Delete, {}, "-B-A*C"},
                           {{}, Qt::Key_Y, Qt::ControlModifier, "-B-AC"}}) {
        select(rows);
        key(criteria(), pressed, modifiers);
        EXPECT_EQ(line(), after);
    }
    for (int i = 0; i < 9; ++i)
        key(criteria(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(line(), "*ABCD");
    select({0});
    EXPECT_EQ(bars(read("SearchCriteria.dat")), linesOf("ABCD"));
}

TEST_F(CriteriaListTest, KeepsThoseLeftOutBesideTheOthers) {
    open("ABC");
    spaceOn({1});
    EXPECT_EQ(bars(read("SearchCriteria.dat")), linesOf("AC"));
    store.add("2$WAV@@14$AC.WAV");
    search();
    EXPECT_EQ(model().rowCount(), 1) << "it takes no part";
    openControl();
    EXPECT_EQ(line(), "A-BC");
    openWith(""); // by a program that knows nothing of them
    EXPECT_EQ(line(), "-B");
    spaceOn({0});
    EXPECT_FALSE(fs::exists(folder() / "SearchCriteria.off"));
    key(criteria(), Qt::Key_Space);
    const std::string leftOut = read("SearchCriteria.off");
    fs::remove(folder() / "SearchCriteria.dat");
    fs::create_directories(folder() / "SearchCriteria.dat/in the way");
    key(criteria(), Qt::Key_Space);
    EXPECT_EQ(read("SearchCriteria.off"), leftOut) << "the other file cannot be written";
    EXPECT_NE(user->onlyText().find("SearchCriteria.dat"), std::string::npos);
    fs::remove_all(folder() / "SearchCriteria.dat");
    closeControl();
    const std::string partlyRead = "9|5|17|X|\r\nrubbish\r\n-3|5|17|Y|\r\n5|17|Z|\r\n";
    write("SearchCriteria.off", criterion(partlyRead));
    openControl();
    EXPECT_EQ(line(), "-YB-X");
    EXPECT_EQ(bars(read("SearchCriteria.bak")), partlyRead);
}

TEST_F(CriteriaListTest, MakesAnotherOfTheLast) {
    open("AB");
    withDialog([&] { controlKey(Qt::Key_D); },
               [](QDialog& dialog) {
                   auto& value = child<QLineEdit>(dialog, "txtValue(0)");
                   EXPECT_EQ(value.text(), QStringLiteral("B"));
                   value.setText(QStringLiteral("New"));
                   clickOn(dialog, "cmdOK");
               });
    EXPECT_EQ(line(), "AB*New");
}

TEST_F(CriteriaListTest, HasEachOnce) {
    for (const char* again : {"A", "C"}) {
        open("ABC");
        edit(1, again);
        EXPECT_EQ(line(), *again == 'A' ? "*AC" : "A*C");
    }
}

TEST_F(CriteriaListTest, ShowsWhereTheKeyboardIsWithoutSelecting) {
    open("AB");
    const auto colour = [this] {
        const QImage picture = criteria().viewport()->grab().toImage();
        return picture.pixelColor(criteria().viewport()->width() - 30, middle(0).y());
    };
    criteria().setCurrentItem(nullptr);
    const QColor plain = colour();
    criteria().setCurrentItem(criteria().topLevelItem(0), 0, QItemSelectionModel::NoUpdate);
    EXPECT_EQ(colour(), plain);
    EXPECT_FALSE(button("cmdSearchKriteriaOptions(2)").isEnabled());
    select({0});
    EXPECT_NE(colour(), plain);
}

class CriteriaClipboard : public CriteriaListTest {
protected:
    static std::string clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
    void paste(const char* text) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        controlKey(Qt::Key_V);
    }
};

TEST_F(CriteriaClipboard, TakesCriteriaAsTextWithTheirGroups) {
    openGrouped("A>BC>D>E");
    select({0, 1, 4});
    controlKey(Qt::Key_C);
    EXPECT_EQ(clipboard(), "author contains A\n  author contains B\nauthor contains E\n");
    select({3});
    controlKey(Qt::Key_C);
    EXPECT_EQ(clipboard(), "  author contains D\n");
    select({2, 3});
    controlKey(Qt::Key_X);
    EXPECT_EQ(line(), "A>B*E");
    controlKey(Qt::Key_V);
    EXPECT_EQ(line(), "A>BE*C>*D");
    controlKey(Qt::Key_Z);
    EXPECT_EQ(line(), "A>B*E") << "one step";
    key(criteria(), Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(line(), "A>BE*C>*D");
    QGuiApplication::clipboard()->clear();
    key(criteria(), Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(line(), "A>B*E");
    EXPECT_EQ(clipboard().substr(0, 17), "author contains C");
    select({});
    controlKey(Qt::Key_C);
    EXPECT_EQ(clipboard().substr(0, 17), "author contains C") << "nothing is selected";
    select({0});
    controlKey(Qt::Key_V);
    EXPECT_EQ(line(), "A>*C>*D>BE") << "into the group";
    EXPECT_TRUE(user->boxes.empty());
    controlKey(Qt::Key_X);
    rightClick(criteria());
    click("Paste");
    EXPECT_EQ(line(), "A>B>*C>*DE") << "in their group again";
    select({4});
    paste("author contains C\nauthor contains C\n");
    EXPECT_EQ(line(), "A>B>C>DE*C") << "once; in a group it asks for something else";
    std::string many;
    for (int i = 0; i < 600; ++i)
        many += "author contains x" + std::to_string(i) + "\n";
    paste(many.c_str());
    EXPECT_EQ(criteria().topLevelItemCount(), 506);
    EXPECT_EQ(user->onlyText(),
              "Lines of the clipboard that are no criteria and were not pasted: 100");
}

TEST_F(CriteriaClipboard, PastesWhatOthersWroteAndTellsTheRest) {
    open("AB");
    select({0});
    paste("; mine\nauthor contains N\n\tauthor contains A\nauthor contains B\nrubbish\nall=0\n");
    EXPECT_EQ(line(), "A*N>*A*B") << "one that is there is selected";
    EXPECT_EQ(user->onlyText(),
              "Lines of the clipboard that are no criteria and were not pasted: 2");
    EXPECT_NE(clipboard().find("rubbish"), std::string::npos);
    select({3});
    paste(criterion("5|17|A|\r\n5|17|B|").c_str());
    EXPECT_EQ(line(), "*AN>A*B");
    ASSERT_EQ(user->boxes.size(), 2U);
    paste("  \n");
    EXPECT_EQ(user->boxes.size(), 2U) << "nothing to paste";
    speak("7");
    paste((std::string(1 << 20, 'x') + "\nauthor contains Z\n").c_str());
    EXPECT_EQ(user->boxes.at(2).text, "Zeilen der Zwischenablage, die keine Suchkriterien sind und "
                                      "nicht eingefügt wurden: 2");
    EXPECT_EQ(line(), "*AN>A*B");
    constexpr std::size_t most = 100'000; // letters, blanks too
    for (const std::size_t size : {most, most + 1}) {
        const std::string last = "\nauthor contains Z" + std::to_string(size);
        paste((std::string(size - last.size(), ' ') + last).c_str());
    }
    EXPECT_EQ(line(), "A*Z100000N>AB");
    EXPECT_EQ(user->boxes.size(), 4U);
}

// How much room they take of the window.
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
