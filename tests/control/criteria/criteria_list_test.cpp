// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/criteria/criteria_fixture.h"

// What a user does to the list of criteria itself.

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
    EXPECT_EQ(bars(read("SearchCriteria.dat")), "5|17|A|\r\n5|17|B|\r\n5|17|C|\r\n5|17|D|\r\n");
}

TEST_F(CriteriaListTest, KeepsThoseLeftOutBesideTheOthers) {
    open("ABC");
    select({1});
    key(criteria(), Qt::Key_Space);
    EXPECT_EQ(bars(read("SearchCriteria.dat")), "5|17|A|\r\n5|17|C|\r\n");
    store.add("2$WAV@@14$AC.WAV");
    search();
    EXPECT_EQ(model().rowCount(), 1) << "it takes no part";
    openControl();
    EXPECT_EQ(line(), "A-BC");
    closeControl();
    write("SearchCriteria.dat", ""); // by a program that knows nothing of them
    openControl();
    EXPECT_EQ(line(), "-B");
    select({0});
    key(criteria(), Qt::Key_Space);
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

} // namespace
} // namespace ov
