// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/version.h"
#include "tests/cli/cli_fixture.h"

#include <nlohmann/json.hpp>
#include <sndfile.hh>

// The terminal program, run as a person or a script runs it.

namespace ov::cli {
namespace {

TEST_F(Cli, Formats) {
    addThree();
    const std::string first = store_.native(highPriority);
    const std::string second = store_.native(std::string("ward/") + sentByMail);
    const std::string third = store_.native(std::string("ward/ERL/") + marked);
    EXPECT_EQ(find({"--columns", "author,length,subject"}).output,
              "Author  Length    Subject\n"
              "Müller  00:01:30  \"eilig\", heute\n"
              "Zeh     00:00:20\n"
              "öztürk\n");
    EXPECT_EQ(
        find({"--columns", "subject, AUTHOR,3", "--format", "csv"}).output,
        "subject,author,marker\r\n\"\"\"eilig\"\", heute\",Müller,\r\n,Zeh,\r\n,öztürk,D\r\n");
    EXPECT_EQ(find({"--format", "paths"}).output, first + "\n" + second + "\n" + third + "\n");
    EXPECT_EQ(find({"-0"}).output, first + '\0' + second + '\0' + third + '\0');

    const auto json = nlohmann::json::parse(
        find({"--format", "json", "--columns", "author,folder,dictated"}).output);
    EXPECT_EQ(json.size(), 3U);
    const nlohmann::json expected = {
        {"path", third},
        {"author", "öztürk"},
        {"folder", R"(...\ward\ERL)"},
        {"dictated", "12/30/2025"},
        {"values",
         {{"author", "öztürk"}, {"folder", root() + "/ward/ERL"}, {"dictated", "2025-12-30"}}}};
    EXPECT_EQ(json[2], expected);

    // Nothing found is still a table without rows, an array, or no path at all.
    for (const auto& [format, output] : std::map<std::string, std::string>{
             {"table", ""}, {"csv", "path\r\n"}, {"json", "[]\n"}, {"jsonl", ""}, {"paths", ""}}) {
        const ProgramResult result =
            find({"-c", "author is nobody", "--columns", "path", "--format", format});
        EXPECT_EQ(result.output + std::to_string(result.exitCode), output + "1");
        EXPECT_EQ(result.errors, "");
    }
}

TEST_F(Cli, OutputThatCannotBeWritten) {
    addThree();
    tests::addEndlessTree(store_);
    const ProgramRun full{.outputFile = "/dev/full"};
    for (const Texts& arguments : std::vector<Texts>{
             // This one would never end.
             {"find", root(), "--format", "paths", "--limit", "2147483647", "--max-depth", "-1"},
             {"find", store_.native("ward"), "--format", "json", "--sort", "author"},
             {"show", store_.native(highPriority)},
             {"--version"},
             {"demo", store_.native("new"), "--count", "1"}})
        expectRefused(arguments, 3, "No space left on device", full);
    const ProgramRun little{.longestFile = 20'000};
    expectRefused({"demo", store_.native("small")}, 3, "/small/", little);
}

// What goes the short way, and what must not.
TEST_F(Cli, SaysItsVersion) {
    const std::string version = "ovsearch " + std::string(version::text) + "\n";
    EXPECT_EQ(run({"--version"}).output, version);
    EXPECT_EQ(tests::shellOutput(OV_SEARCH_PROGRAM " --version"), version);
    EXPECT_PRED2(holds, tests::shellOutput(OV_SEARCH_PROGRAM " --help"), "find");
}

TEST_F(Cli, CriteriaFile) {
    addThree();
    const std::string file = settings_.native("SearchCriteria.dat");
    const std::string muller = "5\x01\x31\x37\x01M\xFCLLER\x01";
    settings_.add("SearchCriteria.dat", "junk\r\n5\x01\x31\x37\r\n" + muller + "\r\n");
    const ProgramResult result =
        find({"--criteria-file", file, "--columns=author", "--format=csv"});
    EXPECT_EQ(authors(result), "Müller");
    EXPECT_PRED2(holds, result.errors, file + ":1: left out, there is no field \"junk\"");
    EXPECT_PRED2(holds, result.errors, file + ":2: left out, ");
    EXPECT_EQ(find({"--criteria-file", file, "--strict"}).exitCode, 3);
    settings_.add("SearchCriteria.dat", muller);
    EXPECT_EQ(authors({"--criteria-file", file, "--any", "-c", "author is zeh"}), "Müller Zeh");
    EXPECT_EQ(find({"--criteria-file", file}).errors, "");
    settings_.add("Other.dat", "5\x01\x31\x38\x01ZEH\x01");
    const Texts two = {"--criteria-file", settings_.native("Other.dat"), "--criteria-file", file};
    EXPECT_EQ(authors(two), "Zeh Müller") << "one search after the other";
    EXPECT_PRED2(holds, find(plus(two, {"--explain"})).output, "ZEH  1 of 3\nAll of these");
    settings_.add("bad.txt", "author is zeh\n; a remark\r\n\r\nlength >= 1 Elle\n" +
                                 std::regex_replace(std::string(11, 'x'), std::regex("x"), "x\n"));
    const Texts told = split(find({"--criteria-file", settings_.native("bad.txt")}).errors, '\n');
    ASSERT_EQ(told.size(), 11U);
    EXPECT_PRED2(holds, told.front(), "bad.txt:4: left out, \"1 Elle\" is not a time such as");
    EXPECT_PRED2(holds, told.back(), "bad.txt: further lines that are no criteria: 2");
    settings_.add("groups.txt",
                  "all=0\nauthor contains z\n  author contains x\nauthor is müller\n");
    EXPECT_EQ(authors({"--criteria-file", settings_.native("groups.txt")}), "Müller");
}

// Settings files that are not what they should be change nothing.
TEST_F(Cli, Settings) {
    addThree();
    const std::string directories = "[Directories]\r\nDictationDir=" + store_.directory() + "\r\n";
    const std::string binary = "MZ\0\x01\xFF\xFE[Directories\0]\r\n\x80=\0"s;
    const std::pair<const char*, std::string> cases[] = {
        {"OVSearch.cfg", directories},
        {"OVSearch.cfg", binary + "\r\n" + directories},
        {"registry.reg", binary},
        {"Data/DAss/SearchColumns.dat", binary},
        {"Log/OVSearch_.log/x", "a folder in the place of the log"}};
    for (const auto& [file, content] : cases) {
        settings_.add(file, content);
        const ProgramResult result = run({"find", "--columns", "author", "--format", "csv"});
        EXPECT_EQ(authors(result), "Müller Zeh öztürk") << file << result.errors;
        EXPECT_EQ(result.exitCode, 0) << file;
    }
    EXPECT_PRED2(holds,
                 tests::shellOutput("cd " + root() +
                                    " && " OV_SEARCH_PROGRAM
                                    " find ward/.. --format paths --settings ../none"),
                 store_.native(highPriority) + "\n");
}

TEST_F(Cli, ChosenColumnsAreTheUsualOnes) {
    addThree();
    std::string hidden = "[ColumnVisible]\r\n";
    for (int id = 1; id <= 26; ++id)
        if (id != 5 && id != 13)
            hidden += std::to_string(id) + "=0\r\n";
    settings_.add("Data/DAss/SearchColumns.dat", hidden);
    EXPECT_EQ(split(find({"--format", "csv"}).output, '\r')[0], "path,author,length");
    const auto json = nlohmann::json::parse(find({"--format", "json"}).output);
    EXPECT_EQ(json[1].size(), 4U) << json[1];
    EXPECT_EQ(json[1]["values"], nlohmann::json({{"author", "Zeh"}, {"length", 20}}));
}

TEST_F(Cli, CriteriaFromAPipe) {
    addThree();
    const std::string find =
        " | " OV_SEARCH_PROGRAM " find --columns author --format csv " + root();
    const std::string zeh = "printf 'author is zeh\\n'";
    for (const std::string& command :
         {zeh + find + " --criteria-file -", zeh + find + " --criteria-file /dev/fd/3 3<&0"})
        EXPECT_EQ(tests::shellOutput(command), "author\r\nZeh\r\n") << command;
    EXPECT_PRED2(
        holds,
        tests::shellOutput("yes 'author is zeh'" + find + " --criteria-file - 2>&1; echo $?"),
        "standard input: File too large\n3\n");
}

TEST_F(Cli, ShowAndFields) {
    addThree();
    const std::string file = store_.native(std::string("ward/ERL/") + marked);
    const std::string shown = run({"show", file}).output;
    EXPECT_FALSE(std::regex_search(shown, std::regex("\n-.*(again|zero)"))) << "no fields\n"
                                                                            << shown;
    ProgramRun germanUser;
    germanUser.environment = {{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", "de_DE.UTF-8"}};
    const std::pair<std::string, const char*> cases[] = {
        {shown, "status  +Status  +Dictated  +WAV\n"},
        {shown, "dictated  +Dictated  +12/30/2025  +30-12-2025\n"},
        {shown, "priority  +Priority  +Normal  +-\n"},
        {shown, "-  +@@23\\$  +more  +more\n-  +@@31\\$  +odd  +odd\n"},
        {shown, "folder  +Folder  +\\.\\.\\.\\\\ward\\\\ERL  +/.*/ward/ERL/\n"},
        {run({"fields"}).output, "file  +File number  +text  +contains, is, =, not-contains, "},
        {run({"fields", "--language", "de"}).output, "length  +Länge  +time  +is, =, <=, "},
        {run({"fields"}, germanUser).output, "due  +Termin  +date  +yesterday, today, "},
        {run({"show", file}, germanUser).output, "dictated  +Diktiert am  +30\\.12\\.2025  "}};
    for (const auto& [output, line] : cases)
        EXPECT_TRUE(std::regex_search(output, std::regex(line))) << line << output;

    const std::string missing = store_.native("missing.WAV");
    const ProgramResult several = run({"show", file, missing, file});
    EXPECT_EQ(several.output, file + "\n" + shown + "\n" + file + "\n" + shown);
    EXPECT_EQ(several.errors, "ovsearch: " + missing + ": there is no such file\n");
    EXPECT_EQ(several.exitCode, 3);
}

TEST_F(Cli, DemoStoreIsFound) {
    EXPECT_TRUE(
        std::regex_search(run({"demo", "--help"}).output, std::regex("--seed S\\W+1"))); // default
    EXPECT_EQ(run({"demo", store_.native("new/demo"), "--count", "12"}).exitCode, 0);
    const auto made = nlohmann::json::parse(find({"--format", "json"}).output);
    EXPECT_EQ(made.size(), 12U);
    for (const auto& one : made) { // sounds as long as its name says
        const SndfileHandle sound(one["path"].get<std::string>());
        const double seconds = static_cast<double>(sound.frames()) / sound.samplerate();
        EXPECT_NEAR(seconds, one["values"].value("length", seconds), 0.1) << one;
    }
    store_.addDeep(60, "y.WAV").addDeep(60, "z.WAV");
    EXPECT_EQ(foundFiles({"-c", "name is y"}).size(), 50U);
    EXPECT_EQ(split(find({"--max-depth", "-1"}).output, '\n').size(), 133U);
}

} // namespace
} // namespace ov::cli
