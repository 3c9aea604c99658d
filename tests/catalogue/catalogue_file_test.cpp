// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "tests/catalogue/store_update_fixture.h"

#include <sqlite3.h>

namespace ov::catalogue {

namespace {

class CatalogueFile : public OneStore {
protected:
    CatalogueFile() { store.add("one.WAV").add("ward/two.WAV").add("ward/ERL/three.WAV"); }

    // Of the catalogue's file and those beside it.
    std::string bytes() const {
        return read("catalogue.db") + read("catalogue.db-wal") + read("catalogue.db-shm");
    }
    // Writes a number into the head of the file.
    void setHead(std::streamoff offset, char value) const {
        std::fstream file(platform::toNativePath(place()),
                          std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(offset);
        file.put(value);
    }
    std::string refusal() const { return OneStore::refusal(place()); }
};

} // namespace

TEST_F(CatalogueFile, LeavesNothingOfWhatWasRemoved) {
    store.add("2$WAV@@14$Nevermore.WAV").add("2$WAV@@11$Lenore.WAV").add("x/2$WAV@@14$Pallas.WAV");
    store.add("2$WAV@@14$Stays.WAV");
    update();
    const auto other = open(Access::ask);
    SearchReport report;
    EXPECT_EQ(asked(*other, allOf(store.directory()), report), walked());
    for (const char* const name : {"Nevermore", "NEVERMORE", "LENORE", "PALLAS"})
        EXPECT_PRED2(holds, bytes(), name);
    fs::remove(store.folder() / "2$WAV@@14$Nevermore.WAV");
    fs::rename(store.folder() / "2$WAV@@11$Lenore.WAV", store.folder() / "2$WAV@@11$x.WAV");
    fs::remove_all(store.folder() / "x");
    EXPECT_TRUE(update().status.ok());
    for (const char* const name :
         {"Nevermore", "NEVERMORE", "Lenore", "LENORE", "Pallas", "PALLAS"})
        EXPECT_FALSE(holds(bytes(), name)) << name;
    EXPECT_EQ(asked(), walked());
    EXPECT_PRED2(holds, bytes(), "STAYS");
    forget(); // the whole store
    for (const char* const name : {"Stays", "STAYS"})
        EXPECT_FALSE(holds(bytes(), name)) << name;
}

TEST_F(CatalogueFile, MakesWhatLacks) {
    update();
    const auto runSql = [&](const char* sql) {
        sqlite3* database = nullptr;
        EXPECT_EQ(sqlite3_open(platform::toNativePath(place()).c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    };
    EXPECT_PRED2(holds, read("catalogue.db"), "CREATE INDEX dictations_by_author");
    runSql("DROP INDEX dictations_by_author");
    EXPECT_FALSE(holds(read("catalogue.db"), "CREATE INDEX dictations_by_author"));
    updateLater();
    EXPECT_EQ(updateLater().written, 0);
    EXPECT_PRED2(holds, read("catalogue.db"), "CREATE INDEX dictations_by_author");
}

TEST_F(CatalogueFile, StopsInTheMiddleOfAStatement) {
    addMany(3000);
    update();
    const auto catalogue = open(Access::ask);
    const auto id = known().id;
    const Question question{store.directory(), -1, true, {}};
    int told = 0;
    const Catalogue::Taker take = [&](const modDictation::Dictation&, std::int64_t) {
        return ++told > 0;
    };
    {
        const Stoppable stoppable(*catalogue, [] { return true; });
        EXPECT_TRUE(catalogue->counts(id, question, std::nullopt, take).ok());
        EXPECT_EQ(told, 0);
    }
    EXPECT_TRUE(catalogue->counts(id, question, std::nullopt, take).ok());
    EXPECT_EQ(told, 1);
}

TEST_F(CatalogueFile, IsForItsOwnerAlone) {
    update();
    const fs::path made = folder() / "catalogue.db";
    fs::permissions(made, fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
    asked();
    EXPECT_EQ(fs::status(made).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    update();
    for (const auto& file : fs::directory_iterator(folder()))
        EXPECT_EQ(file.status().permissions() & (fs::perms::group_all | fs::perms::others_all),
                  fs::perms::none)
            << file.path();
    if (geteuid() == 0 && chown(made.c_str(), tests::nobody, tests::nobody) == 0) {
        EXPECT_PRED2(holds, refusal(), "is somebody else's") << "also to who may do anything";
    }
}

TEST_F(CatalogueFile, LeavesWhatIsNoneAsItIs) {
    write("letter.txt", "Dear Anna");
    fs::permissions(folder() / "letter.txt", fs::perms::group_read, fs::perm_options::add);
    const auto before = fs::status(folder() / "letter.txt").permissions();
    fs::create_symlink("letter.txt", folder() / "link");
    for (const char* const name : {"letter.txt", "link"})
        for (const Access access : {Access::ask, Access::update})
            EXPECT_FALSE(holds(OneStore::refusal(path(name), access), "remove")) << name;
    EXPECT_EQ(fs::status(folder() / "letter.txt").permissions(), before);
}

// A mistyped address is neither made a file nor repeated: it may hold a password.
TEST_F(CatalogueFile, HasNoNameThatResemblesAnAddress) {
    for (const char* const typed :
         {"Postgresql://u:hush@h/db", "POSTGRES://u:hush@h/db", "postgresql+ssl://u:hush@h/db",
          "host=h password=hush", "x PassWord = hush", "Service=x password=hush"}) {
        EXPECT_TRUE(isServer(typed)) << typed;
        const std::string said = OneStore::refusal(typed, Access::update);
        EXPECT_PRED2(holds, said, "write \"postgresql://HOST/DATABASE\"");
        EXPECT_FALSE(holds(said, "hush")) << said;
    }
    EXPECT_FALSE(isServer("\\x\\user=u\\my host.db"));
}

TEST_F(CatalogueFile, IsRefusedWhenItIsNoneOfThisVersion) {
    constexpr std::streamoff version = 63; // its last byte
    constexpr std::streamoff application = 71;
    update();
    setHead(version, 99);
    EXPECT_PRED2(holds, refusal(), "of a newer version of OVSearch");
    setHead(version, 1);
    EXPECT_PRED2(holds, refusal(), "of an older version of OVSearch");
    setHead(version, 2);
    EXPECT_EQ(asked(), walked());
    setHead(application, 1);
    EXPECT_PRED2(holds, refusal(), "the database of another program");
    write("catalogue.db", "no database at all, whatever it is called");
    EXPECT_PRED2(holds, refusal(), "is no catalogue");
}

TEST_F(CatalogueFile, SurvivesDamage) {
    update();
    const std::string whole = read("catalogue.db");
    std::mt19937 random(7);
    for (int i = 0; i < 60; ++i) {
        std::string damaged = whole;
        for (int k = 0; k < 20; ++k)
            damaged[100 + random() % (damaged.size() - 100)] = static_cast<char>(random());
        write("catalogue.db", damaged.substr(0, i % 3 == 0 ? damaged.size() / 2 : damaged.size()));
        platform::Status status;
        if (const auto catalogue = openCatalogue(place(), Access::ask, status)) {
            SearchReport report;
            asked(*catalogue, allOf(store.directory()), report);
        } else {
            EXPECT_FALSE(status.text().empty());
        }
    }
}

TEST_F(CatalogueFile, LosesNothingOnAFullDisk) {
    expectNothingLost(2000, [this] {
        return tests::isTrueWithFileLimit(200'000, [&] { return !update().status.ok(); });
    });
}

} // namespace ov::catalogue
