// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/rows_fixture.h"

#include <QAccessible>
#include <QToolTip>

namespace ov {
namespace {

class ScreenReader : public RowsTest {
protected:
    QAccessibleInterface& list() { return *QAccessible::queryAccessibleInterface(&results()); }
    QAccessibleTableInterface& table() { return *list().tableInterface(); }
    // The children as they are read, a line for each row.
    std::string read() {
        std::string all;
        for (int i = 0; i < list().childCount(); ++i) {
            const QAccessibleInterface* child = list().child(i);
            EXPECT_EQ(list().indexOfChild(child), i);
            EXPECT_EQ(child->parent(), &list());
            all += child->text(QAccessible::Name).toStdString() +
                   ((i + 1) % table().columnCount() == 0 ? "\n" : ";");
        }
        return all;
    }
    QString heard(const char* name, QAccessible::Text kind) {
        return QAccessible::queryAccessibleInterface(&widget<QWidget>(name))->text(kind);
    }
    void showOnly(const std::vector<int>& fields) {
        for (modDictation::SearchField& field : modDictation::searchFields())
            if (field.Selectable)
                field.Visible = std::ranges::find(fields, field.Id) != fields.end();
        modDictation::SaveColumnSettings();
    }
};

TEST_F(ScreenReader, ReadsTheListAsItIsSeen) {
    store.add("2$ROH@@5$HOCH@@14$Weber.WAV");
    store.add("2$WAV@@14$Adam@@7$20.11.2026 17$05$00.WAV");
    showOnly({5, 9, 15});
    openControl();
    EXPECT_EQ(table().rowCount(), 0);
    EXPECT_EQ(list().child(list().childCount() - 1)->object(), results().viewport())
        << "which holds what an empty list says";
    searchAll();
    // Dates have a hidden column to be sorted by; a priority is a picture where it is narrow.
    EXPECT_EQ(
        read(),
        "Author;Dictated;Priority\nWeber;;High\nAdam;20.11.2026 17:05:00;Normal (not written in "
        "the name)\n");
    results().horizontalHeader()->moveSection(
        results().horizontalHeader()->visualIndex(model().columnOf(15)), 0);
    EXPECT_EQ(read().substr(0, 24), "Priority;Author;Dictated");
    EXPECT_EQ(table().columnDescription(0), QStringLiteral("Priority"));

    results().setFocus();
    results().selectRow(1);
    QAccessibleInterface* current = list().focusChild();
    ASSERT_NE(current, nullptr);
    EXPECT_TRUE(current->state().focused && current->state().selected);
    EXPECT_TRUE(current->state().focusable && !list().child(0)->state().focusable);
    EXPECT_EQ(current->text(QAccessible::Value), current->text(QAccessible::Name));
    EXPECT_EQ(current->text(QAccessible::Description), QString()) << "not said a second time";
    EXPECT_EQ(list().child(0)->text(QAccessible::Value), QString()) << "of a title";
    EXPECT_EQ(current->tableCellInterface()->rowIndex(), 1);
    EXPECT_EQ(list().childAt(current->rect().center().x(), current->rect().center().y()), current);
    EXPECT_EQ(table().selectedRows(), QList<int>{1});
    EXPECT_TRUE(table().selectRow(0));
    EXPECT_EQ(table().selectedCellCount(), 6);
    EXPECT_EQ(table().selectedCells().size(), 6);
    EXPECT_TRUE(table().unselectRow(1));
    EXPECT_FALSE(table().selectRow(2) || table().isRowSelected(1));
    EXPECT_EQ(table().cellAt(2, 0), nullptr);
    EXPECT_EQ(table().cellAt(0, 3), nullptr);
}

TEST_F(ScreenReader, HasNoMoreObjectsThanTheScreen) {
    constexpr int many = 300;
    for (int i = 0; i < many; ++i)
        store.add("2$WAV@@14$A" + std::to_string(i) + ".WAV");
    openAndSearch();
    EXPECT_EQ(table().rowCount(), many);
    EXPECT_LT(list().childCount(), many * table().columnCount() / 2);
    const QAccessibleInterface* last = table().cellAt(many - 1, 0);
    EXPECT_EQ(list().indexOfChild(last), -1) << "it is not on the screen";
    EXPECT_TRUE(last->state().offscreen);
    results().scrollToBottom();
    EXPECT_GE(list().indexOfChild(last), 0);
}

TEST_F(ScreenReader, HearsHowASearchEndsAndWhyAButtonDoesNothing) {
    store.add("2$WAV@@14$Adam.WAV");
    openAndSearch();
    EXPECT_EQ(heard("lblSearchResult", QAccessible::Name),
              QStringLiteral("Search result (1 dictation)"));
    results().clearSelection();
    press("cmdSearchOptions(4)");
    EXPECT_EQ(user->beeps, 1);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Select a dictation first to see its log"));
    const auto about = [this](int button) {
        const std::string name = "cmdSearchOptions(" + std::to_string(button) + ")";
        return heard(name.c_str(), QAccessible::Description);
    };
    EXPECT_EQ(about(4), QStringLiteral("Select a dictation first to see its log"));
    EXPECT_EQ(about(2), QStringLiteral("Print or export the result list"));
    results().selectRow(0);
    EXPECT_EQ(about(4), QStringLiteral("Show the log of the selected dictation"));
    openControl();
    EXPECT_EQ(about(2), QStringLiteral("Search for dictations first to print or export them"));
}

} // namespace
} // namespace ov
