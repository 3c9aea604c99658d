// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the control says, in which language, what a screen reader reads of it, and where the
// keyboard is.

#include "control/search_run.h"
#include "tests/control/control_fixture.h"

#include <QAbstractItemModelTester>
#include <QAccessible>

namespace ov {
namespace {

using Control = ControlTest;

TEST_F(Control, KeepsTheKeyboardWhereItWas) {
    openWith("5|17|Anna|\r\n5|17|Berta|\r\n");
    criteria().topLevelItem(0)->setSelected(true);
    button("cmdSearchKriteriaOptions(2)").setFocus();
    press("cmdSearchKriteriaOptions(2)");
    EXPECT_TRUE(button("cmdSearchKriteriaOptions(2)").hasFocus());
    press("cmdSearchKriteriaOptions(2)");
    EXPECT_TRUE(criteria().hasFocus()) << "the button has nothing to delete any more";

    store.add("2$WAV.WAV");
    user->saysYes = true;
    QPushButton& searchButton = button("cmdSearchOptions(0)");
    const auto focusAfterSearch = [&](const std::function<void()>& meanwhile) {
        searchButton.setFocus();
        inSearch([&] { key(searchButton, Qt::Key_Space); }, meanwhile);
        return window().focusWidget();
    };
    EXPECT_EQ(focusAfterSearch([] {}), &searchButton);
    EXPECT_EQ(focusAfterSearch([&] { results().setFocus(); }), &results());
    EXPECT_EQ(focusAfterSearch([&] { press("cmdSearchStop"); }), &searchButton);
    for (const char* name : {"lvSearchCriteria", "cmdSavedSearches"}) {
        widget<QWidget>(name).setFocus();
        key(widget<QWidget>(name), Qt::Key_F5);
        EXPECT_EQ(window().focusWidget(), &results()) << name;
    }
    criteria().setFocus();
    user->saysYes = false;
    key(criteria(), Qt::Key_F5);
    user->saysYes = true;
    search();
    EXPECT_NE(window().focusWidget(), &results()) << "that search by key came to nothing";
}

TEST_F(Control, ReadsAsOneGoesAndFollowsTheLanguage) {
    openControl();
    criteria().setFocus();
    EXPECT_EQ(tabOrder(window()),
              "lvSearchCriteria cmdSearchKriteriaOptions(0) optCriteriaCompare(1) "
              "cmdSavedSearches chkFollow "
              "cmdSearchOptions(0) cmdSearchOptions(2) cmdSearchOptions(3) cmdSearchOptions(4) "
              "txtResultFilter lvSearchResult cmdListAll cmdSearchPlayer(0) "
              "cmdSearchPlayer(1) "
              "cmdSearchPlayer(2) "
              "cmdSearchPlayerOptions slSearchPlayerSeek slSearchPlayerVolume ");
    EXPECT_TRUE(isTidy(window()));
    for (const auto* one : window().findChildren<QPushButton*>())
        EXPECT_FALSE(one->isVisible() && (one->icon().isNull() || one->toolTip().isEmpty()))
            << one->objectName().toStdString();
    const QImage hint = criteria().grab().toImage();
    speak("7");
    EXPECT_NE(criteria().grab().toImage(), hint);
}

TEST_F(Control, TellsWhatASearchLeftOut) {
    store.add("2$ba\\ck.WAV").add("2$WAV.WAV");
    openControl();
    searchAll();
    EXPECT_EQ(notice(), "Files and folders left out because of a “\\” in their name: 1");
    modDictation::SearchReport all;
    all.limitReached = all.stopped = true;
    all.foldersUnreadable = 1234;
    EXPECT_EQ(noticeText(all).toStdString(),
              "The search was stopped. The list shows the dictations found so far. The list shows "
              "only the first 999,999 dictations; there may be more. Narrow the search criteria. "
              "Folders that could not be read: 1,234");
    all = {};
    all.localeProblem = {2, "/module", "is missing"};
    EXPECT_EQ(noticeText(all).toStdString(),
              "Dates, numbers and the order of texts are those of no country. Install OVSearch "
              "again. (/module: is missing)");
    all = {};
    all.rootVanished = true;
    all.foldersUnreadable = 1;
    EXPECT_TRUE(noticeText(all).endsWith(u"found until then, which is not all."));
}

TEST_F(Control, SpeaksTheLanguageTheHostChangesTo) {
    openWith("15|25|3|\r\n");
    user = nullptr; // real boxes
    withDialog([&] { search(); },
               [&](QDialog& nothingFound) {
                   speak("7");
                   EXPECT_EQ(readable(nothingFound).substr(0, 12), "Diktatsuche|");
               });
    EXPECT_EQ(label(), "Suchergebnis (0 Diktate)");
    host().refused = {"PI_ProgressInit"};
    withDialog([&] { search(); },
               [&](QDialog&) { EXPECT_FALSE(button("cmdSearchStop").isEnabled()); });

    host().refused = {};
    speak("9");
    store.add("2$WAV@@5$HOCH.WAV");
    search();
    const QAbstractItemModelTester tester(results().model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_FALSE(model().headerData(model().columnCount(), Qt::Horizontal).isValid());
    EXPECT_EQ(columnTexts(15), "High; ");
    withDialog([&] { press("cmdSearchKriteriaOptions(0)"); },
               [&](QDialog& dialog) {
                   withDialog([&] { clickOn(dialog, "cmdOK"); },
                              [&](QDialog& box) {
                                  speak("7");
                                  EXPECT_EQ(readable(box),
                                            "Diktatsuche|Geben Sie einen Wert ein.|OK");
                              });
                   EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Neues Suchkriterium"));
               });
    EXPECT_EQ(criteria().topLevelItem(0)->text(0), QStringLiteral("\"Priorität\" ist Hoch"));
    EXPECT_EQ(columnTexts(15), "Hoch; ");
    EXPECT_EQ(label(), "Suchergebnis (1 Diktat)");
    EXPECT_EQ(plugIn_.connector.PlugInDescription(), "Diktatsuche");
}

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
}

} // namespace
} // namespace ov
