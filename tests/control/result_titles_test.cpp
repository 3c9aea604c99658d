// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the titles of the result list say and do.

#include "tests/control/authors_fixture.h"

namespace ov {
namespace {

TEST_F(AuthorRows, SortByTwoColumns) {
    open();
    choose(8, "Then ascending");
    EXPECT_EQ(authorsWithNumbers(), "Anna1 Anna2 Berta1 Berta2 ");
    choose(5, "Sort descending");
    EXPECT_EQ(authorsWithNumbers(), "Berta1 Berta2 Anna1 Anna2 ");
    choose(8, "Then descending");
    EXPECT_EQ(authorsWithNumbers(), "Berta2 Berta1 Anna2 Anna1 ");
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
    const auto* header = results().horizontalHeader();
    EXPECT_EQ(header->model()->headerData(column(8), Qt::Horizontal, Qt::AccessibleTextRole),
              QStringLiteral("Number"));
}

} // namespace
} // namespace ov
