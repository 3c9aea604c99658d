// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/catalogue_answer.h"
#include "control/catalogue/catalogue_values.h"
#include "control/results/seen_values.h"
#include "tests/control/catalogue/catalogue_window_fixture.h"
#include "tests/slow_store.h"

#include <QCompleter>

// A window that asks a catalogue in place of walking.

namespace ov {
namespace {

TEST_F(CatalogueWindow, ListsWhatWasThereAndSaysAsOfWhen) {
    store.add("a/2$WAV@@14$Anna.WAV").add("2$WAV@@14$Berta.WAV");
    update();
    store.add("2$WAV@@14$Clara.WAV");
    fs::remove(store.native("2$WAV@@14$Berta.WAV"));
    openAndSearch();
    EXPECT_EQ(rows(), "*Berta; Anna; ") << "whatever the disk has";
    EXPECT_EQ(label(), "Search result (2 dictations)");
    EXPECT_EQ(calls("PI_ProgressInit(&0, &1, &0, &\"Asking"), 1);
    EXPECT_EQ(calls("PI_ProgressClear"), 2) << "of asking, of filling the list";
    const std::string asOf = moment();
    EXPECT_EQ(asOf.substr(0, 6), "as of ");
    EXPECT_EQ(asOf.size(), std::string("as of 10:42").size()) << "no date, it was today: " << asOf;
    speak("7");
    EXPECT_EQ(moment(), "Stand " + asOf.substr(6));
    speak("9");

    searchAfresh();
    EXPECT_EQ(rows(), "*Clara; Anna; ") << "once by a walk";
    EXPECT_FALSE(widget<QLabel>("lblCatalogueMoment").isVisible());
    searchAll();
    EXPECT_EQ(rows(), "*Berta; Anna; ");

    fs::rename(store.folder(), store.folder().native() + "-gone"); // as when its server is down
    searchAll();
    EXPECT_EQ(rows(), "*Berta; Anna; ");
    user->boxes.clear();
    press("cmdSearchOptions(2)");
    click("Copy as");
    EXPECT_NE(QApplication::clipboard()->text().indexOf(QLatin1String("Berta")), -1);
    withDialog([this] { press("cmdSearchOptions(3)"); }, [](QDialog&) {});
    EXPECT_TRUE(user->boxes.empty()) << user->boxes[0].text;
    key(results(), Qt::Key_Return, Qt::AltModifier);
    EXPECT_NE(user->onlyText().find("cannot be reached"), std::string::npos);
    fs::rename(store.folder().native() + "-gone", store.folder());
}

TEST(CatalogueMoment, HasTheDateOfAnotherDay) {
    const std::int64_t moment = 1'795'000'000'000'000'000;
    const platform::DateTime then = platform::localTime(moment);
    platform::setLocale(platform::Locale{platform::DateOrder::dayMonthYear, '.'});
    const std::string clock = momentText(moment, then);
    for (int platform::DateTime::*part :
         {&platform::DateTime::day, &platform::DateTime::month, &platform::DateTime::year}) {
        platform::DateTime other = then;
        ++(other.*part);
        EXPECT_EQ(momentText(moment, other), platform::formatShortDate(then) + " " + clock);
    }
    platform::setLocale(std::nullopt);
}

TEST_F(CatalogueWindow, CountsWhatEachCriterionMeetsAndWhyNothingWasFound) {
    store.add("2$WAV@@14$Anna.WAV").add("2$ROH@@14$Anna.WAV").add("2$WAV@@14$Berta.WAV");
    update();
    openWith("5|17|Anna|\n5|17|Zoe|\n26|17|14|\n");
    search();
    waitFor([this] { return counts() == "2 of 3; !0 of 3; 3 of 3; "; });
    EXPECT_EQ(hint(), "No dictation meets this criterion:\n\"Author\" contains Zoe");
    tick(1, false);
    waitFor([this] { return counts() == "2 of 3; ; 3 of 3; "; });
    EXPECT_EQ(model().rowCount(), 2) << "the list follows the criteria";
    EXPECT_NE(moment(), "");
    searchAfresh();
    EXPECT_EQ(counts(), "2 of 3; ; 3 of 3; ") << "as of a walk";
}

TEST_F(CatalogueWindow, TellsOfUpdatesThatHaveNotComeToTheirEnd) {
    const auto openForUpdate = [this] {
        platform::Status status;
        return catalogue::openCatalogue(place(), catalogue::Access::update, status);
    };
    store.add("2$WAV@@14$Anna.WAV");
    update();
    openControl();
    for (const auto& [asOf, sentence] :
         {std::pair(0, "The catalogue is still being made; not all dictations are in it yet."),
          {1,
           "Some of it is newer: an update of the catalogue has not come to its end (begun: "}}) {
        const auto catalogue = openForUpdate();
        platform::Status status;
        auto left = catalogue::storeOf(*catalogue, store.directory(), status);
        ASSERT_TRUE(left);
        left->asOf = asOf;
        left->begun = 2;
        ASSERT_TRUE(catalogue->lockForUpdate().ok());
        ASSERT_TRUE(catalogue->putStore(*left).ok());
        ASSERT_TRUE(catalogue->commit().ok());
        searchAll();
        EXPECT_TRUE(notice().starts_with(sentence)) << notice();
        EXPECT_EQ(moment().empty(), asOf == 0);
        EXPECT_EQ(model().rowCount(), 1);
    }
}

TEST_F(CatalogueWindow, OffersAWalkWhenThereIsNoAnswer) {
    TemporaryStore other;
    const std::string file = (folder() / "catalogue.db").native();
    const std::pair<std::function<void()>, std::string> cases[] = {
        {[] {}, "There is no catalogue "},
        {[&] { update(other.directory()); }, "The catalogue does not have the folder "},
        {[this] { write("catalogue.db", std::string(5000, 'x')); },
         "The catalogue cannot be asked: " + file + " cannot be read, or is damaged."},
        {[this] { write("local.ini", sectionWith("Catalogue=postgresql://127.0.0.1:1/x")); },
         "The catalogue cannot be asked: The server 127.0.0.1:1/x does not answer"}};
    for (const auto& [prepare, sentence] : cases) {
        SCOPED_TRACE(sentence);
        closeControl(); // which saves its criteria
        for (const char* suffix : {"", "-wal", "-shm"})
            fs::remove(folder() / (std::string("catalogue.db") + suffix));
        prepare();
        store.add("2$WAV@@14$Anna.WAV");
        openWith("5|17|A|\n");
        search();
        const std::string asked = user->onlyText();
        EXPECT_TRUE(asked.starts_with(sentence)) << asked;
        EXPECT_NE(asked.find("Search through the folders instead?"), std::string::npos);
        EXPECT_EQ(model().rowCount(), 0) << "No searches nowhere";
        user->saysYes = true;
        search();
        EXPECT_EQ(model().rowCount(), 1);
        EXPECT_EQ(moment(), "");
        EXPECT_EQ(user->boxes.size(), 2U);
        criteria().setFocus();
        enter([&] { key(criteria(), Qt::Key_Insert); }, "Anna");
        EXPECT_EQ(counts(), "1 of 1; 1 of 1; ") << "a walk goes on as one";
        EXPECT_EQ(user->boxes.size(), 2U) << "and nothing is asked again";
    }
}

TEST_F(CatalogueWindow, ACatalogueThatGoesAwayIsToldWithoutABoxWhileCriteriaChange) {
    store.add("2$WAV@@14$Anna.WAV");
    update();
    openWith("5|17|A|\n5|17|B|\n");
    tick(1, false);
    search();
    EXPECT_EQ(model().rowCount(), 1);
    fs::rename(folder() / "catalogue.db", folder() / "away");
    user->boxes.clear();
    tick(1, true);
    waitFor([this] { return notice().starts_with("There is no catalogue "); });
    EXPECT_EQ(model().rowCount(), 1) << "what was found stays";
    EXPECT_TRUE(user->boxes.empty());
}

// One on a disk that does not answer.
class SilentCatalogue : public CatalogueWindow {
protected:
    void SetUp() override {
        if (!server.isMounted())
            GTEST_SKIP() << SlowStore::why;
        disk.add("catalogue.db", "x");
        write("local.ini", sectionWith("Catalogue=" + server.path("catalogue.db")));
        openWith("5|17|A|\n");
        server.hang();
        whenAsked_.setInterval(1);
    }
    void TearDown() override { EXPECT_FALSE(server.timedOut()); }
    // Searches, and does `act` once the catalogue is asked.
    void searchAnd(const std::function<void()>& act) {
        whenAsked_.callOnTimeout([this, act] {
            if (!server.hasCaught())
                return;
            whenAsked_.stop();
            act();
        });
        whenAsked_.start();
        search();
    }

    TemporaryStore disk;
    SlowStore server{disk};

private:
    QTimer whenAsked_;
};

TEST_F(SilentCatalogue, IsLeftBehindByWhoStops) {
    searchAnd([this] {
        QTest::keyClick(&window(), Qt::Key_Escape);
        server.release(); // it is no database, which nobody waits to hear
    });
    EXPECT_TRUE(user->boxes.empty());
    server.hang();
    searchAnd([this] { QTest::keyClick(&window(), Qt::Key_Escape); });
    EXPECT_EQ(label(), "Search result (0 dictations)");
    EXPECT_TRUE(notice().starts_with("The search was stopped.")) << notice();
    EXPECT_TRUE(button("cmdSearchOptions(0)").isEnabled());
    EXPECT_TRUE(user->boxes.empty());
    server.release();
}

TEST_F(SilentCatalogue, IsLeftBehindByAControlThatEnds) {
    searchAnd([this] { control_ = nullptr; });
    EXPECT_EQ(control_, nullptr);
    server.release();
}

TEST_F(SilentCatalogue, LeavesTheFilterToTheHits) {
    store.add("2$WAV@@14$Anna.WAV");
    searchAfresh();
    auto& filter = widget<QLineEdit>("txtResultFilter");
    filter.setFocus();
    QTest::keyClicks(&filter, QStringLiteral("author:n"));
    waitFor([this] { return server.hasCaught() && offered() == "Anna; "; });
    server.release();
}

TEST_F(CatalogueWindow, IsSwitchedOnAndOffInTheMenus) {
    write("local.ini", "");
    store.add("2$WAV@@14$Anna.WAV");
    openControl();
    const auto ofHost = [this] { return window().actions().constFirst(); };
    ASSERT_EQ(window().actions().size(), 1);
    EXPECT_FALSE(ofHost()->isChecked());
    searchAll();
    EXPECT_EQ(moment(), "") << "off until it is wanted";
    rightClick(results());
    click("Search in the catalogue");
    EXPECT_EQ(setting("Catalogue"), "own");
    openControl();
    EXPECT_TRUE(ofHost()->isChecked());
    speak("7");
    searchAll();
    EXPECT_NE(user->boxes.at(1).text.find("Es gibt keinen Katalog"), std::string::npos);

    closeControl();
    write("local.ini", sectionWith("Catalogue=" + place()));
    openControl();
    ofHost()->trigger();
    searchAll();
    EXPECT_EQ(user->boxes.size(), 1U) << "whether to list all";
    EXPECT_EQ(setting("Catalogue"), place()) << "which it is stays known";
    openControl();
    EXPECT_FALSE(ofHost()->isChecked());
}

TEST_F(CatalogueWindow, OffersTheValuesOfAllDictationsBesideThoseOfTheHits) {
    store.add("2$WAV@@14$Anna.WAV").add("2$WAV@@14$Berta.WAV");
    update();
    openControl(); // nothing was searched for yet
    criteria().setFocus();
    withDialog([&] { key(criteria(), Qt::Key_Insert); },
               [](QDialog& dialog) {
                   choose(child<QComboBox>(dialog, "cboField"), 5);
                   const auto& box = child<QLineEdit>(dialog, "txtValue(0)");
                   const QAbstractItemModel* values = box.completer()->model();
                   EXPECT_TRUE(QTest::qWaitFor([&] { return values->rowCount() == 2; }));
                   EXPECT_EQ(values->index(1, 0).data().toString(), QStringLiteral("Berta"));
               });
    store.add("2$WAV@@14$Bernd.WAV");
    fs::remove(store.native("2$WAV@@14$Berta.WAV"));
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    searchAfresh(); // nothing tells the catalogue of him
    auto& filter = widget<QLineEdit>("txtResultFilter");
    filter.setFocus();
    QTest::keyClicks(&filter, QStringLiteral("author:b"));
    waitFor([] { return offered() == "Bernd; Berta; "; });

    const modDictation::DictationList noHits;
    SeenValues none(noHits);
    CatalogueValues all(place(), store.directory(), none);
    waitFor([&] { return !all.lookOn(5); });
    EXPECT_EQ(all.found(5).size(), 2);
}

} // namespace
} // namespace ov
