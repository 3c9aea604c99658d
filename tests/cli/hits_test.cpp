// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What becomes of hits: sorted, counted, handed to other programs.

#include "cli/hits/command_template.h"
#include "cli/options/command_words.h"
#include "tests/cli/cli_fixture.h"

#include <nlohmann/json.hpp>

namespace ov::cli {
namespace {

using nlohmann::json;

class Hits : public Cli {
protected:
    // Three authors, whose dictations are found in any order.
    void addMany() {
        for (int i = 0; i < 90; ++i)
            store_.add(std::to_string(i % 7) + "/2$ROH@@14$" + std::string(1, "abc"[i % 3]) +
                       "@@5$" + (i % 2 == 0 ? "HOCH" : "2") + "@@6$00$00$" +
                       std::to_string(10 + i % 50) + "@@12$" + std::to_string(i) + ".WAV");
    }
    std::string output(const Texts& options) const { return find(options).output; }
};

TEST_F(Hits, LimitOfSortedOnesIsTheTopOfAll) {
    addMany();
    const Texts form = {"--columns", "author,length,number", "--format", "csv"};
    for (const char* sort : {"author", "length:desc,author", "path", "author:desc,number"}) {
        const Texts all = plus(form, {"--sort", sort});
        const std::string whole = output(all);
        const ProgramResult top = find(plus(all, {"--limit", "4"}));
        EXPECT_EQ(split(top.output, '\n').size(), 5U);
        EXPECT_TRUE(whole.starts_with(top.output)) << sort << whole << top.output;
        EXPECT_EQ(top.errors, "") << "whoever names a limit knows that there are more";
    }
    const Texts twice = {"--sort", "author:desc", "--sort", "number:desc", "--limit", "1"};
    EXPECT_EQ(split(output(plus(form, twice)), '\n')[1], "c,00:00:49,89\r");
}

TEST_F(Hits, AreCounted) {
    addMany();
    store_.add("2$ROH@@14$c.WAV").add("2$ROH@@7$1-2-2026 10$00$00.WAV");
    const std::pair<Texts, std::string> cases[] = {
        {{"--count"}, "92\n"},
        {{"--count", "--limit", "5"}, "5\n"},
        {{"--count", "-c", "author is nobody"}, "0\n"},
        {{"--sum", "length", "-c", "author = a"}, "00:15:55\n"},
        {{"--count", "--sum", "length", "-c", "author = a"}, "30\n00:15:55\n"},
        {{"--count", "--format", "json"}, "{\"count\":92,\"values\":{}}\n"},
        {{"--count-by", "author"},
         "Author  Count\nc       31\na       30\nb       30\n-       1\n"},
        {{"--count-by", "author", "-c", "author is nobody"}, ""},
        {{"--language", "de", "--count-by", "author", "--sum", "length", "-c", "author = a"},
         "Autor  Anzahl  Länge\na      30      00:15:55\n"},
        {{"--count-by", "priority", "--format", "csv", "--raw", "--sum", "length"},
         "priority,count,sum_length\r\nHOCH,90,2905\r\n,2,0\r\n"},
        {{"--count-by", "priority", "--format", "csv"}, "priority,count\r\nHigh,90\r\n,2\r\n"},
        {{"--count-by", "dictated", "--format", "jsonl", "-c", "dictated is-not-empty"},
         "{\"dictated\":\"02/01/2026\",\"count\":1,\"values\":{\"dictated\":\"2026-02-01\"}}\n"}};
    for (const auto& [options, expected] : cases)
        EXPECT_EQ(output(options), expected) << joined(options);
    EXPECT_EQ(find({"--count", "-c", "author is nobody"}).exitCode, 1);
    const json groups = json::parse(output({"--count-by", "length", "--format", "json"}));
    EXPECT_EQ(groups.size(), 51U);
    EXPECT_FALSE(groups[0]["values"].contains("length")) << "no value before any";
    EXPECT_EQ(groups[1]["values"]["length"], 10) << "the smallest of those that are there as often";
    EXPECT_EQ(groups[50]["count"], 1);
}

TEST_F(Hits, AreCountedByWhatIsCompared) {
    store_.add("n/2$ROH@@14$Mu\u0308ller.WAV").add("s/n/2$ROH@@14$M\u00FCller.WAV");
    store_.add("s/n/2$ROH@@14$m\u00FCller.WAV");
    EXPECT_EQ(output({"--count-by", "author", "--format", "csv"}),
              "author,count\r\nM\u00FCller,2\r\nm\u00FCller,1\r\n");
    EXPECT_EQ(output({"--count-by", "folder", "--format", "csv", "--raw"}),
              "folder,count\r\n" + root() + "/s/n,2\r\n" + root() + "/n,1\r\n");
    EXPECT_PRED2(holds, output({"--count-by", "folder"}), root() + "/s/n");
    const json all = json::parse(
        output({"--columns", "folder", "--format", "json", "--sort", "path", "--limit", "1"}));
    EXPECT_EQ(all[0]["folder"], "...\\n");
    EXPECT_EQ(all[0]["values"]["folder"], root() + "/n");
}

TEST(CommandTemplate, PutsPathsInPlace) {
    const std::tuple<Texts, Texts, Texts> cases[] = {
        // words; with /s/a.b/x.y.WAV; with that and /z.w
        {{"cp", "-t", "d"},
         {"cp", "-t", "d", "/s/a.b/x.y.WAV"},
         {"cp", "-t", "d", "/s/a.b/x.y.WAV", "/z.w"}},
        {{"{}"}, {"/s/a.b/x.y.WAV"}, {"/s/a.b/x.y.WAV", "/z.w"}},
        {{"p", "{/}|{//}|{.}|{/.}", "{", "{}{}"},
         {"p", "x.y.WAV|/s/a.b|/s/a.b/x.y|x.y", "{", "/s/a.b/x.y.WAV/s/a.b/x.y.WAV"},
         {"p", "x.y.WAV|/s/a.b|/s/a.b/x.y|x.y", "z.w|/|/z|z", "{", "/s/a.b/x.y.WAV/s/a.b/x.y.WAV",
          "/z.w/z.w"}}};
    for (const auto& [words, one, both] : cases) {
        const CommandTemplate command(words);
        EXPECT_EQ(command.with("/s/a.b/x.y.WAV"), one);
        EXPECT_EQ(command.withAll(Texts{"/s/a.b/x.y.WAV", "/z.w"}), both);
    }
    EXPECT_EQ(CommandTemplate({"{.}"}).with("/.hidden"), Texts{"/.hidden"});
}

TEST(CommandWords, ArePartOfNoOtherOption) {
    const Texts whole =
        withWholeCommands({"-x", "cp", "-t", "", ";", "root", "--exec-batch", "ls", "--"});
    EXPECT_EQ(withWholeCommands({"-x", "--", "cp", "--", "a"})[1], "cp\0--\0a\0"s);
    EXPECT_EQ(withWholeCommands({"--", "-x", "cp"}), (Texts{"--", "-x", "cp"}));
    ASSERT_EQ(whole.size(), 5U);
    EXPECT_EQ(wordsOf(whole[1]), (Texts{"cp", "-t", ""}));
    EXPECT_EQ(whole[2] + whole[3], "root--exec-batch");
    EXPECT_EQ(wordsOf(whole[4]), (Texts{"ls", "--"}));
}

// The real program, also where names are no text and where a shell would do something.
TEST_F(Hits, RunCommands) {
    store_.add("a/$(id)\xFF\n.WAV").add("b/'x' y.WAV");
    const std::string hostile = store_.native("a/$(id)\xFF\n.WAV");
    const std::string other = store_.native("b/'x' y.WAV");
    EXPECT_EQ(output({"--sort", "path", "-x", "printf", "<%s>", ";"}),
              "<" + hostile + "><" + other + ">");
    EXPECT_EQ(output({"--sort", "path:desc", "-x", "echo", "1", "{/.}", ";", "-x", "echo", "2",
                      "{//}", ";"}),
              "1 'x' y\n2 " + root() + "/b\n1 $(id)\xFF\n\n2 " + root() + "/a\n");
    EXPECT_EQ(output({"--sort", "path", "-X", "printf", "[%s]", "-", ";"}),
              "[-][" + hostile + "][" + other + "]");
    const std::tuple<Texts, int, const char*> ends[] = {
        {{"-x", "true", ";"}, 0, ""},
        {{"-x", "sh", "-c", "exit 1", ";"}, 4, ""},
        {{"-x", "false", ";", "-c", "author is nobody"}, 1, ""},
        {{"-X", "false", ";"}, 4, ""},
        {{"-x", "no-such-program", ";"}, 4, "cannot run no-such-program: No such file"},
        {{"-x", ";"}, 2, "--exec"},
        {{"-x", "", "a", ";"}, 2, "the command of --exec is an empty text"},
        {{"-X", "{}", ";"}, 2, "begins with the name of a program"},
        {{"-x", "true", ";", "--format", "json"}, 2, "takes no --format"}};
    const auto errorsOf = [](const char* command, const std::string& folder) {
        const ProgramRun how{.arguments = {"-c", command, OV_SEARCH_PROGRAM, folder}};
        return tests::runProgram("/bin/bash", how).errors;
    };
    EXPECT_EQ(errorsOf("trap '' CHLD; exec \"$0\" find \"$1\" -x false", root()), "");
    // A closed stream must not be where a file of ours is then written.
    EXPECT_EQ(errorsOf("exec \"$0\" find \"$1\" -x sh -c 'readlink /proc/$PPID/fd/1 >&2' >&-",
                       store_.native("b")),
              "/dev/null\n");
    for (const auto& [options, exitCode, error] : ends) {
        const ProgramResult result = find(options);
        EXPECT_EQ(result.exitCode, exitCode) << joined(options);
        EXPECT_PRED2(holds, result.errors, error);
    }
}

// So many that one command cannot take them.
TEST_F(Hits, BatchesAreAsLongAsArgumentsMayBe) {
    constexpr int count = 2000;
    for (int i = 0; i < count; ++i)
        store_.add("2$ROH@@14$" + std::string(200, 'x') + std::to_string(i) + ".WAV");
    const ProgramRun little{.environment = {{"LONG", std::string(100000, 'x')}}, // counts too
                            .stack = 1024 * 1024}; // what arguments may take goes by the stack
    const ProgramResult result = find({"-X", "sh", "-c", "echo $#", "sh", ";"}, little);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    int sum = 0;
    for (const std::string& line : split(result.output, '\n'))
        sum += std::stoi(line);
    EXPECT_EQ(sum, count);
    EXPECT_GT(split(result.output, '\n').size(), 1U);
    const ProgramRun stopped{.interruptAt = "xxx"}; // while it prints
    const ProgramResult sorted = find({"--sort", "path", "--format", "paths"}, stopped);
    EXPECT_EQ(sorted.exitCode, -SIGINT);
    EXPECT_LT(split(sorted.output, '\n').size(), std::size_t{count});
}

TEST_F(Hits, InterruptedCommandsAreTheLast) {
    addMany();
    const ProgramResult result = find({"-x", "sh", "-c", "echo found; kill -INT $PPID", ";"});
    EXPECT_EQ(result.exitCode, -SIGINT);
    EXPECT_EQ(result.output, "found\n");
}

TEST_F(Hits, NewerThanAFile) {
    store_.add("old.WAV").add("new.WAV").add("newest.WAV");
    settings_.add("mark");
    const fs::file_time_type now = fs::file_time_type::clock::now();
    using std::chrono::hours;
    fs::last_write_time(store_.native("old.WAV"), now - hours(2));
    fs::last_write_time(settings_.native("mark"), now - hours(2));
    EXPECT_EQ(foundFiles({"--newer", settings_.native("mark")}), (Texts{"new.WAV", "newest.WAV"}));
    EXPECT_EQ(output({"--newer", settings_.native("mark"), "--count"}), "2\n");
    const ProgramResult one = find({"--newer", settings_.native("mark"), "--limit", "1", "-0"});
    EXPECT_EQ(split(one.output, '\0').size(), 1U);
    EXPECT_PRED2(holds, one.errors, "limit of 1");
    EXPECT_EQ(find({"--newer", store_.native("newest.WAV")}).exitCode, 1);
    EXPECT_EQ(find({"--newer", settings_.native("none")}).exitCode, 3);
}

} // namespace
} // namespace ov::cli
