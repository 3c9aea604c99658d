// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the control says, in which language, and where the keyboard is.

#include "control/search_run.h"
#include "tests/control/control_fixture.h"

#include <QAbstractItemModelTester>

namespace ov {
namespace {

using namespace tests;

using Control = ControlTest;

TEST_F(Control, KeepsTheKeyboardWhereItWas) {
    write("SearchCriteria.dat", criterion("5|17|Anna|\r\n5|17|Berta|\r\n"));
    openControl();
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
        inCall(
            "PI_ProgressText", [&] { key(searchButton, Qt::Key_Space); }, meanwhile);
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
    EXPECT_EQ(readable(window()),
              "|&Neu …|&Bearbeiten …|&Löschen|Alle &Kriterien|&Mindestens ein Kriterium|"
              "&Gespeichert …|Bei Änderung so&fort suchen|Gefunden werden Diktate, auf die alle "
              "Kriterien "
              "zutreffen.|S&uchen|Abbr&echen|Drucken/E&xportieren …|S&palten …|P&rotokoll|"
              "Suchergebnis|Noch keine Suchkriterien. Fügen Sie mit „Neu“ eines hinzu, oder lassen "
              "Sie alle Diktate auflisten.|Alle aufl&isten|100 %|00:00:00|00:00:00");
    EXPECT_NE(criteria().grab().toImage(), hint);
}

TEST_F(Control, TellsWhatASearchLeftOut) {
    store.add("2$ba\\ck.WAV").add("2$WAV.WAV");
    openControl();
    searchAll();
    EXPECT_EQ(widget<QLabel>("lblSearchNotice").text().toStdString(),
              "Files and folders left out because of a “\\” in their name: 1");
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
    write("SearchCriteria.dat", criterion("15|25|3|\r\n"));
    openControl();
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

} // namespace
} // namespace ov
