// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/criteria/criteria_fixture.h"

#include <QAccessible>
#include <QStyle>

// Criteria that are indented below another one, and what happens to them.

namespace ov {
namespace {

class CriteriaGroups : public CriteriaListTest {
protected:
    std::string spokenAt(int row) {
        const auto* item = criteria().topLevelItem(row);
        return item->data(0, Qt::AccessibleTextRole).toString().toStdString();
    }
    int hits() {
        search();
        return model().rowCount();
    }
};

TEST_F(CriteriaGroups, AreIndented) {
    openGrouped("A>B");
    const auto left = [this](int row) {
        QTreeWidget& list = criteria();
        const QRect place = list.visualItemRect(list.topLevelItem(row));
        const QImage picture = list.viewport()->grab(place).toImage();
        const auto at = [&](int x) { return picture.pixel(x, picture.height() / 2); };
        int x = 2; // behind the frame of the current one
        while (x < picture.width() - 1 && at(x) == at(picture.width() - 4))
            ++x;
        return x;
    };
    EXPECT_EQ(left(1) - left(0), criteria().fontMetrics().height() * 3 / 2);
}

TEST_F(CriteriaGroups, AreKeptByEveryChange) {
    using Change =
        std::tuple<std::string, std::vector<int>, Qt::Key, Qt::KeyboardModifiers, std::string>;
    constexpr auto alt = Qt::AltModifier;
    for (const auto& [before, rows, pressed, modifiers, after] :
         std::vector<Change>{{"ABC", {0, 1}, Qt::Key_Right, alt, "*A>*BC"}, // the first stays
                             {"AB>C", {1}, Qt::Key_Right, alt, "A>*B>C"},
                             {"A>B>C", {1}, Qt::Key_Left, alt, "A*B>C"},
                             {"A>B>C", {0}, Qt::Key_Delete, {}, "*B>C"},
                             {"XA>B>C", {1, 2}, Qt::Key_Delete, {}, "X*C"},
                             {"A>BC>D", {1, 2}, Qt::Key_Delete, {}, "A*D"},
                             // The first of a group takes it along, past whole groups.
                             {"XA>B", {1}, Qt::Key_Up, alt, "*A>BX"},
                             {"A>BX>Y", {0}, Qt::Key_Down, alt, "X>Y*A>B"},
                             {"A>BX>YZ", {4}, Qt::Key_Up, alt, "A>B*ZX>Y"},
                             {"A>BC", {0, 2}, Qt::Key_Up, alt, "*A>B*C"},
                             // Another one changes its place in it, and leaves it at the end.
                             {"A>B>C", {1}, Qt::Key_Down, alt, "A>C>*B"},
                             {"A>B>C", {1}, Qt::Key_Up, alt, "*B>A>C"},
                             {"A>B>CX", {2}, Qt::Key_Down, alt, "A>BX*C"},
                             {"A>BX>Y", {1}, Qt::Key_Down, alt, "AX>*B>Y"},
                             {"A>BX", {1}, Qt::Key_Space, {}, "A>*-BX"}}) {
        openGrouped(before);
        EXPECT_EQ(line(), before);
        select(rows);
        const std::string selected = line();
        key(criteria(), pressed, modifiers);
        EXPECT_EQ(line(), after) << before;
        if (after == selected)
            continue; // nothing to take back
        controlKey(Qt::Key_Z);
        select({});
        EXPECT_EQ(line(), before) << "taken back";
        controlKey(Qt::Key_Y);
        select({});
        openControl();
        std::string plain = after;
        std::erase(plain, '*');
        EXPECT_EQ(line(), plain) << "kept";
    }
}

TEST_F(CriteriaGroups, AreJoinedByDragging) {
    openGrouped("A>BCD");
    select({3});
    drop(middle(1) - QPoint(0, 4));
    EXPECT_EQ(line(), "A>*D>BC");
    select({2});
    drop(middle(3) + QPoint(0, 4));
    EXPECT_EQ(line(), "A>DC*B");
    select({0});
    drop({20, criteria().viewport()->height() - 2});
    EXPECT_EQ(line(), "CB*A>D");
    select({0, 1});
    drop({20, criteria().viewport()->height() - 2});
    EXPECT_EQ(line(), "A>D*C*B");
}

TEST_F(CriteriaGroups, AreMadeFromTheMenuToo) {
    open("ABC");
    const auto offered = [this](const std::vector<int>& rows) {
        select(rows);
        rightClick(criteria());
        std::string both;
        for (const QAction* action : popup().actions())
            if (action->text().contains(u"roup"))
                both += action->isEnabled() ? 'y' : 'n';
        popup().close();
        return both;
    };
    EXPECT_EQ(offered({0}), "nn") << "the first stays where it is";
    EXPECT_EQ(offered({0, 2}), "yn");
    rightClick(criteria());
    click("Group with the one above");
    EXPECT_EQ(line(), "*AB>*C");
    EXPECT_EQ(offered({2}), "ny");
    EXPECT_EQ(offered({1, 2}), "yy");
    rightClick(criteria());
    click("Take out of the group");
    EXPECT_EQ(line(), "A*B*C");
}

TEST_F(CriteriaGroups, FindWhatTheyMeanAndSayIt) {
    for (const char* name : {"2$ROH@@14$Ax", "2$ROH@@14$Ay", "2$ROH@@14$Bx", "2$WAV@@14$By"})
        store.add(std::string(name) + ".WAV");
    openWith("5|17|A|\r\n5|17|y|\r\n2|25|7|\r\n5|17|none|\r\n5|17|zero|\r\n");
    spaceOn({3, 4});
    EXPECT_EQ(hits(), 1);
    groupFrom(1); // which the list of hits follows
    QCoreApplication::processEvents();
    EXPECT_EQ(model().rowCount(), 2) << "(A or y) and ROH";
    EXPECT_EQ(spokenAt(0) + "; " + spokenAt(1),
              "\"Author\" contains A, 2 of 4; or: \"Author\" contains y, 2 of 4");
    compare(false);
    EXPECT_EQ(model().rowCount(), 3) << "(A and y) or ROH";
    EXPECT_EQ(spokenAt(1), "and: \"Author\" contains y");
    speak("7");
    EXPECT_EQ(spokenAt(1), "und: \"Autor\" enthält y");
    speak("9");
    compare(true);

    spaceOn({0});
    EXPECT_EQ(hits(), 1) << "y and ROH: the next one begins the group";
    spaceOn({3, 4});
    groupFrom(3);
    EXPECT_EQ(hits(), 0);
    const auto& hint = widget<QLabel>("lblListHint");
    EXPECT_EQ(hint.text().toStdString(), "No dictation meets this criterion:\n\"Author\" contains "
                                         "zero")
        << "one of a group of which another is met is none";
    groupFrom(4);
    EXPECT_EQ(hits(), 1);
    spaceOn({2});
    EXPECT_EQ(hits(), 0) << "y and (none or zero)";
    EXPECT_EQ(hint.text().toStdString(),
              "No dictation meets even one of these criteria:\n\"Author\" contains none\nor: "
              "\"Author\" contains zero");
}

TEST_F(CriteriaGroups, StandBesideTheCriteria) {
    openGrouped("A>B>CD>EF");
    EXPECT_EQ(bars(read("SearchCriteria.grp")),
              "5|17|A|\r\n 5|17|B|\r\n 5|17|C|\r\n5|17|D|\r\n 5|17|E|\r\n");
    spaceOn({1});
    EXPECT_EQ(bars(read("SearchCriteria.dat")), linesOf("ACDEF"))
        << "for whoever knows of no groups";
    openControl();
    EXPECT_EQ(line(), "A>-B>CD>EF");
    openWith(linesOf("AXCDE"));
    EXPECT_EQ(line(), "A-BXCD>E") << "what no longer fits is dropped";
    select({0, 1, 2, 3, 4, 5});
    altKey(Qt::Key_Left);
    EXPECT_FALSE(fs::exists(folder() / "SearchCriteria.grp"));
    closeControl();
    for (const char* rubbish :
         {"rubbish\r\n\r\n \x01\xFF", " 5|17|A|\r\n 5|17|B|\r\n", "5|17|A|\r\n5|17|B|\r\n"}) {
        write("SearchCriteria.grp", criterion(rubbish));
        openControl();
        EXPECT_EQ(line(), "A-BXCDE") << rubbish;
        closeControl();
    }
}

// A program that knows of no groups may have been at the criteria.
TEST_F(CriteriaGroups, AreFoundAgainAmongOtherCriteria) {
    const std::string both = "5|17|A|\r\n 5|17|B|\r\n";
    using Rows = std::vector<int>;
    const std::tuple<std::string, Rows, std::string, std::string, std::string> cases[] = {
        // list, left out, what the criteria are by then, list after that, backup
        {"YXA>BZ", {1}, "ABZ", "A>B-XZ", ""}, // X comes between them
        {"ABA>B", {}, "ABAB", "ABA>B", ""},
        {"ABA>B", {0, 1}, "XAB", "-A-BXA>B", ""},
        {"A>BAB", {2, 3}, "XYZAB", "XY-A-BZA>B", ""},
        {"A>BAB", {0}, "BAB", "-A>BAB", ""},
        {"XA>B", {}, "AB", "A>B", ""},
        {"A>BC", {}, "AXBC", "AXBC", both}};
    for (const auto& [list, leftOut, others, after, kept] : cases) {
        openGrouped(list);
        if (!leftOut.empty())
            spaceOn(leftOut);
        openWith(linesOf(others));
        EXPECT_EQ(line(), after) << list;
        EXPECT_EQ(bars(read("SearchCriteria.bak")), kept) << list;
    }
    closeControl();
    fs::remove(folder() / "SearchCriteria.bak");
    write("SearchCriteria.grp", criterion(both + "rubbish\r\n"));
    openWith(linesOf("AB"));
    EXPECT_EQ(line(), "A>B");
    EXPECT_EQ(bars(read("SearchCriteria.bak")), both + "rubbish\r\n");
}

TEST_F(CriteriaGroups, AreSpokenOfWhenTheyChange) {
    openGrouped("ABC");
    const auto heard = [this](Qt::Key arrow) {
        auto* label = window().findChild<QLabel*>(QStringLiteral("lblAnnouncement"));
        if (label != nullptr)
            label->clear();
        altKey(arrow);
        label = window().findChild<QLabel*>(QStringLiteral("lblAnnouncement"));
        if (label == nullptr || !label->isVisible())
            return std::string();
        const QAccessibleInterface& spoken = *QAccessible::queryAccessibleInterface(label);
        EXPECT_EQ(spoken.role(), QAccessible::Notification);
        return spoken.text(QAccessible::Name).toStdString();
    };
    select({0});
    EXPECT_EQ(heard(Qt::Key_Right), "") << "the first stays";
    select({1, 2});
    EXPECT_EQ(heard(Qt::Key_Right), "In a group with the one above");
    EXPECT_EQ(heard(Qt::Key_Right), "") << "it is";
    speak("7");
    EXPECT_EQ(heard(Qt::Key_Left), "Nicht mehr in der Gruppe");
}

TEST_F(CriteriaGroups, GoOnWithAnotherOfAnEntry) {
    openGrouped("A>BC");
    duplicate(0, "N");
    EXPECT_EQ(line(), "A>*N>BC");
    duplicate(2, "C");
    EXPECT_EQ(line(), "A>N>B>*CC") << "which is another one in a group";
    duplicate(1, "A");
    EXPECT_EQ(line(), "*A>N>B>CC") << "it is in the group, as its first";
    edit(1, "B");
    EXPECT_EQ(line(), "A>*B>CC");
    EXPECT_EQ(user->boxes.size(), 2U) << "they were there";
    duplicate(3, "E");
    EXPECT_EQ(line(), "A>B>CC*E");
}

TEST_F(CriteriaGroups, AreTickedWhereTheirBoxIs) {
    openGrouped("A>B");
    const auto boxOf = [this](int row) {
        const QStyle& style = *criteria().style();
        return QPoint(criteria().visualItemRect(criteria().topLevelItem(row)).left() +
                          style.pixelMetric(QStyle::PM_IndicatorWidth) / 2 + 3,
                      middle(row).y());
    };
    QTest::mouseClick(criteria().viewport(), Qt::LeftButton, {}, boxOf(1));
    EXPECT_EQ(criteria().topLevelItem(1)->checkState(0), Qt::Checked);
    const QPoint inward(criteria().fontMetrics().height() * 3 / 2, 0);
    QTest::mouseClick(criteria().viewport(), Qt::LeftButton, {}, boxOf(1) + inward);
    EXPECT_EQ(criteria().topLevelItem(1)->checkState(0), Qt::Unchecked);
}

} // namespace
} // namespace ov
