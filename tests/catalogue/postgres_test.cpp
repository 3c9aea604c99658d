// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "tests/catalogue/postgres_fixture.h"

#include <array>
#include <thread>
#include <vector>

namespace ov::catalogue {

INSTANTIATE_TEST_SUITE_P(In, StoreUpdate,
                         ::testing::Values(Home{"ADatabase", [] { return placeOnServer(""); }}),
                         ::testing::PrintToStringParamName());

TEST_F(OnServer, TakesTheFirstUpdatesOfSeveralStoresAtOnce) {
    std::array<tests::TemporaryStore, 4> others;
    std::vector<std::thread> updates;
    for (tests::TemporaryStore& other : others)
        updates.emplace_back([&] {
            other.add("one.WAV");
            const UpdateReport report = update(other.directory());
            EXPECT_TRUE(report.status.ok()) << report.status.description();
            EXPECT_TRUE(report.untidy.ok()) << report.untidy.description();
        });
    for (std::thread& one : updates)
        one.join();
}

TEST_F(OnServer, ContainsAsWellWithoutTrigrams) {
    update();
    Search what = allOf(store.directory());
    what.criteria = {
        {modDictation::field_id::subject, modDictation::operator_id::contains, "ecr", ""}};
    const Texts expected = {store.directory("ward") + "2$ROH@@11$Secret.WAV"};
    EXPECT_EQ(asked(what), expected);
    EXPECT_EQ(run("SELECT to_regclass('ovsearch.texts_by_trigram') IS NULL"), "f");
    EXPECT_EQ(run("DROP EXTENSION pg_trgm CASCADE"), "");
    EXPECT_EQ(asked(what), expected);
}

// Of so many texts that they are not looked up before.
TEST_F(OnServer, FindsWhatManyTextsContain) {
    addMany(1500);
    update();
    Search what = allOf(store.directory());
    for (const auto operatorId :
         {modDictation::operator_id::contains, modDictation::operator_id::containsNot})
        for (const char* const text : {"1x", "xx"}) {
            what.criteria = {{modDictation::field_id::subject, operatorId, text, ""}};
            EXPECT_EQ(asked(what), walked(what)) << text;
        }
}

TEST_F(OnServer, HasAnIndexOfPathsOfAnyLength) {
    std::mt19937 random(7); // nothing that could be compressed
    std::string deep;
    for (int i = 0; i < 3000; ++i)
        deep.push_back(i % 200 == 199 ? '/' : static_cast<char>('a' + random() % 26));
    store.add(deep + "/deepest.WAV").add("ward/x/a.WAV");
    EXPECT_TRUE(update().untidy.ok());
    EXPECT_EQ(run("SELECT to_regclass('ovsearch.folders_by_path') IS NULL"), "f");
    for (const std::string& folder : {std::string("ward"), deep.substr(0, 199), deep})
        EXPECT_EQ(asked(store.directory(folder)), walked(store.directory(folder)));
}

TEST_F(OnServer, TakesNoTextThatWasUndone) {
    const auto catalogue = open(Access::update);
    Store made{0, store.directory()};
    EXPECT_TRUE(catalogue->putStore(made).ok());
    Folder folder;
    folder.path = made.root;
    EXPECT_TRUE(catalogue->putFolder(made.id, folder).ok());
    const auto numberOf = [&](const char* text) {
        KeptValues values;
        values.numbers[*columnOfField(modDictation::field_id::subject)] =
            catalogue->numberOfText(folder.ward, modDictation::field_id::subject, text, text);
        return values;
    };
    const KeptValues undone = numberOf("A");
    catalogue->rollBack();
    EXPECT_TRUE(catalogue->putFolder(made.id, folder).ok());
    EXPECT_TRUE(catalogue->addDictation(folder.id, 0, "b.WAV", numberOf("B")).ok());
    EXPECT_TRUE(catalogue->commit().ok());
    EXPECT_TRUE(catalogue->addDictation(folder.id, 1, "a.WAV", undone).ok());
    EXPECT_PRED2(holds, catalogue->commit().text(), "a text that was undone");
    EXPECT_EQ(run("SELECT string_agg(text, ',') FROM ovsearch.texts"), "B");
    EXPECT_EQ(run("SELECT count(*) FROM ovsearch.dictations"), "1");
}

TEST_F(OnServer, ForgetsTextsThatNothingHasAnyMore) {
    update();
    const char* const texts = "SELECT string_agg(text, ',' ORDER BY text) FROM ovsearch.texts";
    EXPECT_EQ(run(texts), "47,Known,Secret");
    fs::remove(store.folder() / "ward/2$ROH@@11$Secret.WAV");
    update();
    EXPECT_EQ(run(texts), "47,Known");
    EXPECT_EQ(asked(), walked());
    const tests::TemporaryStore other;
    std::ofstream(other.folder() / "2$WAV@@11$Known.WAV");
    update(other.directory());
    EXPECT_EQ(run(texts), "47,Known,Known");
    forget();
    EXPECT_EQ(run(texts), "Known") << "with its store";
}

TEST_F(OnServer, EndsWhenTheTakerOrSomebodyElseDoes) {
    addMany(3000);
    update();
    const auto catalogue = open(Access::ask);
    Store made = known();
    Search what = allOf(store.directory());
    what.limit = 7;
    SearchReport report;
    EXPECT_EQ(asked(*catalogue, what, report).size(), 7U);
    what.limit = 999999;
    std::stop_source stop;
    modDictation::SearchMeans means{.stop = stop.get_token(),
                                    .watch = [&](const SearchReport&) { stop.request_stop(); }};
    modDictation::DictationList hits;
    report = {};
    EXPECT_TRUE(search(*catalogue, made, what, hits, means, report).ok());
    EXPECT_TRUE(report.stopped);
    EXPECT_LT(hits.size(), 3000);
    // Where the server takes its time, too; whoever writes fails then.
    run("ALTER TABLE ovsearch.folders RENAME TO kept; CREATE VIEW ovsearch.folders AS"
        " SELECT k.* FROM ovsearch.kept k, pg_sleep(100)");
    stop = std::stop_source();
    means.stop = stop.get_token();
    report = {};
    EXPECT_TRUE(search(*catalogue, made, what, hits, means, report).ok());
    EXPECT_TRUE(report.stopped);
    const auto writing = open(Access::update);
    const Stoppable stoppable(*writing, [] { return true; });
    EXPECT_TRUE(Catalogue::isStopped(writing->count(made)));
}

// It does not take either that something is cancelled.
TEST_F(OnServer, IsLeftWhenItHangs) {
    update();
    Store made = known();
    const auto asking = open(Access::ask);
    const auto writing = open(Access::update);
    run("ALTER TABLE ovsearch.folders RENAME TO kept; CREATE VIEW ovsearch.folders AS"
        " SELECT k.* FROM ovsearch.kept k, pg_sleep(100)");
    server.hang(true);
    for (const auto* const catalogue : {&asking, &writing}) {
        const Stoppable stoppable(**catalogue, [] { return true; });
        const platform::Status status = (*catalogue)->count(made);
        EXPECT_EQ(Catalogue::isStopped(status), catalogue == &writing) << status.description();
        EXPECT_EQ(status.ok(), catalogue == &asking);
    }
    server.hang(false);
}

TEST_F(OnServer, SaysThatTheServerWasLostAndFindsItAgain) {
    addMany(2000);
    update();
    const auto catalogue = open(Access::ask);
    int taken = 0;
    const platform::Status status =
        catalogue->candidates(known().id, {store.directory(), -1, true, {}, true},
                              [&](const modDictation::Dictation&, std::int64_t) {
                                  if (++taken == 1)
                                      server.crash();
                                  return true;
                              });
    EXPECT_PRED2(holds, status.description(), "the connection to the server was lost");
    EXPECT_LT(taken, 2000);
    EXPECT_PRED2(holds, refusal(place()), "the server cannot be reached");
    server.start();
    SearchReport found;
    EXPECT_EQ(asked(*open(Access::ask), allOf(store.directory()), found), walked());
    UpdateMeans means;
    addMany(100, "more/");
    means.batch = 10;
    means.watch = [&](const UpdateReport& now) {
        if (now.folders == 2)
            server.crash();
    };
    EXPECT_PRED2(holds, update(store.directory(), means).status.text(), "was lost");
    server.start();
    EXPECT_TRUE(update().status.ok());
    EXPECT_EQ(asked(), walked());
}

TEST_F(OnServer, LosesNothingOnAFullDisk) {
    expectNothingLost(3000, [this] {
        server.limitFiles(1'200'000);
        const platform::Status status = update().status;
        server.limitFiles(RLIM_INFINITY);
        return !status.ok();
    });
}

TEST_F(OnServer, IsRefusedWhenItIsNoneOfThisVersion) {
    EXPECT_PRED2(holds, refusal(place()), "has no catalogue; \"ovsearch catalogue update");
    update();
    run("UPDATE ovsearch.about SET version = 99");
    EXPECT_PRED2(holds, refusal(place(), Access::update), "of a newer version of OVSearch");
    run("UPDATE ovsearch.about SET version = 0");
    EXPECT_PRED2(holds, refusal(place()), "the database of another program");
    const std::string latin = server.newDatabase("ENCODING 'LATIN1' LOCALE 'C'");
    EXPECT_PRED2(holds, refusal(server.place(latin), Access::update), "LATIN1");
}

} // namespace ov::catalogue
