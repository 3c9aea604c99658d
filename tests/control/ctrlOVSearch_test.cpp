// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/search_run.h"
#include "sound/output/output_choice.h"
#include "sound/wave_control.h"
#include "support/unsaved.h"
#include "tests/control/control_fixture.h"

#include <QMessageBox>
#include <QThread>

namespace ov {
namespace {

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
        for (const char* chosen : {"110 %", "10 s", "300 %", "&Even out loudness", "S&kip silence",
                                   "(00:12:34)", "Re&member where a dictation was left"})
            if (choice->text() == QLatin1String(chosen))
                choice->trigger();
    for (const int width : {222, 333}) // the newest counts
        results().setColumnWidth(column(18), width);
    openControl();
    EXPECT_EQ(results().columnWidth(column(18)), 333);
    EXPECT_EQ(setting("PlayerBackUpSeconds"), "10");
    EXPECT_EQ(widget<QToolButton>("cmdSearchPlayerOptions").text(), QStringLiteral("110 %"));
    EXPECT_EQ(setting("PlayerTimeStamp"), "(%1%)");
    const sound::SoundShape shape = sound::WaveControl::instance().shape();
    EXPECT_EQ(shape, (sound::SoundShape{300, true, false, true}));
    sound::WaveControl::instance().setShape({}); // one for the process
    EXPECT_EQ(setting("PlayerRemembersPositions"), "0");
    QString checked;
    for (QAction* choice : widget<QToolButton>("cmdSearchPlayerOptions").findChildren<QAction*>())
        checked += choice->isChecked() ? choice->text() + u' ' : QString();
    EXPECT_EQ(checked,
              QStringLiteral("110 % S&kip silence 10 s 300 % &Even out loudness (00:12:34) "));
    EXPECT_TRUE(widget<QRadioButton>("optCriteriaCompare(0)").isChecked());
}

TEST_F(Control, RemembersVolumeAndOutput) {
    write("local.ini", "[OVSearch.ctrlOVSearch]\r\nPlayerOutput=Headset\r\n");
    openControl();
    EXPECT_EQ(sound::OutputChoice::instance().chosen(), "Headset");
    QTest::keyClick(&widget<QSlider>("slSearchPlayerVolume"), Qt::Key_PageDown);
    const int volume = 65535 - 3276; // a twentieth less
    waitFor([&] { return setting("PlayerVolume") == std::to_string(volume); });
    sound::WaveControl::instance().setVolume(sound::fullVolume); // as in a new process
    openControl();
    EXPECT_EQ(sound::WaveControl::instance().volume(), volume);
    EXPECT_EQ(widget<QSlider>("slSearchPlayerVolume").value(), 3276);
    sound::WaveControl::instance().setVolume(sound::fullVolume);

    QTest::mousePress(&widget<QToolButton>("cmdSearchPlayerOptions"), Qt::LeftButton);
    click("Output");
    click("Usual output");
    EXPECT_EQ(setting("PlayerOutput"), "");
    EXPECT_EQ(sound::OutputChoice::instance().chosen(), "");
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

TEST_F(Control, StaysAliveWhileTheHostIsSlow) {
    constexpr int hits = 12;
    for (int i = 0; i < hits; ++i)
        store.add("2$WAV@@14$" + std::to_string(i) + ".WAV");
    openControl();
    std::vector<int> pumped;
    host().onCall = [&](const std::string& call) {
        if (call.starts_with("PI_ProgressValue(&")) {
            QThread::msleep(20);
            pumped.push_back(user->pumped);
        }
    };
    searchAll();
    host().onCall = nullptr;
    ASSERT_EQ(pumped.size(), hits);
    EXPECT_GE(pumped.back() - pumped.front(), hits - 1) << "after each";
}

TEST_F(Control, NamesADirectoryThatIsNotThere) {
    host().answers["PI_GetDirectory(204)"] = path("gone\\");
    openControl();
    press("cmdSearchOptions(2)");
    EXPECT_NE(user->onlyText().find((folder() / "gone").native()), std::string::npos);
}

TEST_F(Control, KeepsAListOfCriteria) {
    openControl();
    for (const Qt::Key nothingToEdit : {Qt::Key_F2, Qt::Key_Delete})
        key(criteria(), nothingToEdit);
    enter([&] { press("cmdSearchKriteriaOptions(0)"); }, "Anna");
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Berta");
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Carla");
    EXPECT_EQ(line(), "AnnaBerta*Carla");

    enter([&] { press("cmdSearchKriteriaOptions(0)"); }, "Anna");
    EXPECT_EQ(line(), "*AnnaBertaCarla") << "one that is there is shown instead";
    EXPECT_EQ(user->boxes.size(), 1U);

    enter([&] { key(criteria(), Qt::Key_F2); }, "Dora");
    EXPECT_EQ(line(), "*DoraBertaCarla");
    enter([&] { Q_EMIT criteria().itemDoubleClicked(criteria().topLevelItem(0), 0); }, "Carla");
    EXPECT_EQ(line(), "Berta*Carla") << "edited onto one that is there";
    EXPECT_EQ(user->boxes.size(), 2U);

    const auto escape = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    withDialog([&] { press("cmdSearchKriteriaOptions(1)"); }, escape);
    withDialog([&] { key(criteria(), Qt::Key_Enter); }, escape);
    EXPECT_EQ(line(), "Berta*Carla");

    openControl();
    EXPECT_EQ(line(), "BertaCarla");
    deleteCriteria();
    EXPECT_FALSE(button("cmdSearchKriteriaOptions(2)").isEnabled());
    EXPECT_FALSE(fs::exists(folder() / "SearchCriteria.dat")) << "no criteria, no file";
}

TEST_F(Control, LosesNothingOfABrokenCriteriaFile) {
    const std::string content = criterion("5|17|Anna|\nrubbish\n5|17|x\n\n7|25|10|\n");
    write("SearchCriteria.dat", content);
    openControl();
    EXPECT_EQ(line(), "Anna10");
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
    EXPECT_EQ(line(), "Berta*Carla");
    control_ = nullptr; // without a word
    EXPECT_TRUE(user->onlyText().starts_with("The search criteria cannot be saved."));
    EXPECT_EQ(fs::file_size(file), tooLarge);
    openControl();
    fs::resize_file(file, large.size());
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Emil");
    EXPECT_EQ(bars(read("SearchCriteria.dat")), "5|17|Emil|\r\n");
    EXPECT_EQ(read("SearchCriteria.bak"), content + large);
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
    inSearch([this] { key(window(), Qt::Key_F5); }, stop);
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
        {"Suchergebnis (30 Diktate)", [&] { speak("7"); }}};
    for (const auto& [after, act] : cases) {
        openControl();
        inSearch([this] { search(); }, act);
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

} // namespace
} // namespace ov
