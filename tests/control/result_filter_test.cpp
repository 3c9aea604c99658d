// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/filter/filter_edit.h"
#include "tests/control/rows_fixture.h"

#include <QAbstractItemModelTester>

namespace ov {
namespace {

using namespace tests;

class ResultFilter : public RowsTest {
protected:
    ResultFilter() {
        store.add("2$WAV@@14$Anna@@11$Befund.WAV")
            .add("2$WAV@@14$Ärmel@@5$HOCH.WAV")
            .add("2$ROH@@14$Berta@@7$21-11-2026 10$00$00.WAV");
    }
    FilterEdit& filter() { return widget<FilterEdit>("txtResultFilter"); }
    void open() {
        openControl();
        searchAll();
        clickHeader(column(5));
        user->boxes.clear();
    }
    // The authors of the rows that stay, once the list shows them.
    std::string typed(const char* words, int count) {
        filter().clear();
        waitFor([&] { return model().kept() == nullptr; });
        for (const QChar letter : QString::fromUtf8(words)) // keys of the test library are ASCII
            filter().insert(letter);
        waitFor([&] { return model().kept() != nullptr && model().rowCount() == count; });
        return rows();
    }
};

TEST_F(ResultFilter, KeepsTheRowsThatShowAllWords) {
    open();
    const QAbstractItemModelTester tester(results().model());
    key(results(), Qt::Key_Slash);
    EXPECT_TRUE(filter().hasFocus());
    EXPECT_EQ(typed("ärm", 1), "*Ärmel; ");
    const struct {
        const char* words;
        const char* rows;
        int count;
    } cases[] = {{"wav", "Anna; *Ärmel; ", 2},        {"A  FUND", "*Anna; ", 1},
                 {"21.11.2026", "*Berta; ", 1},       {"high", "*Ärmel; ", 1},
                 {"21-11-2026 10:00", "*Berta; ", 1}, {"annabefund", "", 0},
                 {"anna@@11$befund", "*Anna; ", 1},   {"e", "*Anna; Ärmel; Berta; ", 3}};
    for (const auto& [words, expected, count] : cases)
        EXPECT_EQ(typed(words, count), expected) << words;
    EXPECT_EQ(text("lblSearchResult"), "Search result (3 of 3 dictations)");
    typed("anna", 1);
    EXPECT_EQ(text("lblSearchResult"), "Search result (1 of 3 dictations)");
    clickHeader(column(5));
    EXPECT_EQ(rows(), "*Anna; ") << "sorted anew";
    key(filter(), Qt::Key_Return);
    EXPECT_TRUE(results().hasFocus());
    key(results(), Qt::Key_Escape);
    EXPECT_EQ(rows(), "Berta; Ärmel; *Anna; ");
    EXPECT_EQ(text("lblSearchResult"), "Search result (3 dictations)");
}

TEST_F(ResultFilter, FollowsColumnsLanguageAndSearch) {
    open();
    typed("high", 1);
    host().answers["PI_GetLanguage"] = "7";
    action("language");
    waitFor([&] { return model().rowCount() == 0; });
    EXPECT_EQ(typed("hoch", 1), "*Ärmel; ");
    for (auto& field : modDictation::searchFields())
        if (field.Id == 15 || field.Id == 26)
            field.Visible = false;
    dynamic_cast<ResultList&>(results()).ApplyColumns();
    waitFor([&] { return model().rowCount() == 0; });
    searchAll();
    EXPECT_EQ(filter().text(), QString()) << "all that a search finds is shown";
    EXPECT_EQ(model().rowCount(), 3);
}

TEST_F(ResultFilter, HandsOutTheRowsLeft) {
    open();
    typed("wav", 2);
    results().selectAll();
    key(results(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 3) << "headers and two rows";
}

} // namespace
} // namespace ov
