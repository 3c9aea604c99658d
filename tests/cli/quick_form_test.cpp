// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/cli/cli_fixture.h"

// What a command line asks for: criteria, as options and as words, and their order.

namespace ov::cli {
namespace {

TEST_F(Cli, WordsAreCriteria) {
    addThree();
    const std::vector<std::pair<Texts, std::string>> cases = {
        {{}, "Müller Zeh öztürk"},
        {{"-c", "author contains Ü", "-c", "priority = HOCH"}, "Müller"},
        {{"--language", "de", "-c", "priority = hoch"}, "Müller"},
        {{"-c", "dictated between 2025-12-30..2/1/2026"}, "Zeh öztürk"},
        {{"--max-depth", "0"}, "Müller"},
        {{"--sort", "length"}, "öztürk Zeh Müller"},
        {{"author:Ü", "prio:high"}, "Müller"},
        {{"zeh"}, "Zeh"},
        {{"WARD", "-marker:yes"}, "Zeh"},
        {{"'eilig', HEUTE"}, ""}, // shown with other quotes
        {{"eilig\", HEUTE"}, "Müller"},
        {{"-author:müller", "-c", "marker not-marked"}, "Zeh"},
        {{"--not", "-c", "author contains zeh"}, "Müller öztürk"},
        {{"--not", "(", "author:zeh", "-cmarker marked", ")"}, "Müller"},
        {{"(", "author:zeh", "marker:yes", ")", "dictated:>=2026"}, "Zeh"},
        {{"(", "no/folder", "author:zeh", ")"}, "Zeh"},
        {{"--any", "author:zeh", "--criterion=marker marked"}, "Zeh öztürk"},
        {{"--sort", "author:desc", "length:>=20s"}, "Zeh Müller"},
        {{"length:..20s", "--", "-author:zeh"}, ""},
        {{"--", "-author:zeh"}, "Müller öztürk"}};
    for (const auto& [options, expected] : cases)
        EXPECT_EQ(authors(options), expected) << joined(options);
    EXPECT_EQ(authors(run({"find", "--root", root(), "ward/", "--columns", "author"})), "");
    EXPECT_EQ(find({"--format", "paths", "-0c", "author is zeh"}).output,
              store_.native(std::string("ward/") + sentByMail) + '\0');
    const std::string file = settings_.native("list.csv");
    const ProgramResult exported =
        run({"export", "--title", "-author:zeh", "--", file, root(), "author:zeh"});
    EXPECT_EQ(exported.exitCode, 0) << exported.errors;
    EXPECT_TRUE(fs::exists(file));
}

TEST_F(Cli, WordsThatAreNoCriteriaAreMarked) {
    addThree();
    const std::vector<std::pair<Texts, std::string>> wrong = {
        {{"autor:x"}, "A text that holds \":\" stands in quotes.\n  autor:x\n  ^~~~~\n"},
        {{"-c", "Müller>=5", "author:\x1B"}, "there is no field \"Müller>=5\""},
        {{"subject:Größe,\"x"}, "  subject:Größe,\"x\n                ^~\n"},
        {{"author:a prio:b"}, "give each as an argument of its own"},
        {{"-c", "length>=00:01:00"}, "a blank is missing; say \"length >= 00:01:00\""},
        {{"-c", "due between 2.1.2026..1.1.2026"}, "reversed; say 1.1.2026..2.1.2026"},
        {{"(", "author:x"}, "the closing ) is missing\n  (\n  ^\n"},
        {{"author:x", "-c"}, "-c"},
        {{"--not"}, "there is nothing to negate"},
        {{"author:x", "-y"}, "-y"},
        {{"-knee"}, "to leave out is '!knee', and one that begins with \"-\" is '\"-knee\"'"}};
    for (const auto& [words, message] : wrong)
        expectRefused(plus({"find", "--root", root()}, words), 2, message);
    expectRefused({"find", "stroe/ward", "author:x"}, 3, "\"stroe/ward\" was taken as the folder");
    expectRefused({"find", "stroe"}, 3, "\"stroe\" is no folder, so it was taken as a text");
}

TEST_F(Cli, FurtherFoldersAreToldOf) {
    addThree();
    const Texts inside = {"-c", "cd \"$1\"; shift; exec \"$0\" find \"$@\"", OV_SEARCH_PROGRAM,
                          root()};
    const std::tuple<Texts, int, std::string> cases[] = {
        {{"ward", "./_old"},
         2,
         "\"./_old\" is a second folder, and a search has one, here \"ward\""},
        {{".", root()}, 2, "say '\"" + root() + "\"' to look for the text"},
        {{"_old", "ward"}, 1, "\"ward\" is a folder too, but was taken as a text"},
        {{"--root=_old", "./ward"}, 1, "\"./ward\" is a folder too"},
        {{".", "ward"}, 0, ""},
        {{"ward", "\"./_old\""}, 1, ""},
        {{"ward", "no/folder"}, 1, ""}};
    for (const auto& [words, exitCode, told] : cases) {
        const auto result = tests::runProgram("/bin/sh", {.arguments = plus(inside, words)});
        EXPECT_EQ(result.exitCode, exitCode) << joined(words);
        EXPECT_PRED2(holds, result.errors, told);
        EXPECT_EQ(result.errors.empty(), told.empty()) << result.errors;
    }
    expectRefused({"export", settings_.native("l.csv"), root(), settings_.folder().native()}, 2,
                  "is a second folder");
}

TEST_F(Cli, ExplainsInPlaceOfSearching) {
    addThree();
    const Texts words = {"--explain", "author:zeh,öz", "dictated:this-week"};
    const std::string start = "All of these, in " + root() + "/:\n" +
                              "  \"Author\" contains zeh                               1 of 3\n" +
                              "    or: \"Author\" contains öz                          1 of 3\n";
    const ProgramResult result = find(words);
    EXPECT_EQ(result.output.substr(0, start.size()), start);
    EXPECT_TRUE(std::regex_match(
        result.output.substr(std::min(start.size(), result.output.size())),
        std::regex("  \"Dictated\" is this week \\([-0-9]{10} to [-0-9]{10}\\)  0 of 3\n")))
        << result.output;
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(find({"--explain", "--any", "--limit", "1", "author:zeh", "prio:high"}).output,
              "Any one of these, in " + root() + "/:\n" + "  \"Author\" contains zeh  1 of 3\n" +
                  "  \"Priority\" is High     1 of 3\n");
    EXPECT_EQ(
        find({"--explain", "zeh", "!ward", "(", "author:x", "ö", ")", "--language=de"}).output,
        "Alle davon, in " + root() + "/:\n" + "  ein Text enthält zeh        1 von 3\n" +
            "  kein Text enthält ward      1 von 3\n" +
            "  \"Autor\" enthält x           0 von 3\n" +
            "    oder: ein Text enthält ö  1 von 3\n");
    EXPECT_EQ(find({"--explain"}).output, "Every dictation in " + root() + "/: 3 of 3\n");
}

// A row that shows a priority is not always one whose name holds it.
TEST_F(Cli, ExplainsValuesThatNoNameHolds) {
    addThree();
    const std::string note = "show “Normal” too, but are not found; “priority is-empty” finds them";
    const std::pair<Texts, std::string> cases[] = {
        {{"prio:normal"},
         "  \"Priority\" is Normal  1 of 3\n      Dictations that say nothing " + note +
             ": 1 of 3\n"},
        {{"(", "author:zeh", "-cpriority = 1", ")", "status2:WAV"},
         "  \"Author\" contains zeh        1 of 3\n"
         "    or: \"Priority\" is Normal   1 of 3\n"
         "      Dictations that say nothing " +
             note +
             ": 1 of 3\n"
             "  \"Second status\" is Dictated  0 of 3\n"
             "      Dictations that say nothing show “Dictated” too, but are not found; "
             "“status2 is-empty” finds them: 3 of 3\n"},
        {{"-prio:normal"},
         "  \"Priority\" is not Normal  2 of 3\n      Dictations that say nothing show “Normal” "
         "too, and are found; “priority is-not-empty” leaves them out: 1 of 3\n"},
        {{"prio:high"}, "  \"Priority\" is High  1 of 3\n"},
        {{"priority:empty"}, "  \"Priority\" is empty  1 of 3\n"}};
    for (const auto& [words, lines] : cases) {
        EXPECT_EQ(find(plus({"--explain"}, words)).output,
                  "All of these, in " + root() + "/:\n" + lines);
    }
}

} // namespace
} // namespace ov::cli
