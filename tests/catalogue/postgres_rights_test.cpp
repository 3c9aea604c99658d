// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "tests/catalogue/postgres_fixture.h"

#include <array>
#include <thread>

namespace ov::catalogue {

namespace {

std::string rolesScript() {
    std::ifstream script(OV_SOURCE_DIR "/data/catalogue-roles.sql");
    return {std::istreambuf_iterator<char>(script), {}};
}

// With roles as that makes them.
class Roles : public OnServer {
protected:
    explicit Roles(bool isUpdatedBefore = false) {
        if (isUpdatedBefore)
            update();
        EXPECT_EQ(run(rolesScript()), "");
        for (const auto& [name, group] :
             {std::pair{&watcher, "ovsearch_updater"}, std::pair{&anna, "ovsearch_reader"},
              std::pair{&berta, "ovsearch_reader"}, std::pair{&chief, "ovsearch_reader_of_all"}})
            EXPECT_EQ(run("CREATE ROLE " + *name + " LOGIN IN ROLE " + group), "");
        store.add("2$ROH@@11$Secret@@14$47.WAV"); // has texts in common with two wards
        role = watcher;
        update();
        EXPECT_EQ(letSee("ward"), "");
        EXPECT_EQ(call("let_see", berta, "other"), "");
    }

    std::string call(const std::string& function, const std::string& who, const std::string& name,
                     const std::string& as = "postgres") const {
        return run("SELECT ovsearch." + function + "('" + who + "', '" + store.native(name) + "')",
                   as);
    }
    std::string letSee(const std::string& name, const std::string& as = "postgres") const {
        return call("let_see", anna, name, as);
    }
    Texts askedAs(const std::string& who, const std::string& directory = {}) {
        role = who;
        return CatalogueTest::asked(store.directory(directory));
    }

    const std::string watcher = "watcher_" + database;
    const std::string anna = "anna_" + database;
    const std::string berta = "berta_" + database;
    const std::string chief = "chief_" + database;
};

class RolesMadeLater : public Roles {
protected:
    RolesMadeLater() : Roles(true) {}
};

} // namespace

TEST_F(RolesMadeLater, TakeOverWhatIsThere) {
    EXPECT_EQ(askedAs(anna), walked(store.directory("ward")));
    EXPECT_EQ(askedAs(chief), walked());
    EXPECT_EQ(run("SELECT count(*) FROM ovsearch.wards", anna), "1");
    fs::remove_all(store.folder() / "other");
    role = watcher;
    EXPECT_TRUE(update().status.ok());
    EXPECT_EQ(run(rolesScript()), "");
    EXPECT_EQ(askedAs(chief), walked());
}

TEST_F(OnServer, HasNoRolesInAStrangersSchema) {
    run("CREATE ROLE stranger; CREATE SCHEMA ovsearch AUTHORIZATION stranger");
    EXPECT_PRED2(holds, run(rolesScript()), "the schema ovsearch belongs to stranger");
    EXPECT_EQ(run("DROP OWNED BY stranger; DROP ROLE stranger"), "");
}

TEST_F(Roles, ShowAReaderHisWardsAlone) {
    EXPECT_EQ(run("SELECT string_agg(text, ',' ORDER BY ward, text) FROM ovsearch.texts"),
              "47,Secret,Secret,47,Known");
    role = chief;
    for (const char* const text : {"ecr", "now", "e"}) { // in one ward or in two
        Search what = allOf(store.directory());
        what.criteria = {
            {modDictation::field_id::subject, modDictation::operator_id::contains, text, ""}};
        EXPECT_EQ(asked(what), walked(what)) << text;
    }
    EXPECT_EQ(askedAs(chief), walked());
    EXPECT_EQ(askedAs(anna), walked(store.directory("ward")));
    EXPECT_PRED2(holds, askedAs(anna, "other").at(0), "is not in the catalogue");
    EXPECT_EQ(run("SELECT string_agg(text, ',') FROM ovsearch.texts", anna), "Secret");
    for (const auto& [rows, count] : {std::pair{"ovsearch.dictations", "2"},
                                      {"ovsearch.folders", "2"},
                                      {"ovsearch.stores", "1"},
                                      {"ovsearch.wards", "1"},
                                      {"ovsearch.ward_readers", "1"},
                                      {"ovsearch.texts WHERE text = 'Known'", "0"},
                                      {"ovsearch.texts WHERE upper LIKE '%NOW%'", "0"},
                                      {"pg_stats WHERE schemaname = 'ovsearch'", "0"}})
        EXPECT_EQ(run(std::string("SELECT count(*) FROM ") + rows, anna), count) << rows;
    std::vector<Store> stores;
    EXPECT_TRUE(open(Access::ask)->stores(stores).ok());
    EXPECT_TRUE(open(Access::ask)->count(stores.at(0)).ok());
    EXPECT_EQ(stores[0].dictations, 2);
}

// A function that costs nothing is asked first, unless it may not see what it is asked of.
TEST_F(Roles, TellNothingToAReadersOwnFunctions) {
    const std::string leak = "CREATE FUNCTION pg_temp.leak(t text) RETURNS bool LANGUAGE plpgsql"
                             " COST 0.0000001 AS $$ BEGIN IF t LIKE '%nown%' THEN RAISE 'leaked';"
                             " END IF; RETURN true; END $$;";
    const std::string texts = "SELECT count(*) FROM ovsearch.texts WHERE pg_temp.leak(text)";
    const std::string names = "SELECT count(*) FROM ovsearch.dictations WHERE"
                              " pg_temp.leak(encode(name, 'escape'))";
    EXPECT_EQ(run(leak + texts, anna), "1");
    EXPECT_EQ(run(leak + names, anna), "2");
    EXPECT_PRED2(holds, run(leak + texts, chief), "leaked");
    EXPECT_PRED2(holds, run(leak + names, chief), "leaked");
}

TEST_F(Roles, LeaveNothingBehindInAWardThatWasDividedButTellOfAGroup) {
    EXPECT_EQ(letSee("ward/ERL"), "");
    EXPECT_EQ(call("forbid", anna, "ward"), "");
    EXPECT_EQ(letSee("ward/ERL"), "");
    EXPECT_EQ(askedAs(anna), walked(store.directory("ward/ERL")));
    EXPECT_EQ(run("SELECT count(*) FROM ovsearch.texts", anna), "0");
    EXPECT_EQ(askedAs(chief), walked());
    const std::string group = "group_" + database;
    EXPECT_EQ(run("CREATE ROLE " + group + "; GRANT " + group + " TO " + anna), "");
    EXPECT_EQ(call("let_see", group, "ward/ERL"), "");
    EXPECT_PRED2(holds, call("forbid", anna, ""), "as a member of " + group);
    EXPECT_EQ(askedAs(anna), walked(store.directory("ward/ERL")));
    EXPECT_EQ(call("forbid", group, "ward"), "");
    EXPECT_PRED2(holds, askedAs(anna).at(0), "this one is empty");
}

TEST_F(Roles, TakeNothingThatIsNotThere) {
    const char* const wards = "SELECT count(*) FROM ovsearch.wards";
    const std::string before = run(wards);
    const std::array<std::string, 4> cases[] = {
        {"let_see", anna, "Nowhere at all", "is no directory of"},
        {"let_see", anna, "./ward", "is no directory of"},
        {"let_see", anna, "../nothing of ours", "is no directory of"},
        {"let_see", "nobody", "ward", "there is no role nobody"},
        {"forbid", anna, "X9", "is no directory of"},
        {"forbid", anna, "other", "was not let see"},
        {"forbid", berta, "ward/ERL", "was not let see"}};
    for (const auto& [function, who, name, said] : cases)
        EXPECT_PRED2(holds, call(function, who, name), said) << name;
    EXPECT_EQ(run(wards), before);
    EXPECT_EQ(askedAs(anna), walked(store.directory("ward")));
    EXPECT_EQ(askedAs(chief), walked());
}

// The one waits for the other, whichever is first.
TEST_F(Roles, AreGivenByTwoAtOnce) {
    store.add("a/b/one.WAV").add("a/two.WAV");
    update();
    std::thread first([this] {
        EXPECT_EQ(run("DO $$ BEGIN PERFORM ovsearch.let_see('" + anna + "', '" + store.native("a") +
                      "'); FOR i IN 1..1000 LOOP EXIT WHEN EXISTS (SELECT FROM pg_locks WHERE NOT"
                      " granted) OR EXISTS (SELECT FROM ovsearch.wards WHERE directory ="
                      " ovsearch.directory_text('" +
                      store.native("a/b") + "')); PERFORM pg_sleep(0.01); END LOOP; END $$"),
                  "");
    });
    EXPECT_EQ(call("let_see", berta, "a/b"), "");
    first.join();
    EXPECT_EQ(run("SELECT count(*) FROM ovsearch.folders f JOIN ovsearch.wards w ON w.id = f.ward"
                  " JOIN ovsearch.wards n ON length(n.directory) > length(w.directory)"
                  " AND substring(f.path FROM 1 FOR length(n.directory)) = n.directory"),
              "0");
    EXPECT_EQ(askedAs(berta, "a/b"), walked(store.directory("a/b")));
    EXPECT_EQ(askedAs(anna, "a"), walked(store.directory("a")));
}

TEST_F(Roles, StayWithTheNextVersion) {
    EXPECT_EQ(run("UPDATE ovsearch.about SET version = 3; ALTER TABLE ovsearch.stores DROP updater,"
                  " DROP mark; DROP FUNCTION ovsearch.updater_of, ovsearch.hold,"
                  " ovsearch.open_to_readers"),
              "");
    role = anna;
    EXPECT_PRED2(holds, refusal(place()), "the next update brings it up to date");
    role = watcher;
    EXPECT_TRUE(update().status.ok());
    EXPECT_EQ(askedAs(anna), walked(store.directory("ward")));
    EXPECT_EQ(askedAs(chief), walked());
    EXPECT_EQ(letSee("other"), "");
    EXPECT_EQ(run("SELECT count(*) FROM ovsearch.wards", anna), "2");
    role = watcher;
    const tests::TemporaryStore another;
    EXPECT_TRUE(update(another.directory()).status.ok());
    EXPECT_EQ(run("SELECT count(*) FROM pg_class WHERE relname LIKE 'older%'"), "0");
}

TEST_F(Roles, LetAReaderHoldUpNobody) {
    std::thread reader([this] {
        run("SELECT pg_advisory_lock(1331057509, n) FROM (SELECT id AS n FROM ovsearch.stores "
            "UNION ALL SELECT mark FROM"
            " ovsearch.stores) s; DO $$ BEGIN FOR i IN 1..1000 LOOP EXIT WHEN EXISTS (SELECT FROM"
            " pg_roles WHERE rolname = 'through_" +
                database + "'); PERFORM pg_sleep(0.01); END LOOP; END $$",
            anna);
    });
    while (run("SELECT count(*) FROM pg_locks WHERE classid = 1331057509") == "0")
        std::this_thread::yield();
    role = watcher;
    {
        const auto one = open(Access::update);
        EXPECT_TRUE(updateStore(*one, store.directory(), {}).status.ok());
        EXPECT_PRED2(holds, update().status.text(), "another program is updating it");
        EXPECT_PRED2(holds, letSee("ward/ERL"), "just being updated");
    }
    EXPECT_EQ(run("CREATE ROLE through_" + database), "");
    reader.join();
}

TEST_F(Roles, LetAReaderChangeNothingAndAStrangerAsk) {
    for (const char* const table :
         {"about", "stores", "wards", "ward_readers", "folders", "dictations", "texts"}) {
        const std::string name = std::string("ovsearch.") + table;
        EXPECT_PRED2(holds, run("DELETE FROM " + name, anna), "permission denied") << table;
        EXPECT_PRED2(holds, run("TRUNCATE " + name, chief), "permission denied") << table;
        EXPECT_PRED2(holds, run("INSERT INTO " + name + " DEFAULT VALUES", anna),
                     "permission denied")
            << table;
    }
    EXPECT_PRED2(holds, letSee("other", anna), "permission denied");
    role = anna;
    EXPECT_PRED2(holds, update().status.text(), "your role may not do that");
    EXPECT_EQ(askedAs(chief), walked());
    for (const auto& [name, rights] :
         {std::pair{"nobody_", ""}, std::pair{"late_", "NOINHERIT IN ROLE ovsearch_reader"}}) {
        role = name + database;
        EXPECT_EQ(run("CREATE ROLE " + role + " LOGIN " + rights), "");
        EXPECT_PRED2(holds, refusal(place()), "ask whoever runs the server for ovsearch_reader");
    }
    EXPECT_PRED2(holds, refusal(place(), Access::update), "for ovsearch_updater");
}

} // namespace ov::catalogue
