// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "sound/wave_control.h"
#include "tests/control/control_fixture.h"
#include "tests/scripted_media.h"
#include "tests/session_bus.h"
#include "tests/wave_files.h"

namespace ov {
namespace {

// The whole control, with a dictation each of Anna, Berta and Carla.
class ControlOnBus : public OnBus<ControlTest> {
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
    bool isKnown() { return client_->names().contains(QLatin1String("org.orvanta.OVSearch")); }
    QDBusMessage call(const char* interface, const char* method, const QVariantList& arguments) {
        return client_->call("org.orvanta.OVSearch", "/org/mpris/MediaPlayer2", interface, method,
                             arguments);
    }
    QDBusMessage ask(const char* method, const QVariantList& arguments = {}) {
        return call("org.orvanta.OVSearch.Player1", method, arguments);
    }
    QDBusMessage search(const char* name) { return ask("Search", {QLatin1String(name)}); }
    bool can(const char* what) {
        return call("org.freedesktop.DBus.Properties", "Get",
                    {QStringLiteral("org.mpris.MediaPlayer2.Player"), QLatin1String(what)})
            .arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant()
            .toBool();
    }
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
    EXPECT_TRUE(can("CanGoNext") && !can("CanGoPrevious"));
    ask("Next");
    waitUntilPlays("Berta");
    EXPECT_TRUE(can("CanGoNext") && can("CanGoPrevious"));
    EXPECT_EQ(selectedRows(), "-*-");
    results().selectRow(0);
    ask("Next");
    waitUntilPlays("Carla");
    EXPECT_TRUE(!can("CanGoNext") && can("CanGoPrevious"));
    EXPECT_EQ(ask("Next").errorName(), QString());
    ask("Previous");
    waitUntilPlays("Berta");
}

TEST_F(ControlOnBus, SearchesByName) {
    open();
    EXPECT_EQ(ask("SavedSearches").arguments().value(0).toStringList(),
              QStringList(QStringLiteral("Bertas")));
    EXPECT_EQ(search("Annas").errorName(), QStringLiteral("org.orvanta.OVSearch.Error.NotFound"));
    EXPECT_EQ(search("Bertas").errorName(), QString());
    waitFor([this] { return columnTexts(5) == "Berta; "; });
    EXPECT_EQ(line(), "Berta");
    withDialog([this] { press("cmdSearchKriteriaOptions(0)"); },
               [this](QDialog& /*editor*/) {
                   EXPECT_EQ(search("Bertas").errorName(),
                             QStringLiteral("org.orvanta.OVSearch.Error.Busy"));
                   EXPECT_EQ(ask("SavedSearches").errorName(), QString());
               });
    closeControl();
    waitFor([this] { return !isKnown(); });
}

TEST_F(ControlOnBus, SearchesACatalogueByNameWithoutTheStore) {
    write("local.ini", "[OVSearch.ctrlOVSearch]\r\nCatalogue=own\r\n");
    host().answers["PI_GetDirectory(204)"] = store.directory("away");
    openControl();
    waitFor([this] { return isKnown(); });
    EXPECT_EQ(search("Bertas").errorName(), QString());
    waitFor([this] { return !user->boxes.empty(); });
    EXPECT_EQ(user->boxes.at(0).text.find("There is no catalogue"), 0U) << user->boxes[0].text;
}

TEST_F(ControlOnBus, StaysAwayWhereThatIsWanted) {
    write("local.ini", "[OVSearch.ctrlOVSearch]\r\nPlayerOnBus=0\r\n");
    openAndSearch();
    PlayerPanel later(nullptr);
    const auto laterOnBus = makePlayerBus(later, {});
    waitFor([this] { return isKnown(); });
    EXPECT_EQ(client_->names().filter(QLatin1String("OVSearch.instance")).size(), 1);
}

TEST_F(ControlOnBus, TakesNothingFromWhatTheUserAsksForMeanwhile) {
    open();
    search("Bertas");
    waitFor([this] { return columnTexts(5) == "Berta; "; });
    const auto follow = [this] {
        criteria().topLevelItem(0)->setCheckState(0, Qt::Unchecked);
        QCoreApplication::processEvents();
    };
    criteria().topLevelItem(0)->setSelected(true);
    inSearch(follow, [this] {
        button("cmdSearchKriteriaOptions(2)").click();
        EXPECT_EQ(ask("SavedSearches").errorName(), QString());
        EXPECT_EQ(search("Bertas").errorName(), QStringLiteral("org.orvanta.OVSearch.Error.Busy"));
    });
    QCoreApplication::processEvents();
    EXPECT_EQ(criteria().topLevelItemCount(), 0) << "it was deleted";
}

TEST_F(ControlOnBus, KeepsTheLastOfManyVolumesAlsoAtAnEndSoonAfter) {
    open();
    for (const double volume : {0.1, 0.2, 0.25})
        call("org.freedesktop.DBus.Properties", "Set",
             {QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("Volume"),
              QVariant::fromValue(QDBusVariant(volume))});
    closeControl();
    EXPECT_EQ(setting("PlayerVolume"), "16384");
    sound::WaveControl::instance().setVolume(sound::fullVolume); // one for the process
}

} // namespace
} // namespace ov
