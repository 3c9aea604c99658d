// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/relative_dates.h"
#include "dictation/search/search.h"
#include "tests/control/control_fixture.h"
#include "tests/wave_files.h"

#include <QCheckBox>

// What stands behind the criteria after a search, and how the list of hits follows them.

namespace ov {
namespace {

class Following : public ControlTest {
protected:
    // Two dictations of Anna, one of Berta, and the list of those that the criteria ask for.
    void start(const std::string& criteria) {
        store.add("2$WAV@@14$Anna.WAV").add("2$ROH@@14$Anna.WAV").add("2$WAV@@14$Berta.WAV");
        openWith(criteria);
        search();
    }
    void follow(bool on) {
        widget<QCheckBox>("chkFollow").setChecked(on);
        QCoreApplication::processEvents();
    }
};

TEST_F(Following, CountsWhatEachCriterionMatches) {
    start("5|17|Anna|\n5|17|Zoe|\n9|8||\n");
    EXPECT_EQ(counts(), "2 of 3; !0 of 3; !0 of 3; ");
    const auto* zoe = criteria().topLevelItem(1);
    EXPECT_EQ(zoe->data(0, Qt::AccessibleTextRole).toString().toStdString(),
              "\"Author\" contains Zoe, 0 of 3, no dictation meets it");
    EXPECT_EQ(criteria().topLevelItem(2)->text(0).trimmed(),
              QStringLiteral("\"Dictated\" is this week"));
    EXPECT_TRUE(criteria().topLevelItem(2)->data(0, datesRole).toString().contains(u" to "));
    inSearch([&] { search(); },
             [&] { EXPECT_EQ(counts(), "; ; ; ") << "they are of the search before"; });
    speak("7");
    EXPECT_EQ(counts(), "2 von 3; !0 von 3; !0 von 3; ");
    follow(false);
    tick(0, false);
    EXPECT_EQ(counts(), "; ; ; ") << "they were for other criteria";
    compare(false);
    search();
    EXPECT_EQ(counts(), "; ; ; ") << "where one is enough not all are looked at";
}

TEST_F(Following, FollowsEachChangeWithoutAQuestion) {
    start("5|17|Anna|\n");
    results().selectRow(1);
    user->boxes.clear();
    host().calls.clear();
    criteria().setFocus();
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Berta");
    EXPECT_EQ(model().rowCount(), 0);
    EXPECT_EQ(counts(), "2 of 3; 1 of 3; ");
    EXPECT_EQ(label(), "Search result (0 dictations)");
    compare(false);
    EXPECT_EQ(model().rowCount(), 3);
    for (int row = 0; row < 3; ++row)
        if (model().text(row, column(5)) == QLatin1String("Berta"))
            results().selectRow(row);
    tick(0, false);
    EXPECT_EQ(columnTexts(5) + selectedRows(), "Berta; *");
    EXPECT_EQ(window().focusWidget(), &criteria());
    deleteCriteria();
    QCoreApplication::processEvents();
    EXPECT_EQ(model().rowCount(), 3) << "without criteria all";
    EXPECT_TRUE(user->boxes.empty());
    EXPECT_EQ(calls("PI_ProgressInit(&0, &3"), 0);
    EXPECT_EQ(read("SearchCriteria.dat"), "");

    follow(false);
    key(criteria(), Qt::Key_Z, Qt::ControlModifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(model().rowCount(), 3) << "not wanted";
    EXPECT_EQ(bars(read("SearchCriteria.dat")), "5|17|Berta|\r\n") << "but kept";
    EXPECT_EQ(setting("FollowCriteria"), "0");
    follow(true);
    EXPECT_EQ(columnTexts(5), "Berta; ");
}

TEST_F(Following, KeepsTheMarkOfWhatPlays) {
    start("5|17|Berta|\n5|17|a|\n");
    writeWave(store.native("2$WAV@@14$Berta.WAV"), {}, std::vector<float>(800000));
    const Environment silent("SDL_AUDIODRIVER", "dummy");
    results().selectRow(0);
    key(results(), Qt::Key_Return);
    waitFor([&] { return !widget<QToolButton>("cmdPlayedDictation").accessibleName().isEmpty(); });
    tick(0, false);
    EXPECT_EQ(model().rowCount(), 3);
    std::string played;
    for (int row = 0; row < 3; ++row) {
        const QModelIndex author = model().index(row, column(5));
        if (author.data(Qt::AccessibleTextRole).toString().startsWith(u"In the player"))
            played += author.data().toString().toStdString();
    }
    EXPECT_EQ(played, "Berta");
}

TEST_F(Following, KeepsWhatIsSelected) {
    start("5|17|a|\n5|17|Berta|\n");
    tick(1, false);
    sortBy(5);
    EXPECT_EQ(columnTexts(5), "Anna; Anna; Berta; ");
    results().selectAll();
    compare(false);
    EXPECT_EQ(selectedRows(), "***");
    compare(true);
    results().selectionModel()->select(model().index(0, 0),
                                       QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    compare(false);
    EXPECT_EQ(selectedRows(), "-**") << "the same rows again";
    tick(1, true);
    compare(true);
    EXPECT_EQ(columnTexts(5) + selectedRows(), "Berta; *");
}

TEST_F(Following, BeginsWithASearchOfTheUser) {
    store.add("2$WAV.WAV");
    openControl();
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Anna");
    EXPECT_EQ(label(), "Search result");
    search();
    user->boxes.clear();
    fs::remove_all(store.folder());
    key(criteria(), Qt::Key_Delete);
    QCoreApplication::processEvents(); // a search comes after the change
    EXPECT_TRUE(user->boxes.empty());
    EXPECT_TRUE(notice().ends_with("The list shows what was found before.")) << notice();
    fs::create_directory(store.folder());
}

TEST_F(Following, GivesWayToWhatIsAskedMeanwhile) {
    start("5|17|Anna|\n5|17|Berta|\n");
    for (int depth = 1; depth < 30; ++depth)
        store.add(std::string("ward") + std::to_string(depth) + "/2$WAV@@14$Carla.WAV");
    user->boxes.clear();
    inSearch([this] { tick(0, false); }, [this] { tick(1, false); });
    QCoreApplication::processEvents();
    EXPECT_EQ(model().rowCount(), 32) << "the newer change counts";

    inSearch([this] { tick(1, true); },
             [this] {
                 EXPECT_TRUE(button("cmdSearchOptions(0)").isEnabled());
                 QTest::keyClick(&window(), Qt::Key_Escape);
             });
    EXPECT_EQ(model().rowCount(), 32) << "stopped, the rows stay";
    EXPECT_EQ(counts(), "; ; ");

    inSearch([this] { tick(1, false); }, [this] { tick(1, true); });
    host().refused = {"PI_ProgressText"};
    tick(1, false);
    EXPECT_TRUE(user->boxes.empty()) << "a host that fails";
    host().refused.clear();
    inSearch([this] { tick(0, true); }, [this] { QTest::keyClick(&criteria(), Qt::Key_F5); });
    QCoreApplication::processEvents();
    EXPECT_EQ(model().rowCount(), 2) << "a search of the user takes its place";
    EXPECT_FALSE(modDictation::isSearchRunning());
}

TEST_F(Following, SaysWhatRelativeDatesMeanToday) {
    const platform::DateTime sunday{2026, 11, 22};
    const platform::DateTime endOfYear{2026, 12, 30};
    using namespace modDictation::operator_id;
    const std::tuple<platform::DateTime, std::int32_t, std::int32_t, std::string> cases[] = {
        // today, operator, language, what it means
        {sunday, thisWeek, 9, "16 to 22 November 2026"},
        {sunday, thisWeek, 7, "16. bis 22. November 2026"},
        {sunday, yesterday, 9, "21 November 2026"},
        {sunday, yesterday, 7, "21. November 2026"},
        {{2026, 12, 2}, thisWeek, 9, "30 November to 6 December 2026"},
        {{2026, 12, 2}, thisWeek, 7, "30. November bis 6. Dezember 2026"},
        {endOfYear, thisWeek, 9, "28 December 2026 to 3 January 2027"},
        {endOfYear, thisWeek, 7, "28. Dezember 2026 bis 3. Januar 2027"},
        {sunday, onDate, 9, ""}};
    for (const auto& [today, operatorId, language, meaning] : cases) {
        modLanguage::SetLanguage(language, 0);
        EXPECT_EQ(relativeDatesText({9, operatorId, "2026-11-21", ""}, today).toStdString(),
                  meaning);
    }
    EXPECT_TRUE(relativeDatesText({5, thisWeek, "", ""}, sunday).isEmpty()) << "no date";
}

} // namespace
} // namespace ov
