// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "sound/wave_control.h"
#include "tests/control/control_fixture.h"
#include "tests/playback/panel/bus/bus_fixture.h"

namespace ov {
namespace {

// The whole control, with a dictation each of Anna, Berta and Carla.
class ControlOnBus : public PlayerClient<ControlTest> {
protected:
    void SetUp() override {
        OnBus::SetUp();
        for (const char* author : {"Anna", "Berta", "Carla"})
            writeWave(store.native(std::string("2$WAV@@14$") + author + ".WAV"), {},
                      sweep(8000, 800000));
        write("Searches/Bertas.search", "name=Bertas\nauthor contains Berta\n");
    }
    void open() {
        openAndSearch();
        sortBy(5);
        waitFor([this] { return isKnown(); });
    }
    std::string search(const char* name) { return error(own, "Search", {QLatin1String(name)}); }
    void waitUntilPlays(const char* author) {
        waitFor([&] {
            return widget<QToolButton>("cmdPlayedDictation").accessibleName() ==
                   QLatin1String(author);
        });
    }

    const Environment silent_{"SDL_AUDIODRIVER", "dummy"};
    ScriptedMedia media_;
};

TEST_F(ControlOnBus, PlaysTheRowsBesideTheOneThatPlays) {
    open();
    EXPECT_EQ(columnTexts(5), "Anna; Berta; Carla; ");
    results().selectRow(0);
    EXPECT_TRUE(is("CanGoNext") && !is("CanGoPrevious"));
    call(own, "Next");
    waitUntilPlays("Berta");
    EXPECT_TRUE(is("CanGoNext") && is("CanGoPrevious"));
    EXPECT_EQ(selectedRows(), "-*-");
    results().selectRow(0);
    call(own, "Next");
    waitUntilPlays("Carla");
    EXPECT_TRUE(!is("CanGoNext") && is("CanGoPrevious"));
    EXPECT_EQ(error(own, "Next"), "");
    call(own, "Previous");
    waitUntilPlays("Berta");
}

TEST_F(ControlOnBus, SearchesByName) {
    open();
    EXPECT_EQ(call(own, "SavedSearches").arguments().value(0).toStringList(),
              QStringList(QStringLiteral("Bertas")));
    EXPECT_EQ(search("Annas"), "org.orvanta.OVSearch.Error.NotFound");
    EXPECT_EQ(search("Bertas"), "");
    waitFor([this] { return columnTexts(5) == "Berta; "; });
    EXPECT_EQ(line(), "Berta");
    withDialog([this] { press("cmdSearchKriteriaOptions(0)"); },
               [this](QDialog& /*editor*/) {
                   EXPECT_EQ(search("Bertas"), "org.orvanta.OVSearch.Error.Busy");
                   EXPECT_EQ(error(own, "SavedSearches"), "");
               });
    closeControl();
    waitFor([this] { return !isKnown(); });
}

TEST_F(ControlOnBus, SearchesACatalogueByNameWithoutTheStore) {
    write("local.ini", "[OVSearch.ctrlOVSearch]\r\nCatalogue=own\r\n");
    host().answers["PI_GetDirectory(204)"] = store.directory("away");
    openControl();
    waitFor([this] { return isKnown(); });
    EXPECT_EQ(search("Bertas"), "");
    waitFor([this] { return !user->boxes.empty(); });
    EXPECT_EQ(user->boxes.at(0).text.find("There is no catalogue"), 0U) << user->boxes[0].text;
}

TEST_F(ControlOnBus, StaysAwayWhereThatIsWanted) {
    write("local.ini", "[OVSearch.ctrlOVSearch]\r\nPlayerOnBus=0\r\n");
    openAndSearch();
    PlayerPanel later(nullptr);
    const auto laterOnBus = makePlayerBus(later, {});
    waitFor([this] { return isKnown(); });
    EXPECT_EQ(instances(), 1);
}

TEST_F(ControlOnBus, TakesNothingFromWhatTheUserAsksForMeanwhile) {
    open();
    search("Bertas");
    waitFor([this] { return columnTexts(5) == "Berta; "; });
    criteria().topLevelItem(0)->setSelected(true);
    inSearch([this] { tick(0, false); },
             [this] {
                 button("cmdSearchKriteriaOptions(2)").click();
                 EXPECT_EQ(error(own, "SavedSearches"), "");
                 EXPECT_EQ(search("Bertas"), "org.orvanta.OVSearch.Error.Busy");
             });
    QCoreApplication::processEvents();
    EXPECT_EQ(criteria().topLevelItemCount(), 0) << "it was deleted";
}

TEST_F(ControlOnBus, KeepsTheLastOfManyVolumesAlsoAtAnEndSoonAfter) {
    open();
    for (const double volume : {0.1, 0.2, 0.25})
        EXPECT_EQ(set("Volume", volume), "");
    closeControl();
    EXPECT_EQ(setting("PlayerVolume"), "16384");
    sound::WaveControl::instance().setVolume(sound::fullVolume); // one for the process
}

} // namespace
} // namespace ov
