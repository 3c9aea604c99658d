// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the titles of the result list say and do, and how its columns are kept.

#include "tests/control/authors_fixture.h"
#include "tests/control/control_fixture.h"

#include <QAbstractItemModelTester>

namespace ov {
namespace {

TEST_F(AuthorRows, SortByTwoColumns) {
    open();
    choose(8, "Then ascending");
    EXPECT_EQ(authorsWithNumbers(), "Anna1 Anna2 Berta1 Berta2 ");
    choose(5, "Sort descending");
    EXPECT_EQ(authorsWithNumbers(), "Berta1 Berta2 Anna1 Anna2 ");
    results().selectRow(3);
    choose(8, "Then descending");
    EXPECT_EQ(authorsWithNumbers(), "Berta2 Berta1 Anna2 Anna1 ");
    results().selectRow(2);
    choose(5, "Sort ascending");
    choose(5, "Sort descending");
    EXPECT_EQ(results().currentIndex().row(), 2);
    results().selectRow(3);
    choose(5, "Sort ascending");
    EXPECT_EQ(results().currentIndex().row(), 1);
    choose(8, "Then ascending");
    EXPECT_EQ(results().currentIndex().row(), 0);
    choose(5, "Sort descending");
    choose(8, "Then descending");
    openAndSearch();
    EXPECT_EQ(authorsWithNumbers(), "Berta2 Berta1 Anna2 Anna1 ") << "remembered";
    choose(8, "Then descending");
    choose(5, "Sort ascending");
    EXPECT_EQ(rows(18).size(), std::string("*; Knie & Hüfte; ; ; ").size());
    openMenu(8);
    for (const QAction* entry : popup().actions())
        EXPECT_FALSE(entry->isChecked()) << entry->text().toStdString();
    popup().close();
}

TEST_F(AuthorRows, TakeBackASecondColumnThatIsHidden) {
    open();
    choose(8, "Then descending");
    EXPECT_EQ(authorsWithNumbers(), "Anna2 Anna1 Berta2 Berta1 ");
    modDictation::searchFields()[8].Visible = false;
    dynamic_cast<ResultList&>(results()).ApplyColumns();
    EXPECT_EQ(model().columnOf(8), -1);
    choose(5, "No second column");
    modDictation::searchFields()[8].Visible = true;
    dynamic_cast<ResultList&>(results()).ApplyColumns();
    EXPECT_NE(authorsWithNumbers(), "Anna2 Anna1 Berta2 Berta1 ");
    EXPECT_EQ(setting("ListSortSecond"), "0");
}

// What the titles say while the rows are being sorted, looked at by the first of the messages that
// are handled meanwhile.
TEST_F(AuthorRows, TitlesShowTheWishedSortAtOnce) {
    open();
    const std::string before = authorsWithNumbers();
    QHeaderView& titles = *results().horizontalHeader();
    const auto shown = [&] {
        return std::to_string(titles.sortIndicatorSection() == column(8)) +
               (titles.sortIndicatorOrder() == Qt::AscendingOrder ? "up" : "down") +
               (titles.isEnabled() ? "" : " dim");
    };
    QObject::connect(&titles, &QHeaderView::sectionClicked, &titles,
                     [&] { EXPECT_EQ(shown(), "1up") << "before any work"; });
    std::string meanwhile;
    bool escapes = true;
    const auto sort = [&] {
        meanwhile.clear();
        const RecordingInterface onlooker([&] {
            if (meanwhile.empty() && !titles.isEnabled()) {
                meanwhile = shown();
                if (escapes)
                    key(results(), Qt::Key_Escape);
            }
        });
        clickHeader(column(8));
    };
    sort();
    EXPECT_EQ(meanwhile, "1up dim");
    EXPECT_EQ(shown(), "0up") << "stopped: as it was";
    EXPECT_EQ(authorsWithNumbers(), before);
    EXPECT_NE(setting("ListSortKey"), std::to_string(column(8)));
    escapes = false;
    sort();
    EXPECT_EQ(shown(), "1up");
    EXPECT_NE(authorsWithNumbers(), before);
    EXPECT_EQ(setting("ListSortKey"), std::to_string(column(8)));
}

TEST_F(AuthorRows, ColumnsFollowTheirMenu) {
    open();
    const std::string before = titles();
    choose(1, "Move right");
    choose(4, "Move left");
    EXPECT_TRUE(titles().starts_with("2 1 4 3 5 ")) << titles();
    results().setColumnWidth(column(5), 400);
    choose(5, "Best width");
    EXPECT_LT(results().columnWidth(column(5)), 120);
    EXPECT_GT(results().columnWidth(column(5)),
              results().fontMetrics().horizontalAdvance(QStringLiteral("Berta")));
    for (const char* expected : {"2 1 4 3 5 7 ", "2 1 4 3 5 6 "}) {
        openMenu(5);
        trigger("Typist");
        EXPECT_TRUE(titles().starts_with(expected)) << titles();
        EXPECT_EQ(modINI::ReadIniValueDirect("ColumnVisible", "6", "", path("SearchColumns.dat")),
                  expected[10] == '7' ? "0" : "-1");
    }
    choose(5, "Reset columns");
    EXPECT_EQ(titles(), before);
    EXPECT_EQ(authorsWithNumbers().substr(0, 4), "Anna");
}

TEST_F(AuthorRows, TitlesHaveAMenuForTheKeyboard) {
    open();
    key(results(), Qt::Key_H, Qt::ControlModifier | Qt::ShiftModifier);
    trigger("descending", "Author");
    EXPECT_EQ(rows().substr(0, 5), "Berta");
}

using Control = ControlTest;

TEST_F(Control, SortsByTheClickedColumn) {
    store.add("2$ROH@@14$b@@7$01-12-2025 10$00$00.WAV")
        .add("2$WAV@@14$Ä@@7$02-01-2026 09$00$00.WAV")
        .add("2$STOP@@14$c@@7$15-06-2025 08$00$00.WAV");
    openControl();
    const QAbstractItemModelTester tester(results().model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto sort = [this](int field) {
        sortBy(field);
        return columnTexts(5) + selectedRows();
    };
    searchAll();
    EXPECT_EQ(columnTexts(5), "Ä; b; c; ") << "by status, as for a first start";
    EXPECT_EQ(sort(5), "Ä; b; c; *--");
    results().selectAll();
    results().selectionModel()->select(model().index(1, 0),
                                       QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    results().selectionModel()->setCurrentIndex(model().index(0, 0), QItemSelectionModel::NoUpdate);
    EXPECT_EQ(sort(5), "c; b; Ä; *-*") << "the selection moves along";
    EXPECT_EQ(results().currentIndex(), model().index(2, column(5)));
    results().clearSelection();
    results().selectRow(2);
    EXPECT_EQ(sort(9), "Ä; b; c; *--") << "by day and time, the order kept";
    EXPECT_EQ(setting("ListSortKey") + setting("ListSortOrder"), std::to_string(column(10)) + "1");
    results().selectAll();
    EXPECT_EQ(sort(2).substr(10), "***");
    sortBy(9);

    results().setCurrentIndex(model().index(0, column(5)));
    key(results(), Qt::Key_C);
    EXPECT_EQ(results().currentIndex().row(), 2) << "jumps to what begins so";

    openControl();
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), column(9));
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    searchAll();
    EXPECT_EQ(columnTexts(5), "Ä; b; c; ");
    store.add("2$WAV@@14$d@@7$01-01-2027 10$00$00.WAV");
    searchAll();
    EXPECT_EQ(columnTexts(5), "d; Ä; b; c; ") << "an order is that of its hits";
}

TEST_F(Control, RemembersHowTheColumnsWereLeft) {
    openControl();
    EXPECT_TRUE(results().horizontalHeader()->sectionsMovable());
    results().horizontalHeader()->moveSection(results().horizontalHeader()->visualIndex(column(5)),
                                              0);
    const int sortKey = column(2);
    hideColumns({0});
    EXPECT_EQ(column(1), -1);
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), column(2));
    EXPECT_EQ(setting("ListSortKey"), std::to_string(sortKey - 1)) << "follows its column";
    EXPECT_NE(read("SearchColumns.dat").find("1=0"), std::string::npos);
    openControl();
    EXPECT_EQ(column(1), -1);
    EXPECT_EQ(results().horizontalHeader()->visualIndex(column(5)), 0);

    // Hide the column that the list is sorted by, and the one that was moved to the front.
    hideColumns({0, 2});
    EXPECT_EQ(column(5), -1);
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), -1);
    results().horizontalHeader()->moveSection(3, 5);
    const auto choose = [&] {
        rightClick(*results().horizontalHeader()->viewport());
        click("Choose columns");
    };
    transfer(choose, "lstLeft", "cmdTransfer(0)", {2});
    EXPECT_EQ(results().horizontalHeader()->visualIndex(column(5)), 0) << "back at its place";
}

TEST_F(Control, MakesTheBestOfSettingsOfAnyKind) {
    write("local.ini", "[OVSearch.ctrlOVSearch]\r\nListSortKey=99\r\nListSortOrder=2\r\n"
                       "ColumnOrder=9,99,0,x,5,5,1\r\nColumnWidths=18:5000,7,9:0,99:1,8:-3\r\n"
                       "CriteriaShare=2000\r\nPlayerSpeed=999\r\nPlayerBackUpSeconds=11\r\n");
    openControl();
    const QHeaderView& header = *results().horizontalHeader();
    EXPECT_EQ(header.sortIndicatorSection(), -1);
    std::string order;
    for (const int field : {9, 10, 5, 6, 1})
        order += std::to_string(header.visualIndex(column(field))) + " ";
    EXPECT_EQ(order, "0 1 16 17 20 ") << "each follows the one before it";
    EXPECT_NEAR(results().columnWidth(column(18)), results().columnWidth(column(13)) * 5, 3);
    EXPECT_GT(results().columnWidth(column(9)), 20);
    EXPECT_EQ(widget<QToolButton>("cmdSearchPlayerOptions").text(), QStringLiteral("200 %"));
}

} // namespace
} // namespace ov
