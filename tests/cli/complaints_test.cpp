// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/cli/cli_fixture.h"

// What is told to whoever typed something that cannot be done: what is wrong, and what may stand
// there instead.

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
        {
            {{}, "say what to do: find, show, "},
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
            {{"find", ""}, "WORD: must not be empty"},
            {{"fields", "--settings", ""}, "--settings: must not be empty"},
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
            {{"find", root(), "--max-depth", "-2"},
             "--max-depth: \"-2\" is no whole number from -1"},
            {{"demo", root(), "--count", "-1"}, "--count: \"-1\" is no whole number from 0"},
            {{"demo", root(), "--seed", "4294967296"}, "from 0 to 4294967295"},
            {{"find", root(), "--count-by", "Path"}, "--count-by folder counts what lies in each"},
            {{"find", root(), "-0", "--format", "csv"}, "--format paths"},
            {{"find", root(), "--raw"}, "--raw goes with --format csv"},
            {{"find", root(), "--separator", ";"}, "--separator goes with --format csv"},
            {{"find", root(), "--explain", "--format", "csv"}, "--explain tells of a search in"},
            {{"find", root(), "--explain", "--count"}, "--explain tells of a search in"},
            {{"find", root(), "--explain", "-x", "true"}, "--explain tells of a search in"},
            {{"export", root(), "l.csv"}, "is a folder; name the FILE to write first"},
        },
        2);
}

TEST_F(CliComplaints, FilesAndFoldersThatAreNotWhatTheyShouldBe) {
    const std::string missing = store_.native("missing");
    expectAll(
        {
            {{"find", missing}, "missing/: No such file"},
            {{"find", store_.native(highPriority)}, "is a file, and no folder to search"},
            {{"find"}, "DictationDir"},
            {{"find", root(), "--criteria-file", missing}, "missing: No such file"},
            {{"find", root(), "--criteria-file", root()}, "is a folder; name a file of criteria"},
            {{"show", missing}, "there is no such file"},
            {{"show", root()}, "is a folder; show takes dictations, find searches folders"},
            {{"show", store_.native("ward/ERL/notes.txt")}, "not a dictation"},
            {{"play", root()}, "is a folder; play takes sound files"},
            {{"demo", root()}, root()},
            {{"export", missing + "/l.csv", root()}, "l.csv: No such file"},
        },
        3);
    const std::string removed = "cd \"$1\"; rmdir \"$1\"; exec \"$0\" find . --count";
    ProgramRun nowhere;
    nowhere.arguments = {"-c", removed, OV_SEARCH_PROGRAM, missing};
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

} // namespace
} // namespace ov::cli
