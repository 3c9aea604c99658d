// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/ctrlOVSearch.h"
#include "control/search_run.h"
#include "dialogs/frmCriteria.h"
#include "dictation/search/tree_scan.h"
#include "playback/modMultimedia.h"
#include "support/unsaved.h"
#include "tests/control/control_fixture.h"
#include "tests/environment.h"
#include "tests/scripted_media.h"
#include "tests/wave_files.h"

#include <QAbstractItemModelTester>
#include <QDesktopServices>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBrowser>
#include <QToolTip>

namespace ov {
namespace {

using namespace tests;

using Control = ControlTest;

TEST_F(Control, StartsWithDefaultsAndRemembersTheChoices) {
    openControl();
    EXPECT_EQ(calls("ReportControlReady"), 1);
    EXPECT_EQ(read("local.ini"), "[OVSearch.ctrlOVSearch]\r\nSettingsCopied=-1\r\n");
    EXPECT_TRUE(widget<QRadioButton>("optCriteriaCompare(1)").isChecked());
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), column(2));
    EXPECT_TRUE(results().isColumnHidden(column(10)));

    QTest::mouseClick(&widget<QRadioButton>("optCriteriaCompare(0)"), Qt::LeftButton);
    EXPECT_EQ(setting("SearchCompareAnd"), "0");
    EXPECT_FALSE(widget<QLabel>("lblCriteriaDescription").text().contains(u"all criteria"));
    for (QAction* choice : widget<QToolButton>("cmdSearchPlayerOptions").findChildren<QAction*>())
        if (choice->text() == QLatin1String("150 %") || choice->text() == QLatin1String("10 s"))
            choice->trigger();
    QWidget* line = widget<QSplitter>("").handle(1);
    const int height = criteria().height();
    for (const int width : {222, 333}) // the newest counts
        results().setColumnWidth(column(18), width);
    QTest::mousePress(line, Qt::LeftButton, {}, {5, 1});
    QTest::mouseMove(line, {5, 61});
    QTest::mouseRelease(line, Qt::LeftButton, {}, {5, 61});
    openControl();
    EXPECT_NEAR(criteria().height(), height + 60, 2);
    EXPECT_EQ(results().columnWidth(column(18)), 333);
    EXPECT_EQ(setting("PlayerBackUpSeconds"), "10");
    EXPECT_EQ(widget<QToolButton>("cmdSearchPlayerOptions").text(), QStringLiteral("150 %"));
    EXPECT_TRUE(widget<QRadioButton>("optCriteriaCompare(0)").isChecked());
}

TEST_F(Control, ListsWhatTheHostHearsOf) {
    for (const int hits : {0, 1, 25, 26}) {
        for (int i = 0; i < hits; ++i)
            store.add("2$WAV@@14$" + std::to_string(i) + ".WAV");
        openControl();
        host().calls.clear();
        searchAll();
        const std::string count = std::to_string(hits);
        EXPECT_EQ(label(),
                  "Search result (" + count + (hits == 1 ? " dictation)" : " dictations)"));
        EXPECT_EQ(user->boxes.size(), hits == 0 ? 2U : 1U) << hits;
        // Those of the walk apart, which counts folders.
        EXPECT_EQ(calls("PI_ProgressInit(&0, &" + count + ", &0, &\"List"), hits == 26 ? 1 : 0);
        EXPECT_EQ(calls("PI_ProgressValue(&"), hits);
        EXPECT_EQ(model().rowCount(), hits);
        EXPECT_EQ(calls("PI_ProgressClear"), hits == 0 ? 1 : 2);
    }
    user->boxes.clear();
    key(window(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(user->boxes.size(), 1U);
    EXPECT_EQ(user->boxes.back().title, "Dictation search");
    speak("7");
    EXPECT_EQ(label(), "Suchergebnis (26 Diktate)") << "No leaves everything as it was";
    EXPECT_EQ(model().rowCount(), 26);
    host().refused = {"PI_ProgressValue(&3)"};
    searchAll();
    EXPECT_EQ(model().rowCount(), 3) << "as far as the host was to hear of them";
    EXPECT_EQ(user->boxes.back().text, "refused");
    EXPECT_EQ(label(), "Suchergebnis");
}

TEST_F(Control, NamesADirectoryThatIsNotThere) {
    host().answers["PI_GetDirectory(204)"] = path("gone\\");
    openControl();
    press("cmdSearchOptions(2)");
    ASSERT_EQ(user->boxes.size(), 1U);
    EXPECT_NE(user->boxes[0].text.find((folder() / "gone").native()), std::string::npos);
    // The host's new directory is taken up.
    host().answers["PI_GetDirectory(204)"] = store.directory();
    action("dir_netdictationtree");
    press("cmdSearchOptions(2)");
    EXPECT_EQ(user->boxes.back().text.substr(0, 25), "The result list is empty.");
}

TEST_F(Control, KeepsAListOfCriteria) {
    openControl();
    for (const Qt::Key nothingToEdit : {Qt::Key_F2, Qt::Key_Delete})
        key(criteria(), nothingToEdit);
    enter([&] { press("cmdSearchKriteriaOptions(0)"); }, "Anna");
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Berta");
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Carla");
    EXPECT_EQ(criteriaLine(), "Anna; Berta; *Carla; ");

    enter([&] { press("cmdSearchKriteriaOptions(0)"); }, "Anna");
    EXPECT_EQ(criteriaLine(), "*Anna; Berta; Carla; ") << "one that is there is shown instead";
    EXPECT_EQ(user->boxes.size(), 1U);

    enter([&] { key(criteria(), Qt::Key_F2); }, "Dora");
    EXPECT_EQ(criteriaLine(), "*Dora; Berta; Carla; ");
    enter([&] { Q_EMIT criteria().itemDoubleClicked(criteria().topLevelItem(0), 0); }, "Carla");
    EXPECT_EQ(criteriaLine(), "Berta; *Carla; ") << "edited onto one that is there";
    EXPECT_EQ(user->boxes.size(), 2U);

    const auto escape = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    withDialog([&] { press("cmdSearchKriteriaOptions(1)"); }, escape);
    withDialog([&] { key(criteria(), Qt::Key_Enter); }, escape);
    EXPECT_EQ(criteriaLine(), "Berta; *Carla; ");

    openControl();
    EXPECT_EQ(criteriaLine(), "Berta; Carla; ");
    criteria().topLevelItem(1)->setSelected(true);
    key(criteria(), Qt::Key_Delete);
    EXPECT_EQ(criteriaLine(), "*Berta; ") << "the one before the last";
    press("cmdSearchKriteriaOptions(2)");
    EXPECT_FALSE(button("cmdSearchKriteriaOptions(2)").isEnabled());
    EXPECT_FALSE(fs::exists(folder() / "SearchCriteria.dat")) << "no criteria, no file";
}

TEST_F(Control, LosesNothingOfABrokenCriteriaFile) {
    const std::string content = criterion("5|17|Anna|\nrubbish\n5|17|x\n\n7|25|10|\n");
    write("SearchCriteria.dat", content);
    openControl();
    EXPECT_EQ(criteriaLine(), "Anna; 10; ");
    closeControl();
    EXPECT_EQ(bars(read("SearchCriteria.dat")), "5|17|Anna|\r\n7|25|10|\r\n");
    EXPECT_EQ(read("SearchCriteria.bak"), content);
    write("SearchCriteria.dat", content);
    openControl(); // which keeps it no second time
    closeControl();
    // One that cannot be read now, but later.
    const std::string large = criterion("5|17|Dora|\r\n");
    write("SearchCriteria.dat", large);
    const fs::path file = folder() / "SearchCriteria.dat";
    const std::uintmax_t tooLarge = std::uintmax_t{1} << 30U;
    fs::resize_file(file, tooLarge);
    openControl();
    for (const char* author : {"Berta", "Carla"})
        enter([&] { key(criteria(), Qt::Key_Insert); }, author);
    EXPECT_EQ(criteriaLine(), "Berta; *Carla; ");
    control_ = nullptr; // without a word
    ASSERT_EQ(user->boxes.size(), 1U) << "told once";
    EXPECT_TRUE(user->boxes[0].text.starts_with("The search criteria cannot be saved."));
    EXPECT_EQ(fs::file_size(file), tooLarge);
    openControl();
    fs::resize_file(file, large.size());
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Emil");
    EXPECT_EQ(bars(read("SearchCriteria.dat")), "5|17|Emil|\r\n");
    EXPECT_EQ(read("SearchCriteria.bak"), content + large);
}

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

TEST_F(Control, StopsASearchWithEscape) {
    store.addDeep(40, "2$WAV.WAV");
    openControl();
    user->saysYes = true;
    const auto stop = [this] {
        EXPECT_TRUE(host().calls.back().ends_with("\\\")")) << "a directory";
        for (const char* name : {"cmdSearchOptions(0)", "cmdSearchKriteriaOptions(0)"})
            EXPECT_FALSE(button(name).isEnabled()) << name;
        EXPECT_FALSE(results().horizontalHeader()->sectionsClickable());
        while (!label().starts_with("Dictations found so far: "))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        key(window(), Qt::Key_F5); // no second one
        key(window(), Qt::Key_Escape);
    };
    inCall(
        "PI_ProgressText", [this] { key(window(), Qt::Key_F5); }, stop);
    EXPECT_EQ(label().substr(0, 15), "Search result (");
    EXPECT_EQ(user->boxes.size(), 1U) << "the question alone";
    EXPECT_LT(model().rowCount(), 40);
    EXPECT_FALSE(widget<QLabel>("lblSearchNotice").text().isEmpty());
    EXPECT_TRUE(button("cmdSearchOptions(0)").isEnabled() &&
                results().horizontalHeader()->sectionsClickable());
}

TEST_F(Control, SurvivesWhatTheHostDoesInTheMiddleOfASearch) {
    store.addDeep(30, "2$WAV.WAV");
    write("SearchCriteria.dat", criterion("2|25|6|\r\n"));
    const std::vector<std::pair<std::string, std::function<void()>>> cases = {
        {"Search result (30 dictations)",
         [&] {
             host().answers["PI_GetDirectory(204)"] = path("gone\\");
             action("DIR_NETDICTATIONTREE");
             host().answers["PI_GetDirectory(204)"] = store.directory();
         }},
        {"Search result", [&] { host().refused.insert("PI_ProgressText"); }},
        {"Suchergebnis (30 Diktate)", [&] { speak("7"); }},
    };
    for (const auto& [after, act] : cases) {
        openControl();
        inCall(
            "PI_ProgressText", [this] { search(); }, act);
        host().refused.clear();
        EXPECT_EQ(label(), after);
        EXPECT_FALSE(modDictation::isSearchRunning());
    }
}

TEST_F(Control, OpensWhateverTheHostCannotDo) {
    for (const char* refused : {"PI_GetLanguage", "PI_GetSubLanguage", "PI_GetLocalINIFile",
                                "PI_GetDirectory", "ReportControlReady", "subscribe"}) {
        host().refused = {refused};
        openControl();
        EXPECT_TRUE(button("cmdSearchOptions(0)").isEnabled()) << refused;
    }
}

TEST_F(Control, TellsOnceThatSettingsCannotBeKept) {
    const auto notices = [] {
        QList<QMessageBox*> found;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String("Notice") && window->isVisible())
                found.append(dynamic_cast<QMessageBox*>(window));
        return found;
    };
    fs::create_directory(folder() / "local.ini");
    openControl();
    ASSERT_EQ(notices().size(), 1);
    EXPECT_EQ(notices()[0]->text().toStdString().find(
                  "The settings cannot be saved: " + (folder() / "local.ini").native() + "\n"),
              0U);
    EXPECT_FALSE(notices()[0]->isModal()) << "nobody waits for it";
    speak("7");
    EXPECT_EQ(notices()[0]->windowTitle(), QStringLiteral("Diktatsuche"));
    clickOn(window(), "optCriteriaCompare(0)");
    EXPECT_TRUE(user->boxes.empty());
    user = nullptr;
    resetUnsaved();
    clickOn(window(), "optCriteriaCompare(1)");
    ASSERT_EQ(notices().size(), 1) << "it is there already";
    QTest::keyClick(notices()[0], Qt::Key_Return);
    EXPECT_TRUE(notices().isEmpty());
}

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
              "|Abbr&echen|S&uchen|Drucken/E&xportieren …|S&palten …|P&rotokoll|Suchergebnis|Noch "
              "keine Suchkriterien. Fügen Sie mit „Neu“ eines hinzu, oder lassen Sie alle Diktate "
              "auflisten.|&Alle auflisten|00:00:00|00:00:00|100 %|&Neu …|&Bearbeiten "
              "…|&Löschen|Alle &Kriterien|&Mindestens ein Kriterium|&Gespeichert …|Änderungen "
              "&folgen|Gefunden werden Diktate, auf die alle Kriterien zutreffen.");
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

TEST_F(Control, OffersMenusAndTranslatesTheOpenOne) {
    store.add("2$WAV.WAV");
    openControl();
    const auto openAndTranslate = [this](const std::function<void()>& open) {
        speak("9");
        open();
        speak("7");
        QCoreApplication::processEvents();
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        std::string entries;
        for (const QAction* entry : menu->actions())
            entries += (entry->isEnabled() ? "" : "-") +
                       (entry->text() + entry->shortcut().toString()).toStdString() +
                       (entry->icon().isNull() ? ";" : "*;");
        menu->close();
        return entries;
    };
    const auto ofResults = [&] { rightClick(results()); };
    const auto ofCriteria = [&] { rightClick(criteria()); };
    const auto ofButton = [&] { press("cmdSearchOptions(2)"); };
    EXPECT_EQ(openAndTranslate(ofResults),
              "-&WiedergebenReturn*;-&Stoppen*;-&Protokoll anzeigen*;-&Einzelheiten …Alt+Return;;"
              "-Zeilen &kopierenCtrl+C*;-Date&ien kopierenCtrl+Shift+C;-&Dateipfad "
              "kopieren;-&Verzeichnis öffnen*;;-&Alles markierenCtrl+A;"
              "Spal&ten auswählen …*;Alle Verzeichnisse &neu lesen und suchenShift+F5;");
    EXPECT_EQ(openAndTranslate(ofCriteria),
              "&Neu …Ins*;-&Bearbeiten …F2*;-&LöschenDel*;-Du&plizieren …Ctrl+D;;"
              "-&RückgängigCtrl+Z;-&WiederherstellenCtrl+Shift+Z;;"
              "-Nach &obenAlt+Up*;-Nach &untenAlt+Down*;");
    searchAll();
    store.add("2$WAV@@5$HOCH.WAV");
    user->saysYes = true;
    key(window(), Qt::Key_F5, Qt::ShiftModifier);
    user->saysYes = false;
    EXPECT_EQ(model().rowCount(), 2);
    results().clearSelection();
    EXPECT_TRUE(openAndTranslate(ofButton).ends_with(";-&Nur markierte Zeilen;"));
    results().selectRow(0);
    clickOn(window(), "chkFollow");
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Anna");
    EXPECT_EQ(openAndTranslate(ofResults).find('-'), std::string::npos);
    EXPECT_EQ(openAndTranslate(ofCriteria).find("-&L"), std::string::npos);
    EXPECT_EQ(openAndTranslate(ofButton),
              "&Drucken …Ctrl+P*;Druck&vorschau …;;&PDF-Dokument …;&Tabelle (.xlsx) …;"
              "&CSV-Datei …;&Webseite …;&JSON-Datei …;;Als Te&xt kopieren*;;"
              "&Nur markierte Zeilen;");
}

TEST_F(Control, ShowsCodesAsPicturesWhereWordsDoNotFit) {
    store.add("2$WAV@@5$HOCH@@14$Anna@@17$4@@98$D.WAV")
        .add("2$ROH@@98$X.WAV")
        .add("2$STOP@@98$d.WAV");
    openControl();
    searchAll();
    const auto cell = [this](int field, int row = 0) { return model().index(row, column(field)); };
    QString icons;
    for (const int field : {2, 3, 5, 7, 15})
        for (const int row : {0, 1, 2})
            icons += cell(field, row).data(ResultModel::codeIconRole).toString() + u';';
    EXPECT_EQ(icons.toStdString(), "status-6;status-7;status-8;marker;;marker;;;;flags;;;"
                                   "priority-3;priority-1;priority-1;");
    const auto tip = [&](int field) {
        results().scrollTo(cell(field));
        const QPoint place = results().visualRect(cell(field)).center();
        QHelpEvent asked(QEvent::ToolTip, place, results().viewport()->mapToGlobal(place));
        QApplication::sendEvent(results().viewport(), &asked);
        return QToolTip::text().toStdString();
    };
    EXPECT_EQ(tip(5), "");
    for (const int field : {3, 5, 7})
        results().setColumnWidth(column(field), 24);
    EXPECT_EQ(tip(5), "<qt>Anna</qt>");
    EXPECT_EQ(tip(3), "<qt>Marker</qt>");
    const auto neededWidth = [&](int field, int width) {
        QStyleOptionViewItem option;
        option.initFrom(&results());
        option.rect = QRect(0, 0, width, 20);
        return results().itemDelegate()->sizeHint(option, cell(field)).width();
    };
    EXPECT_LT(neededWidth(15, 20), neededWidth(15, 500));
    EXPECT_EQ(neededWidth(3, 20), neededWidth(3, 500));
    const auto picture = [&](int field, int row) {
        return results().viewport()->grab(results().visualRect(cell(field, row))).toImage();
    };
    results().clearSelection();
    EXPECT_EQ(picture(3, 0), picture(3, 2)) << "the letter is not shown";
    EXPECT_NE(picture(3, 0), picture(7, 2)) << "nothing but its icon is";
}

TEST_F(Control, PlaysByKeyAndByMouse) {
    const Environment silent("SDL_AUDIODRIVER", "dummy");
    for (const char* name : {"2$WAV.WAV", "2$ROH.WAV"})
        writeWave(store.native(name), {}, sweep(8000, 80000));
    ScriptedMedia media;
    openControl();
    searchAll();
    std::string rows;
    for (const Qt::Key to : {Qt::Key_End, Qt::Key_Right, Qt::Key_Left, Qt::Key_Home}) {
        key(results(), to);
        rows += std::to_string(results().currentIndex().row()) +
                (results().horizontalScrollBar()->value() > 0 ? "> " : " ");
    }
    EXPECT_EQ(rows, "1 1> 1 0 ") << "the right key moves the view";
    results().clearSelection();
    QWidget* list = results().viewport();
    const QPoint row = results().visualRect(model().index(0, 0)).center();
    const auto opened = [&] {
        const auto count = media.takeOpened();
        press("cmdSearchPlayer(2)");
        media.takeSent();
        return count;
    };
    key(results(), Qt::Key_Return);
    EXPECT_EQ(opened(), 0) << "no row";
    QTest::mouseClick(list, Qt::LeftButton, {}, row);
    EXPECT_EQ(opened(), 0);
    for (const Qt::Key pressed : {Qt::Key_Return, Qt::Key_Space}) {
        key(results(), pressed);
        EXPECT_EQ(opened(), 1);
    }
    QTest::mouseDClick(list, Qt::LeftButton, {}, row);
    EXPECT_EQ(opened(), 1);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&results(), &held);
    QTest::mouseDClick(list, Qt::RightButton, {}, row);
    QTest::mouseRelease(list, Qt::RightButton, {}, row);
    QTest::mouseDClick(list, Qt::LeftButton, {}, row + QPoint(0, 60));
    EXPECT_EQ(opened(), 0) << "held down, the other button, below the rows";

    key(results(), Qt::Key_Return);
    key(results(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_GE(modMultimedia::MciGetPosition("PBWave"), 5000);
    key(results(), Qt::Key_Left, Qt::ControlModifier);
    EXPECT_LT(modMultimedia::MciGetPosition("PBWave"), 5000);
    control_ = nullptr;
    EXPECT_EQ(modMultimedia::MciGetPosition("PBWave"), -1) << "plays on without its control";
}

TEST_F(Control, HandsOutTheSelectedRows) {
    const std::string name = "ward/2$WAV@@14$Anna@@11$Knee\tleft.WAV";
    store.add(name).add("ward/2$ROH@@14$Berta.WAV");
    openControl();
    press("cmdSearchOptions(4)");
    EXPECT_EQ(user->beeps, 1) << "no row, no log";
    searchAll();
    results().selectRow(0);
    press("cmdSearchOptions(4)");
    const std::string logOfFirst = "PI_LogView(&\"" + store.path(name) + "\", &\"\")";
    EXPECT_EQ(host().calls.back(), logOfFirst);
    results().selectionModel()->setCurrentIndex(model().index(1, 0), QItemSelectionModel::NoUpdate);
    host().calls.clear();
    press("cmdSearchOptions(4)");
    EXPECT_EQ(calls(logOfFirst), 1) << "the selected row, wherever the keyboard is";
    QTextBrowser opened;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &opened, "setSource");
    rightClick(results());
    click("Open folder");
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    EXPECT_EQ(opened.source().toLocalFile().toStdString(), store.native("ward/"));

    key(results(), Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text().count(u'\t'), 2 * 20) << "hidden columns are left out";
    EXPECT_EQ(copied->text().count(u'\n'), 2);
    EXPECT_TRUE(copied->text().contains(u"Knee left"));
    EXPECT_EQ(copied->urls().value(0).toLocalFile().toStdString(), store.native(name));
    results().clearSelection();
    key(results(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->mimeData(), copied) << "nothing to copy";
    results().selectRow(0);
    std::filesystem::remove_all(store.native("ward"));
    press("cmdSearchOptions(4)");
    EXPECT_EQ(user->beeps, 2) << "the dictation is gone";
}

} // namespace
} // namespace ov
