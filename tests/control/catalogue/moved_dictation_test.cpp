// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/catalogue/catalogue_window_fixture.h"
#include "tests/wave_files.h"

#include <QProgressBar>

// Dictations that are elsewhere since a catalogue was asked.

namespace ov {
namespace {

TEST_F(CatalogueWindow, OpensADictationWhereItIsNow) {
    const Environment silent("SDL_AUDIODRIVER", "dummy");
    const char* const before = "a/2$ROH@@14$H870_26.WAV"; // not what the field reads
    const char* const inCatalogue = "b/2$ROH@@14$H870_26.WAV";
    const char* const onDisk = "c/2$ROH@@14$H870_26.WAV";
    store.addFolder("a");
    writeWave(store.native(before), {}, sweep(8000, 80000));
    update();
    openAndSearch();
    results().selectRow(0);
    move(before, inCatalogue);
    store.add("0/2$ROH@@14$h870_26.WAV"); // which "is" does not tell from it
    update();
    user->boxes.clear();
    key(results(), Qt::Key_Return);
    waitFor([this] {
        return widget<QProgressBar>("prgSearchPlayerStatus").format() == QLatin1String("Playing");
    });
    EXPECT_EQ(notice(), "The dictation has moved; it is in " + store.native("b") + "/ now.");
    EXPECT_TRUE(results().model()->index(0, 0).data(ResultModel::playingRole).toBool());
    EXPECT_TRUE(user->boxes.empty());
    press("cmdSearchPlayer(2)");

    move(inCatalogue, onDisk);
    press("cmdSearchOptions(4)");
    EXPECT_NE(user->onlyText().find(store.native(inCatalogue)), std::string::npos);
    EXPECT_EQ(calls("PI_LogView"), 0) << "No leaves it alone";
    user->saysYes = true;
    press("cmdSearchOptions(4)");
    EXPECT_EQ(calls("PI_LogView(&\"" + store.path(onDisk)), 1);
    fs::remove(store.native(onDisk));
    user->boxes.clear();
    user->saysYes = false;
    host().calls.clear();
    press("cmdSearchOptions(4)");
    const auto progress = [](const std::string& call) { return call.starts_with("PI_Progress"); };
    const auto last = std::ranges::find_if(host().calls.rbegin(), host().calls.rend(), progress);
    ASSERT_NE(last, host().calls.rend());
    EXPECT_EQ(*last, "PI_ProgressClear()") << "nothing goes on after the catalogue's answer";
    user->saysYes = true;
    user->boxes.clear();
    press("cmdSearchOptions(4)");
    ASSERT_EQ(user->boxes.size(), 2U);
    EXPECT_EQ(user->boxes[1].text.find("The dictation is nowhere"), 0U);
    EXPECT_EQ(calls("PI_LogView"), 0);
}

TEST_F(CatalogueWindow, ADictationOfTheSameNameIsNotTheOneThatWentAway) {
    store.add("b/2$ROH@@14$Anna.WAV").addFolder("c");
    // The other one listed, also when the catalogue has forgotten which went away, or not listed.
    for (const auto& [lines, forgets] :
         {std::pair("5|17|Anna|\n", true), {"5|17|Anna|\n", false}, {"1|17|a|\n", false}}) {
        closeControl();
        write("SearchCriteria.dat", criterion(lines));
        store.add("a/2$ROH@@14$Anna.WAV");
        update();
        openControl();
        search();
        results().selectRow(rows(1).starts_with("*...\\a; ") ? 0 : 1);
        fs::remove(store.native("a/2$ROH@@14$Anna.WAV"));
        if (forgets)
            update();
        user->saysYes = true;
        press("cmdSearchOptions(4)");
        ASSERT_EQ(user->boxes.size(), 2U) << lines;
        EXPECT_EQ(user->boxes[1].text.find("The dictation is nowhere"), 0U) << lines;
    }
    store.add("c/2$ROH@@14$Anna.WAV");
    press("cmdSearchOptions(4)");
    EXPECT_EQ(rows(1), "*...\\c; ");
    press("cmdSearchOptions(2)");
    click("Copy as");
    EXPECT_EQ(QApplication::clipboard()->text().section(u'\n', 1, 1).section(u'\t', 0, 0),
              QStringLiteral("...\\c"));
}

} // namespace
} // namespace ov
