// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/ctrlOVSearch.h"
#include "control/search_run.h"
#include "dialogs/frmCriteria.h"
#include "dictation/tree_scan.h"
#include "support/unsaved.h"
#include "tests/environment.h"
#include "tests/scripted_media.h"
#include "tests/wave_files.h"
#include "tests/window/window_fixture.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTreeWidget>
#include <numeric>

namespace ov {
namespace {

using tests::bars;
using tests::child;
using tests::choose;
using tests::criterion;
using tests::withDialog;

class Control : public tests::WindowTest {
protected:
    QTreeWidget& criteria() { return widget<QTreeWidget>("lvSearchCriteria"); }
    QTableView& results() { return widget<QTableView>("lvSearchResult"); }
    QPushButton& button(const char* name) { return widget<QPushButton>(name); }
    std::string label() { return widget<QLabel>("lblSearchResult").text().toStdString(); }
    void search() { press("cmdSearchOptions(0)"); }
    void searchAll() {
        user->saysYes = true;
        search();
        user->saysYes = false;
    }

    // Answers the editor that `open` brings up: the author is to contain `text`.
    static void enter(const std::function<void()>& open, const char* text) {
        withDialog(open, [text](QDialog& dialog) {
            choose(child<QComboBox>(dialog, "cboField"), 5);
            child<QLineEdit>(dialog, "txtValue(0)").setText(QString::fromLatin1(text));
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
    }
    // "Anna; *Berta; " with a star at the selected one, by the criteria's first values.
    std::string criteriaLine() {
        std::string line;
        for (int i = 0; i < criteria().topLevelItemCount(); ++i) {
            const auto* entry = criteria().topLevelItem(i);
            const std::string text = entry->data(0, Qt::UserRole).toByteArray().toStdString();
            line += (entry->isSelected() ? "*" : "") +
                    modDictation::ParseCriteriaString(text).Value1 + "; ";
        }
        return line;
    }

    int column(int field) {
        const auto* model = results().model();
        for (int i = 0; i < model->columnCount(); ++i)
            if (model->headerData(i, Qt::Horizontal, ResultModel::keyRole).toString() ==
                QStringLiteral("_%1").arg(field))
                return i;
        return -1;
    }
    std::string columnTexts(int field) {
        std::string all;
        for (int row = 0; row < results().model()->rowCount(); ++row)
            all +=
                results().model()->index(row, column(field)).data().toString().toStdString() + "; ";
        return all;
    }
    // By their places in the list of the shown ones; each place counts without those before it.
    void hideColumns(const std::vector<int>& places) {
        withDialog([&] { press("cmdSearchOptions(3)"); },
                   [&](QDialog& dialog) {
                       for (const int place : places) {
                           child<QListWidget>(dialog, "lstRight").setCurrentRow(place);
                           child<QPushButton>(dialog, "cmdTransfer(1)").click();
                       }
                       child<QPushButton>(dialog, "cmdOK").click();
                   });
    }
    void clickHeader(int field) {
        QHeaderView* header = results().horizontalHeader();
        results().scrollTo(results().model()->index(0, column(field)));
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column(field)) + 8, 8});
        QCoreApplication::processEvents();
    }
    std::string setting(const char* key) {
        const std::string content = read("local.ini");
        const std::size_t at = content.find(std::string(key) + "=");
        if (at == std::string::npos)
            return {};
        const std::size_t value = at + std::string(key).size() + 1;
        return content.substr(value, content.find_first_of("\r\n", value) - value);
    }
    // How often the host was called with what begins so.
    auto calls(std::string_view beginning) {
        return std::count_if(host().calls.begin(), host().calls.end(),
                             [&](const auto& call) { return call.starts_with(beginning); });
    }
};

TEST_F(Control, StartsWithDefaultsAndRemembersTheChoices) {
    openControl();
    EXPECT_EQ(calls("ReportControlReady"), 1);
    EXPECT_EQ(plugIn_.connector.PlugInDescription(), "Dictation search");
    EXPECT_EQ(read("local.ini"), "[OVSearch.ctrlOVSearch]\r\nSettingsCopied=-1\r\n");
    EXPECT_TRUE(widget<QRadioButton>("optCriteriaCompare(1)").isChecked());
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), column(2));
    EXPECT_TRUE(results().isColumnHidden(column(10)));

    press("cmdSearchOptions(1)");
    EXPECT_TRUE(user->boxes.empty()) << "never had a function";

    QTest::mouseClick(&widget<QRadioButton>("optCriteriaCompare(0)"), Qt::LeftButton);
    EXPECT_EQ(setting("SearchCompareAnd"), "0");
    closeControl();
    openControl();
    EXPECT_TRUE(widget<QRadioButton>("optCriteriaCompare(0)").isChecked());
}

TEST_F(Control, TellsTheHostHowTheListIsFilled) {
    struct Case {
        int hits;
        std::string label;
        int inits;
        int boxes;
    };
    for (const Case& c : std::vector<Case>{{0, "Search result (0 dictations)", 0, 2},
                                           {1, "Search result (1 dictation)", 0, 1},
                                           {25, "Search result (25 dictations)", 0, 1},
                                           {26, "Search result (26 dictations)", 1, 1}}) {
        for (int i = 0; i < c.hits; ++i)
            store.add("2$WAV@@14$" + std::to_string(i) + ".WAV");
        openControl();
        host().calls.clear();
        searchAll();
        EXPECT_EQ(label(), c.label);
        EXPECT_EQ(user->boxes.size(), static_cast<std::size_t>(c.boxes)) << c.hits;
        // Those of the walk apart, which counts folders.
        EXPECT_EQ(calls("PI_ProgressInit(&0, &" + std::to_string(c.hits) + ", &0, &\"List"),
                  c.inits);
        EXPECT_EQ(calls("PI_ProgressValue(&"), c.hits) << c.hits;
        EXPECT_EQ(results().model()->rowCount(), c.hits);
        if (c.hits > 0) {
            EXPECT_EQ(host().calls.back(), "PI_ProgressClear()");
        }
        closeControl();
    }
}

TEST_F(Control, AsksBeforeItListsEverything) {
    store.add("2$WAV@@14$Anna.WAV");
    openControl();
    searchAll();
    store.add("2$WAV@@14$Berta.WAV");
    key(window(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(user->boxes.back().buttons, platform::MessageButtons::yesNo);
    EXPECT_EQ(user->boxes.back().title, "Dictation search");
    host().answers["PI_GetLanguage"] = "7";
    action("LANGUAGE");
    EXPECT_EQ(label(), "Suchergebnis (1 Diktat)") << "No leaves everything as it was";
    EXPECT_EQ(results().model()->rowCount(), 1);
}

TEST_F(Control, NamesADirectoryThatIsNotThere) {
    host().answers["PI_GetDirectory(204)"] = path("gone\\");
    openControl();
    for (const char* name : {"cmdSearchOptions(0)", "cmdSearchOptions(2)", "cmdSearchOptions(3)",
                             "cmdSearchOptions(4)"}) {
        user->boxes.clear();
        press(name);
        ASSERT_EQ(user->boxes.size(), 1U) << name;
        EXPECT_NE(user->boxes[0].text.find((folder() / "gone").native()), std::string::npos);
    }
    // The host's new directory is taken up.
    host().answers["PI_GetDirectory(204)"] = store.directory();
    action("dir_netdictationtree");
    user->boxes.clear();
    press("cmdSearchOptions(2)");
    EXPECT_EQ(user->boxes[0].text.substr(0, 25), "The result list is empty.");
}

TEST_F(Control, KeepsAListOfCriteria) {
    openControl();
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

    withDialog([&] { press("cmdSearchKriteriaOptions(1)"); }, [](QDialog& d) { d.reject(); });
    EXPECT_EQ(criteriaLine(), "Berta; *Carla; ");

    closeControl();
    EXPECT_EQ(bars(read("SearchCriteria.dat")), "5|17|Berta|\r\n5|17|Carla|\r\n");
    openControl();
    criteria().topLevelItem(1)->setSelected(true);
    key(criteria(), Qt::Key_Delete);
    EXPECT_EQ(criteriaLine(), "*Berta; ") << "the one before the last";
    press("cmdSearchKriteriaOptions(2)");
    EXPECT_FALSE(button("cmdSearchKriteriaOptions(2)").isEnabled());
    closeControl();
    EXPECT_FALSE(tests::fs::exists(folder() / "SearchCriteria.dat")) << "no criteria, no file";
}

TEST_F(Control, LosesNothingOfABrokenCriteriaFile) {
    const std::string content = criterion("5|17|Anna|\nrubbish\n5|17|x\n\n7|25|10|\n");
    write("SearchCriteria.dat", content);
    openControl();
    EXPECT_EQ(criteriaLine(), "Anna; 10; ");
    closeControl();
    EXPECT_EQ(bars(read("SearchCriteria.dat")), "5|17|Anna|\r\n7|25|10|\r\n");
    EXPECT_EQ(read("SearchCriteria.bak"), content);
}

TEST_F(Control, TellsOnceThatTheCriteriaCannotBeSaved) {
    host().answers["PI_GetDirectory(32)"] = path("gone\\");
    openControl();
    enter([&] { press("cmdSearchKriteriaOptions(0)"); }, "Anna");
    enter([&] { press("cmdSearchKriteriaOptions(0)"); }, "Berta");
    ASSERT_EQ(user->boxes.size(), 1U);
    EXPECT_TRUE(user->boxes[0].text.starts_with("The search criteria cannot be saved."));
    EXPECT_EQ(criteriaLine(), "Anna; *Berta; ");
    control_ = nullptr;
    EXPECT_EQ(user->boxes.size(), 1U) << "the end goes on without a word";
}

TEST_F(Control, SortsByTheClickedColumn) {
    store.add("2$ROH@@14$b@@7$01-12-2025 10$00$00.WAV")
        .add("2$WAV@@14$Ä@@7$02-01-2026 09$00$00.WAV")
        .add("2$STOP@@14$c@@7$15-06-2025 08$00$00.WAV");
    openControl();
    searchAll();
    EXPECT_EQ(columnTexts(5), "Ä; b; c; ") << "by status, as for a first start";
    clickHeader(5);
    EXPECT_EQ(columnTexts(5), "Ä; b; c; ");
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), column(5));
    results().selectRow(0);
    clickHeader(5);
    EXPECT_EQ(columnTexts(5), "c; b; Ä; ");
    EXPECT_TRUE(results().selectionModel()->isRowSelected(2)) << "the selection moves along";
    clickHeader(9);
    EXPECT_EQ(columnTexts(5), "Ä; b; c; ") << "by day and time, the order kept";
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), column(9));
    EXPECT_EQ(setting("ListSortKey"), std::to_string(column(10)));
    EXPECT_EQ(setting("ListSortOrder"), "1");

    closeControl();
    openControl();
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), column(9));
    searchAll();
    EXPECT_EQ(columnTexts(5), "Ä; b; c; ");
}

TEST_F(Control, RemembersHowTheColumnsWereLeft) {
    openControl();
    results().horizontalHeader()->moveSection(results().horizontalHeader()->visualIndex(column(5)),
                                              0);
    results().setColumnWidth(column(18), 333);
    const int sortKey = column(2);
    hideColumns({0});
    EXPECT_EQ(column(1), -1);
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), column(2));
    EXPECT_EQ(setting("ListSortKey"), std::to_string(sortKey - 1)) << "follows its column";
    EXPECT_NE(read("SearchColumns.dat").find("1=0"), std::string::npos);
    closeControl();
    openControl();
    EXPECT_EQ(column(1), -1);
    EXPECT_EQ(results().horizontalHeader()->visualIndex(column(5)), 0);
    EXPECT_EQ(results().columnWidth(column(18)), 333);

    // Hide the column that the list is sorted by, and the one that was moved to the front.
    hideColumns({0, 2});
    EXPECT_EQ(column(5), -1);
    EXPECT_EQ(results().horizontalHeader()->sortIndicatorSection(), -1);
    results().horizontalHeader()->moveSection(3, 5);
    withDialog([&] { press("cmdSearchOptions(3)"); },
               [](QDialog& dialog) {
                   child<QListWidget>(dialog, "lstLeft").setCurrentRow(2);
                   child<QPushButton>(dialog, "cmdTransfer(0)").click();
                   child<QPushButton>(dialog, "cmdOK").click();
               });
    EXPECT_EQ(results().horizontalHeader()->visualIndex(column(5)), 0) << "back at its place";
}

TEST_F(Control, StopsASearchWithEscape) {
    store.addDeep(40, "2$WAV.WAV");
    openControl();
    user->saysYes = true;
    int seen = 0;
    auto* pumped = new QTimer(&window());
    QObject::connect(pumped, &QTimer::timeout, [&] {
        if (!modDictation::isSearchRunning() || seen++ > 0)
            return;
        EXPECT_FALSE(button("cmdSearchOptions(0)").isEnabled());
        QTest::keyClick(&window(), Qt::Key_F5); // no second one
        QTest::keyClick(&window(), Qt::Key_Escape);
    });
    pumped->start(0);
    // The first folder takes as long as it takes until the timers have run.
    std::string counted;
    host().onCall = [&](const std::string& call) {
        if (!call.starts_with("PI_ProgressText"))
            return;
        EXPECT_TRUE(call.ends_with("\\\")")) << call << " is no directory";
        while (seen == 0 || counted.empty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            counted = label().starts_with("Dictations found so far: ") ? label() : "";
        }
    };
    key(window(), Qt::Key_F5);
    EXPECT_EQ(label().substr(0, 15), "Search result (");
    EXPECT_GE(seen, 1);
    EXPECT_LT(results().model()->rowCount(), 40);
    EXPECT_FALSE(widget<QLabel>("lblSearchNotice").text().isEmpty());
    EXPECT_TRUE(button("cmdSearchOptions(0)").isEnabled());
}

TEST_F(Control, SurvivesWhatTheHostDoesInTheMiddleOfASearch) {
    store.addDeep(30, "2$WAV.WAV");
    write("SearchCriteria.dat", criterion("2|25|6|\r\n"));
    struct Case {
        std::string what;
        std::function<void()> act;
    };
    const std::vector<Case> cases = {
        {"switches the language",
         [&] {
             modLanguage::SetLanguage(7, 0);
             action("LANGUAGE");
         }},
        {"changes the folder",
         [&] {
             host().answers["PI_GetDirectory(204)"] = path("gone\\");
             action("DIR_NETDICTATIONTREE");
             host().answers["PI_GetDirectory(204)"] = store.directory();
         }},
        {"fails", [&] { host().refused.insert("PI_ProgressText"); }},
    };
    for (const Case& c : cases) {
        openControl();
        bool done = false;
        host().onCall = [&](const std::string& call) {
            if (!done && call.starts_with("PI_ProgressText")) {
                done = true;
                c.act();
            }
        };
        search();
        host().onCall = nullptr;
        host().refused.clear();
        EXPECT_TRUE(done) << c.what;
        EXPECT_FALSE(modDictation::isSearchRunning()) << c.what;
        EXPECT_EQ(criteria().topLevelItemCount(), 1) << c.what;
        closeControl();
        EXPECT_EQ(bars(read("SearchCriteria.dat")), "2|25|6|\r\n") << c.what;
        modLanguage::SetLanguage(9, 0);
    }
}

TEST_F(Control, OpensWhateverTheHostCannotDo) {
    for (const char* refused : {"PI_GetLanguage", "PI_GetSubLanguage", "PI_GetLocalINIFile",
                                "PI_GetDirectory", "ReportControlReady", "subscribe"}) {
        host().refused = {refused};
        openControl();
        EXPECT_TRUE(button("cmdSearchOptions(0)").isEnabled()) << refused;
        closeControl();
    }
    host().refused = {"PI_LogView"};
    store.add("2$WAV.WAV");
    openControl();
    searchAll();
    results().selectRow(0);
    user->boxes.clear();
    press("cmdSearchOptions(4)");
    EXPECT_EQ(user->boxes.size(), 1U) << "the user hears of a command that failed";
}

TEST_F(Control, EndsItsBoxesAndMakesRoomForTheNext) {
    openControl();
    user = nullptr; // the real boxes
    withDialog([&] { search(); },
               [&](QDialog& box) {
                   control_ = nullptr;
                   EXPECT_FALSE(box.isVisible()) << "the question is answered with No";
                   openControl();
                   user = nullptr;
               });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    withDialog([&] { search(); },
               [&](QDialog& box) {
                   EXPECT_EQ(box.windowTitle(), QStringLiteral("Dictation search"));
                   QTest::keyClick(&box, Qt::Key_Return); // No is the default
               });
    EXPECT_EQ(label(), "Search result");
}

TEST_F(Control, TellsOnceThatSettingsCannotBeKept) {
    const auto notices = [] {
        QList<QMessageBox*> found;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* box = qobject_cast<QMessageBox*>(window); box != nullptr && box->isVisible())
                found.append(box);
        return found;
    };
    std::filesystem::create_directory(folder() / "local.ini");
    openControl();
    ASSERT_EQ(notices().size(), 1);
    EXPECT_TRUE(notices().front()->text().startsWith(
        QStringLiteral("The settings cannot be saved: %1\n")
            .arg(QString::fromStdString((folder() / "local.ini").native()))));
    EXPECT_FALSE(notices().front()->isModal()) << "nobody waits for it";
    const auto choose = [this](const char* option) {
        QTest::mouseClick(&widget<QRadioButton>(option), Qt::LeftButton);
    };
    choose("optCriteriaCompare(0)");
    EXPECT_TRUE(user->boxes.empty());
    user = nullptr;
    resetUnsaved();
    choose("optCriteriaCompare(1)");
    ASSERT_EQ(notices().size(), 1) << "it is there already";
    QTest::keyClick(notices().front(), Qt::Key_Return);
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
    const auto focusAfterSearch = [&](std::function<void()> meanwhile) {
        searchButton.setFocus();
        host().onCall = [&](const std::string& call) {
            if (call.starts_with("PI_ProgressText"))
                meanwhile();
        };
        key(searchButton, Qt::Key_Space);
        host().onCall = nullptr;
        return window().focusWidget()->objectName().toStdString();
    };
    EXPECT_EQ(focusAfterSearch([] {}), "cmdSearchOptions(0)");
    EXPECT_EQ(focusAfterSearch([&] { results().setFocus(); }), "lvSearchResult");
    EXPECT_EQ(focusAfterSearch([&] { press("cmdSearchStop"); }), "cmdSearchOptions(0)");
}

TEST_F(Control, LeadsTheKeyboardAlong) {
    openControl();
    criteria().setFocus();
    std::string order;
    for (const QWidget* at = &criteria(); at != &results(); at = window().focusWidget()) {
        order += at->objectName().toStdString() + " ";
        ASSERT_LT(order.size(), 500U) << order;
        QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, "lvSearchCriteria cmdSearchKriteriaOptions(0) optCriteriaCompare(1) "
                     "cmdSearchOptions(0) cmdSearchOptions(2) cmdSearchOptions(3) "
                     "cmdSearchOptions(4) ");
}

TEST_F(Control, ShowsTheRowsThatTheHostHeardOf) {
    for (int i = 0; i < 30; ++i)
        store.add("2$WAV@@14$" + std::to_string(i) + ".WAV");
    openControl();
    host().refused = {"PI_ProgressValue(&3)"};
    searchAll();
    EXPECT_EQ(results().model()->rowCount(), 3);
    EXPECT_EQ(user->boxes.back().text, "refused");
    EXPECT_EQ(label(), "Search result");
}

TEST_F(Control, TellsWhatASearchLeftOut) {
    store.add("2$ba\\ck.WAV").add("2$WAV.WAV");
    openControl();
    searchAll();
    EXPECT_EQ(widget<QLabel>("lblSearchNotice").text().toStdString(),
              "Files and folders left out because of a “\\” in their name: 1");
    modDictation::ScanReport full;
    full.limitReached = true;
    EXPECT_EQ(noticeText(full).toStdString(),
              "The list shows only the first 999,999 dictations; there may be more. Narrow the "
              "search criteria.");
}

TEST_F(Control, SpeaksTheLanguageTheHostChangesTo) {
    store.add("2$WAV@@5$HOCH.WAV");
    write("SearchCriteria.dat", criterion("15|25|3|\r\n"));
    openControl();
    search();
    EXPECT_EQ(columnTexts(15), "High; ");
    host().answers["PI_GetLanguage"] = "7";
    user = nullptr; // a real box
    withDialog([&] { press("cmdSearchKriteriaOptions(0)"); },
               [&](QDialog& dialog) {
                   child<QLineEdit>(dialog, "txtValue(0)").clear();
                   withDialog([&] { child<QPushButton>(dialog, "cmdOK").click(); },
                              [&](QDialog& box) {
                                  action("language");
                                  EXPECT_EQ(tests::readable(box),
                                            "Diktatsuche|Geben Sie einen Wert ein.|OK");
                              });
                   EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Neues Suchkriterium"));
               });
    EXPECT_EQ(button("cmdSearchOptions(0)").text(), QStringLiteral("S&uchen"));
    EXPECT_EQ(criteria().topLevelItem(0)->text(0), QStringLiteral("\"Priorität\" ist Hoch"));
    EXPECT_EQ(columnTexts(15), "Hoch; ");
    EXPECT_EQ(label(), "Suchergebnis (1 Diktat)");
    EXPECT_EQ(plugIn_.connector.PlugInDescription(), "Diktatsuche");
}

TEST_F(Control, TranslatesTheMenuThatIsOpen) {
    store.add("2$WAV.WAV");
    openControl();
    searchAll();
    const auto rightClick = [](QWidget& list) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(&list, &event);
    };
    struct Case {
        std::function<void()> open;
        QString entry;
    };
    for (const Case& c : std::vector<Case>{
             {[&] { press("cmdSearchOptions(2)"); }, QStringLiteral("&Nur markierte Zeilen")},
             {[&] { rightClick(criteria()); }, QStringLiteral("&Bearbeiten …")},
             {[&] { rightClick(results()); }, QStringLiteral("Zeilen &kopieren")}}) {
        for (const char* language : {"9", "7"}) {
            host().answers["PI_GetLanguage"] = language;
            action("LANGUAGE");
            if (*language == '9')
                c.open();
            QCoreApplication::processEvents();
        }
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr) << c.entry.toStdString();
        QStringList entries;
        for (const QAction* entry : menu->actions())
            entries << entry->text();
        EXPECT_TRUE(entries.contains(c.entry)) << entries.join(u';').toStdString();
        menu->close();
    }
}

TEST_F(Control, PlaysByKeyAndByMouse) {
    const tests::Environment silent("SDL_AUDIODRIVER", "dummy");
    tests::writeWave(store.native("2$WAV.WAV"), {}, tests::sweep(8000, 80000));
    tests::ScriptedMedia media;
    openControl();
    searchAll();
    const QPoint row = results().visualRect(results().model()->index(0, 0)).center();
    struct Case {
        std::string what;
        std::function<void()> act;
        int opened;
    };
    const std::vector<Case> cases = {
        {"Enter without a row", [&] { key(results(), Qt::Key_Return); }, 0},
        {"a click", [&] { QTest::mouseClick(results().viewport(), Qt::LeftButton, {}, row); }, 0},
        {"Enter", [&] { key(results(), Qt::Key_Return); }, 1},
        {"Space", [&] { key(results(), Qt::Key_Space); }, 1},
        {"a double click",
         [&] { QTest::mouseDClick(results().viewport(), Qt::LeftButton, {}, row); }, 1},
        {"a double click below the rows",
         [&] { QTest::mouseDClick(results().viewport(), Qt::LeftButton, {}, row + QPoint(0, 60)); },
         0},
    };
    results().clearSelection();
    for (const Case& c : cases) {
        media.takeSent();
        c.act();
        EXPECT_EQ(media.takeOpened(), c.opened) << c.what;
        press("cmdSearchPlayer(2)");
    }
}

TEST_F(Control, HandsOutTheSelectedRows) {
    store.add("ward/2$WAV@@14$Anna@@11$Knee\tleft.WAV").add("ward/2$ROH@@14$Berta.WAV");
    openControl();
    press("cmdSearchOptions(4)");
    EXPECT_EQ(user->beeps, 1) << "no row, no log";
    searchAll();
    results().selectRow(0);
    const std::string path = store.path("ward/2$WAV@@14$Anna@@11$Knee\tleft.WAV");
    press("cmdSearchOptions(4)");
    EXPECT_EQ(host().calls.back(), "PI_LogView(&\"" + path + "\", &\"\")");

    key(results(), Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    const QStringList lines = copied->text().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].count(QLatin1Char('\t')), 20) << "hidden columns are left out";
    EXPECT_EQ(lines[0].count(QLatin1Char('\t')), lines[1].count(QLatin1Char('\t')));
    EXPECT_TRUE(lines[1].contains(QLatin1String("Knee left")));
    EXPECT_EQ(copied->urls(), QList<QUrl>{QUrl::fromLocalFile(QString::fromStdString(
                                  store.native("ward/2$WAV@@14$Anna@@11$Knee\tleft.WAV")))});
}

} // namespace
} // namespace ov
