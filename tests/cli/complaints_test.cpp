// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/cli/cli_fixture.h"

// How a run ends: what is told to whoever typed something that cannot be done, and what a script
// learns of a search and of what it did not look at.

namespace ov::cli {
namespace {

using Complaints = std::vector<std::pair<Texts, std::string>>;

class CliComplaints : public Cli {
protected:
    CliComplaints() {
        addThree();
        settings_.add("notes.dat", "not a criterion\r\n");
    }
    void expectAll(const Complaints& complaints, int exitCode) const {
        for (const auto& [arguments, message] : complaints) {
            expectRefused(arguments, exitCode, message);
            EXPECT_EQ(split(run(arguments).errors, '\n').size(), 1U) << joined(arguments);
        }
    }
};

TEST_F(CliComplaints, UsageAndWhatWasMeant) {
    const std::string dictation = store_.native(highPriority);
    expectAll(
        {{{}, "say what to do: find, show, "},
         {{"fnd", root()}, "there is no command \"fnd\"; did you mean \"find\"?"},
         {{"serve"}, "no command \"serve\"; commands are find, show, "},
         {{"help", "finde"}, "no command \"finde\"; did you mean \"find\"?"},
         {{"find", root(), "--formt=csv"},
          "find has no option \"--formt\"; did you mean \"--format\"?"},
         {{"show", "--bogus"}, "show has no option \"--bogus\"; \"ovsearch help show\" tells"},
         {{"--limit=3", "find", root()}, "--limit belongs behind \"find\""},
         {{"find", root(), "--\x1B[31m"}, "--\\u001B[31m"},
         {{"show"}, "show: FILE is missing; \"ovsearch help show\" tells"},
         {{"find", root(), "--limit"}, "--limit needs a value behind it"},
         {{"find", root(), "--limit=1", "--limit=2"}, "--limit can be given only once"},
         {{"find", root(), "--quiet=x"}, "--quiet takes no value"},
         {{"fields", "--settings", dictation}, "is a file, no folder"},
         {{"demo", dictation}, "is a file, no folder"},
         {{"find", root(), "--format", "tabel"},
          "--format: \"tabel\" is none of table, csv, json, jsonl, paths; did you mean "
          "\"table\"?"},
         {{"find", root(), "--format", "csv", "--separator", "x"}, "\"x\" is none of comma, "},
         {{"find", root(), "--language", "fr"}, "\"fr\" is none of de, en"},
         {{"find", root(), "--columns", "author,shoe"}, "\"shoe\"; columns are: path, "},
         {{"find", root(), "--columns", "Autor"}, "\"Autor\"; did you mean \"author\"?"},
         {{"find", root(), "--sort", "shoe"}, "cannot sort by \"shoe\"; a KEY is one of: "},
         {{"find", root(), "--sort", "lenght:desc"}, "\"lenght\"; did you mean \"length\"?"},
         {{"find", root(), "--sort", "author:up"}, "say author, author:asc or author:desc"},
         {{"find", root(), "--limit", "many"}, "--limit: \"many\" is no whole number from 1 to"},
         {{"find", root(), "--limit", "010"}, "--limit: \"010\" is no whole number from 1 to"},
         {{"find", root(), "--limit", "0"}, "--limit: \"0\" is no whole number from 1 to"},
         {{"find", root(), "--max-depth", "-2"}, "--max-depth: \"-2\" is no whole number from -1"},
         {{"demo", root(), "--count", "-1"}, "--count: \"-1\" is no whole number from 0"},
         {{"demo", root(), "--seed", "4294967296"}, "from 0 to 4294967295"},
         {{"find", root(), "--count-by", "Path"}, "--count-by folder counts what lies in each"},
         {{"find", root(), "-0", "--format", "csv"}, "--format paths"},
         {{"find", root(), "--raw"}, "--raw goes with --format csv"},
         {{"find", root(), "--separator", ";"}, "--separator goes with --format csv"},
         {{"find", root(), "--explain", "--format", "csv"}, "--explain tells of a search in"},
         {{"find", root(), "--explain", "-x", "true"}, "--explain tells of a search in"},
         {{"export", root(), "l.csv"}, "is a folder; name the FILE to write first"}},
        2);
    for (const auto& [words, what] : std::initializer_list<std::pair<Texts, const char*>>{
             {{"find"}, "WORD"},
             {{"show"}, "FILE"},
             {{"play"}, "FILE"},
             {{"export"}, "FILE"},
             {{"catalogue", "update"}, "DIR"},
             {{"catalogue", "update", root(), "--to"}, "--to"},
             {{"find", "--catalogue"}, "--catalogue"},
             {{"find", "--newer"}, "--newer"},
             {{"find", "--root"}, "--root"},
             {{"find", "--criteria-file"}, "--criteria-file"},
             {{"fields", "--settings"}, "--settings"}}) {
        Texts empty = words;
        empty.emplace_back();
        expectRefused(empty, 2, std::string(what) + ": must not be empty");
    }
}

TEST_F(CliComplaints, FilesAndFoldersThatAreNotWhatTheyShouldBe) {
    const std::string missing = store_.native("missing");
    expectAll(
        {{{"find", missing}, "missing/: No such file"},
         {{"find", store_.native(highPriority)}, "is a file, and no folder to search"},
         {{"find"}, "DictationDir"},
         {{"find", root(), "--criteria-file", missing}, "missing: No such file"},
         {{"find", root(), "--criteria-file", root()}, "is a folder; name a file of criteria"},
         {{"show", missing}, "there is no such file"},
         {{"show", root()}, "is a folder; show takes dictations, find searches folders"},
         {{"show", store_.native("ward/ERL/notes.txt")}, "not a dictation"},
         {{"play", root()}, "is a folder; play takes sound files"},
         {{"demo", root()}, root()}},
        3);
    const std::string removed = "cd \"$1\"; rmdir \"$1\"; exec \"$0\" find . --count";
    const ProgramRun nowhere{.arguments = {"-c", removed, OV_SEARCH_PROGRAM, missing}};
    fs::create_directory(missing);
    EXPECT_EQ(tests::runProgram("/bin/sh", nowhere).exitCode, 3) << "not all below the root";
    expectRefused({"find", root(), "--criteria-file", settings_.native("notes.dat")}, 3,
                  "no criteria");
    EXPECT_EQ(foundFiles().size(), 3U); // demo touched nothing
}

TEST_F(CliComplaints, HelpIsTheSameEitherWay) {
    EXPECT_EQ(run({"help"}).output, run({"--help"}).output);
    EXPECT_EQ(run({"help", "find"}).output, run({"find", "--help"}).output);
    EXPECT_PRED2(holds, run({"help", "find"}).output, "--criteria-file");
}

class ExitCodes : public Cli {
protected:
    ExitCodes() {
        for (const char* name :
             {"all/2$ROH.WAV", "all/deep/er/2$ROH.WAV", "part/2$ROH.WAV", "part/closed/x.WAV",
              "part/odd/back\\slash.WAV", "part/odd/back\\dir/x.WAV", "part/deep/er/est/x.WAV"})
            store_.add(name);
        fs::permissions(store_.folder() / "part/closed", fs::perms::none);
        unprivileged_.withRights = false;
    }
    ~ExitCodes() override {
        fs::permissions(store_.folder() / "part/closed", fs::perms::owner_all);
    }
    void SetUp() override {
        if (geteuid() == 0 && prctl(PR_CAPBSET_READ, CAP_SETPCAP) != 1)
            GTEST_SKIP() << "this root cannot give up its rights";
    }

    ProgramRun unprivileged_;
};

TEST_F(ExitCodes, TellWhatWasLeftOut) {
    const std::string unread = "left out: 1 folder that cannot be read";
    const std::string odd = ", 2 names with a backslash";
    const std::string deep = "left out: 1 folder below --max-depth";
    const std::string limit = "the limit of 1 was reached, there may be more";
    const std::string old = settings_.add("old").native("old");
    fs::last_write_time(old, fs::file_time_type::clock::now() - std::chrono::hours(1));
    const std::string closed = store_.native("part/closed/x.WAV");
    // The root in the store, options, the exit code, and the summary without the program's name;
    // where it is empty nothing is said at all.
    const std::tuple<std::string, Texts, int, std::string> cases[] = {
        {"all", {"--strict"}, 0, ""},
        {"all", {"-c", "author is nobody"}, 1, ""},
        {"all", {"--limit", "1"}, 0, limit},
        {"all", {"--limit", "1", "--strict"}, 3, limit},
        {"all", {"--limit", "2"}, 0, ""},
        {"all", {"--limit", "1", "--strict", "--sort", "path"}, 3, limit},
        {"all", {"--limit", "2", "--strict", "--sort", "path"}, 0, ""},
        {"all", {"--limit", "2", "--newer", old}, 0, ""},
        {"all", {"--limit", "1", "--newer", old}, 0, limit},
        {"all", {"--newer", closed, "--explain"}, 3, "--newer: " + closed + ": Permission denied"},
        {"all", {"--max-depth", "0"}, 0, deep},
        {"all", {"--max-depth", "1", "-c", "status = MAI"}, 1, deep},
        {"part", {}, 0, unread + odd},
        {"part", {"--strict"}, 3, unread + odd},
        {"part", {"--explain"}, 0, unread + odd},
        {"part", {"--explain", "-c", "author is nobody"}, 3, unread + odd},
        {"all", {"--explain", "-c", "author is nobody"}, 0, ""},
        {"part", {"--no-messages", "-c", "status = MAI"}, 3, unread + odd},
        {"part", {"--max-depth", "2"}, 0, unread + ", 1 folder below --max-depth" + odd},
        {"part", {"--max-depth", "0"}, 0, "left out: 3 folders below --max-depth"},
        {"all", {"--quiet"}, 0, ""},
        {"all", {"--quiet", "-c", "author is nobody"}, 1, ""},
        {"part", {"--quiet", "--strict"}, 3, unread + odd},
        {"missing", {"--no-messages", "--quiet"}, 3, store_.native("missing") + "/: No such file"}};
    for (const auto& [root, options, exitCode, summary] : cases) {
        const Texts arguments = plus({"find", store_.native(root)}, options);
        const ProgramResult result = run(arguments, unprivileged_);
        EXPECT_EQ(result.exitCode, exitCode) << joined(arguments) << result.errors;
        const Texts told = split(result.errors, '\n');
        const std::string last = told.empty() ? "" : told.back();
        EXPECT_TRUE(summary.empty() ? last.empty() : last.starts_with("ovsearch: " + summary))
            << joined(arguments) << "\n"
            << result.errors;
        if (joined(options).starts_with("--no-messages")) {
            EXPECT_EQ(told.size(), 1U) << result.errors;
        }
        if (holds(joined(options), "--quiet")) {
            EXPECT_EQ(result.output, "");
        }
    }
    expectRefused({"show", closed}, 3, ": Permission denied", unprivileged_);
    const std::string part = store_.native("part");
    const std::string denied = part + "/closed/: Permission denied";
    expectRefused({"find", part + "/closed"}, 3, denied, unprivileged_);
    EXPECT_PRED2(holds, run({"find", part}, unprivileged_).errors, denied);
    const std::string list = settings_.native("l.csv");
    const Texts exported{"export", "--strict", list};
    expectRefused(plus(exported, {part}), 3, "l.csv was not written", unprivileged_);
    expectRefused(plus(exported, {store_.native("all"), "--limit", "1", "--sort", "path"}), 3,
                  "l.csv was not written");
    EXPECT_FALSE(fs::exists(list));
}

} // namespace
} // namespace ov::cli
