// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// `ovsearch find --watch`, which ends only when it is told to.

#include "tests/cli/cli_fixture.h"
#include "tests/slow_store.h"

namespace ov::cli {
namespace {

class Watch : public Cli {
protected:
    // Names of the dictations, sorted, each as often as it was printed.
    static Texts names(const ProgramResult& result) {
        Texts lines = split(result.output, '\n');
        for (std::string& line : lines)
            line = line.substr(line.find_last_of('/') + 1);
        std::sort(lines.begin(), lines.end());
        return lines;
    }
    ProgramResult watched(const std::string& folder, const ProgramRun& how) const {
        return run({"find", folder, "--watch", "--format", "paths"}, how);
    }
    const Texts paths_ = {"--watch", "--format", "paths", "-c", "author is-not-empty"};
};

TEST_F(Watch, PrintsOnceWhatArrives) {
    store_.add("2$ROH@@14$first.WAV");
    settings_.add("2$ROH@@14$moved.WAV");
    std::ofstream unfinished;
    ProgramRun how;
    how.steps = {{"first.WAV\n", [&] { store_.add("2$ROH@@14$second.WAV", "a"); }},
                 {"second.WAV\n",
                  [&] { // from now on it is told by the system
                      unfinished.open(store_.native("2$ROH@@14$unfinished.WAV"));
                      unfinished << "half" << std::flush;
                      store_.add("2$ROH@@14$second.WAV", "again").add("2$ROH@@14$notes.txt");
                      store_.add("no author.WAV").add("_hidden/2$ROH@@14$hidden.WAV");
                      fs::rename(settings_.native("2$ROH@@14$moved.WAV"),
                                 store_.native("2$ROH@@14$moved.WAV"));
                      store_.addLink("2$ROH@@14$linked.WAV", "no author.WAV");
                      store_.add("new/deep/2$ROH@@14$inside.WAV");
                  }},
                 {"inside.WAV\n", [&] { store_.add("new/deep/2$ROH@@14$last.WAV"); }}};
    how.interruptAt = "last.WAV\n";
    const ProgramResult result = find(paths_, how);
    EXPECT_EQ(result.exitCode, -SIGINT);
    EXPECT_EQ(names(result),
              (Texts{"2$ROH@@14$first.WAV", "2$ROH@@14$inside.WAV", "2$ROH@@14$last.WAV",
                     "2$ROH@@14$linked.WAV", "2$ROH@@14$moved.WAV", "2$ROH@@14$second.WAV"}));
    EXPECT_EQ(result.errors, "");
}

TEST_F(Watch, RunsCommandsAndEndsAtTheLimit) {
    store_.add("2$ROH@@14$first.WAV");
    const ProgramRun how{.steps = {{"first\n", [&] { store_.add("a/2$ROH@@14$second.WAV"); }}}};
    const ProgramResult result = find({"--watch", "--limit", "2", "-X", "echo", "{/.}", ";"}, how);
    EXPECT_EQ(result.output, "2$ROH@@14$first\n2$ROH@@14$second\n");
    EXPECT_EQ(result.exitCode, 0);
}

TEST_F(Watch, TakesWhatArrivesForNewer) {
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (TemporaryStore* place : {&store_, &settings_})
        for (const char* name : {"old.WAV", "written.WAV", "moved.WAV"})
            fs::last_write_time(place->add(name).native(name), old);
    fs::remove(store_.native("moved.WAV"));
    settings_.add("mark");
    fs::last_write_time(settings_.native("mark"), old + std::chrono::minutes(1));
    store_.add("new.WAV");
    ProgramRun how;
    how.steps = {{"new.WAV\n", [&] { store_.add("deep/first.WAV"); }},
                 {"first.WAV\n",
                  [&] { fs::rename(settings_.native("moved.WAV"), store_.native("moved.WAV")); }},
                 {"moved.WAV\n", [&] { store_.add("written.WAV", "again"); }}};
    how.interruptAt = "written.WAV\n";
    EXPECT_EQ(
        names(find({"--watch", "--newer", settings_.native("mark"), "--format", "paths"}, how)),
        (Texts{"first.WAV", "moved.WAV", "new.WAV", "written.WAV"}));
}

TEST_F(Watch, TellsOfArrivalsThatItLeavesOut) {
    store_.add("2$ROH@@14$first.WAV").add("a/b/early.WAV");
    ProgramRun how;
    how.steps = {{"first.WAV", [&] { store_.add("a/c/late.WAV"); }},
                 {"2 folders below --max-depth", [&] { store_.add("back\\slash.WAV"); }}};
    how.interruptAt = "1 name with a backslash";
    EXPECT_EQ(find(plus(paths_, {"--max-depth", "1"}), how).exitCode, -SIGINT);
}

// As on a file server, where others write: a table goes on too.
TEST_F(Watch, LooksAgainWhereTheSystemDoesNotTell) {
    store_.add("2$ROH@@14$first.WAV");
    tests::SlowStore server(store_);
    if (!server.isMounted())
        GTEST_SKIP() << tests::SlowStore::why;
    const ProgramRun how{.steps = {{"first\n", [&] { store_.add("2$ROH@@14$second.WAV"); }}},
                         .interruptAt = "second\n"};
    const ProgramResult result =
        run({"find", platform::toNativePath(server.directory()), "--watch", "--columns", "author"},
            how);
    EXPECT_EQ(result.output, "Author\nfirst\nsecond\n");
    EXPECT_PRED2(holds, result.errors, "looks through the store every 3 seconds");
}

// The one that was renamed is not searched any more, the other one is.
TEST_F(Watch, FollowsThePathOfTheStore) {
    store_.add("store/2$ROH@@14$first.WAV").add("other/readme.txt");
    ProgramRun how;
    how.steps = {{"first.WAV\n", [&] { store_.add("store/2$ROH@@14$second.WAV"); }},
                 {"second.WAV\n", [&] {
                      // At once: between two steps the program would find no store and end.
                      ASSERT_EQ(::renameat2(AT_FDCWD, store_.native("other").c_str(), AT_FDCWD,
                                            store_.native("store").c_str(), RENAME_EXCHANGE),
                                0);
                      store_.add("store/2$ROH@@14$third.WAV");
                  }}};
    how.interruptAt = "third.WAV\n";
    const ProgramResult result = watched(store_.native("store"), how);
    EXPECT_EQ(result.exitCode, -SIGINT);
    EXPECT_EQ(result.errors, "");
}

TEST_F(Watch, EndsWithTheStore) {
    store_.add("store/2$ROH@@14$first.WAV").add("store/closed/x.WAV");
    fs::permissions(store_.native("store/closed"), fs::perms::none);
    ProgramRun how{.steps = {{"first.WAV\n",
                              [&] { fs::rename(store_.native("store"), store_.native("moved")); }}},
                   .withRights = false};
    const ProgramResult result = watched(store_.native("store"), how);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_PRED2(holds, result.errors, store_.native("store") + "/: ");
    fs::permissions(store_.native("moved/closed"), fs::perms::owner_all);
}

} // namespace
} // namespace ov::cli
