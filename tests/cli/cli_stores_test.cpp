// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Stores that are hard to read or to show.

#include "cli/shown_text.h"
#include "tests/cli/cli_fixture.h"

#include <nlohmann/json.hpp>

#include <set>

namespace ov::cli {
namespace {

// What would move the cursor, or turn what follows round, is shown; columns stay straight.
TEST(ShownText, HasNoCommandsAndAKnownWidth) {
    EXPECT_EQ(shownText("\t\x1F\x7F\u0080\u009F\u00A0"), "\\t\\u001F\\u007F\\u0080\\u009F\u00A0");
    EXPECT_EQ(shownText("\u061B\u061C\u200D\u200E\u200F\u2010"),
              "\u061B\\u061C\u200D\\u200E\\u200F\u2010");
    EXPECT_EQ(shownText("\u202A\u202E\u202C\u202C\u202F\u2065\u2066\u2069\u206A"),
              "\\u202A\\u202E\\u202C\\u202C\u202F\u2065\\u2066\\u2069\u206A");
    EXPECT_EQ(columnCount("\u6F22e\u0301\uFF21\u20DD\u00AD~"), 6U);
    EXPECT_EQ(fittedText("\u6F22\u5B57", 4), "\u6F22\u5B57");
    EXPECT_EQ(fittedText("\u6F22\u5B57", 3), "\u6F22\u2026");
    EXPECT_EQ(fittedText("\u6F22\u5B57", 2), "\u2026");
}

TEST_F(Cli, NamesOfAllKinds) {
    const std::string rightToLeft = "\xE2\x80"s + '\xAE'; // what follows is shown backwards
    const Texts names = {"M\xFCller.WAV",        "c1 \xC2\x9B[m.WAV",
                         "dir.WAV/in.WAV",       "esc\x1B[31m.WAV",
                         "line\nend\r.WAV",      "link.WAV",
                         "quote\", comma.WAV",   std::string(251, 'x') + ".WAV",
                         rightToLeft + "gpj.WAV"};
    for (const std::string& name : names)
        store_.add(name);
    store_.addLink("link.WAV", "quote\", comma.WAV").addLink("dangling.WAV", "nowhere");
    store_.add("back\\slash.WAV").add("back\\dir/x.WAV").addPipe("pipe.WAV");

    EXPECT_EQ(foundFiles(), names);
    const ProgramResult json = find({"--format", "json", "--columns", "name"});
    EXPECT_PRED2(holds, json.errors, "back\\slash.WAV: left out");
    std::set<std::string> decoded;
    for (const auto& hit : nlohmann::json::parse(json.output))
        decoded.insert(hit["name"]);
    EXPECT_TRUE(decoded.contains("Müller") && decoded.contains("line\nend\r")) << json.output;
    EXPECT_EQ(split(find({"--columns", "name"}).output, '\n').size(), names.size() + 1);

    const ProgramRun terminal{.onTerminal = true};
    for (const char* format : {"table", "csv", "json", "paths"}) {
        const std::string sent =
            find({"--format", format, "--columns", "name,path"}, terminal).output;
        for (const std::string& obeyed : {"\x1B[31m"s, "\xC2\x9B"s, "end\r."s, rightToLeft})
            EXPECT_FALSE(holds(sent, obeyed)) << format << sent;
        for (const char* shown : {"esc\\u001", "c1 \\u009B[m", "\\u202Egpj", "line\\nend\\r"})
            EXPECT_PRED2(holds, sent, shown) << format;
    }
    EXPECT_PRED2(holds, run({"show", store_.native("esc\x1B[31m.WAV")}).output, "esc\\u001B[31m");
}

TEST_F(Cli, PathsOfAllBytesComeBack) {
    store_.add("ward/Zo\xC3\xAB.WAV");
    std::map<std::string, std::string> expected = {{root() + "/ward/Zoë.WAV", "none"}};
    for (const char* before : {"", "M", "Mu"}) { // of every length
        store_.add(before + "\xFB\xFC.WAV"s);
        expected[root() + "/" + before + "ûü.WAV"] = tests::shellOutput(
            "printf %s '" + root() + "/" + before + "\xFB\xFC.WAV' | base64 -w0");
    }
    std::map<std::string, std::string> bytes; // by path
    for (const auto& hit : nlohmann::json::parse(find({"--format=json", "--columns=path"}).output))
        bytes[hit["path"]] = hit.value("path_bytes", "none");
    EXPECT_EQ(bytes, expected);
    const auto inWard = [this](const char* columns, const Texts& form) {
        return run(plus({"find", store_.native("ward"), "--columns", columns, "--format"}, form))
            .output;
    };
    EXPECT_EQ(inWard("author,path,length", {"csv", "--raw"}),
              "author,path,path_bytes,length\r\n," + store_.native("ward/Zo\xC3\xAB.WAV") +
                  ",,\r\n");
    for (const Texts& form : {Texts{"csv"}, Texts{"csv", "--raw"}})
        EXPECT_EQ(inWard("author", form), "author\r\n\"\"\r\n")
            << "readers pass over an empty line";
    EXPECT_EQ(inWard("name,26,NAME", {"json"}), inWard("name", {"json"}))
        << "an object has each key once";
}

// One that reads along has a line before the search is over.
TEST_F(Cli, StoreThatGoesAway) {
    TemporaryStore tree;
    addEndlessTree(tree);
    store_.addLink("s", tree.folder().native());
    ProgramRun how;
    how.steps = {{"x.WAV\",\"values\":{}}\n{", [this] { fs::remove(store_.folder() / "s"); }}};
    const ProgramResult result =
        run({"find", store_.native("s"), "--format", "jsonl", "--columns", "path"}, how);
    EXPECT_EQ(result.exitCode, 3) << "though something was found";
    EXPECT_PRED2(holds, result.errors, "/s/: unmounted or moved");
}

TEST_F(Cli, ProgressAndHitsShareATerminal) {
    tests::addEndlessTree(store_);
    ProgramRun how{.onTerminal = true};
    const std::string progress = " hits, in " + root();
    for (const auto& [options, until] :
         {std::pair(Texts{"--format", "paths"}, std::string("x.WAV\r\n")),
          std::pair(Texts{"--format", "paths", "--sort", "folder"}, progress)}) {
        how.interruptAt = until;
        const ProgramResult result = find(options, how);
        EXPECT_EQ(result.exitCode, -SIGINT);
        EXPECT_EQ(result.output.find(progress, result.output.find("x.WAV\r\n")), std::string::npos)
            << "among the hits";
        // Progress is seen no more once its line is erased.
        const std::regex erased("(\r[^\r\n]*\x1B\\[K)*\r\x1B\\[K|\r(?=\n)");
        Texts lines = split(std::regex_replace(result.output, erased, ""), '\n');
        ASSERT_GE(lines.size(), 2U) << result.output;
        EXPECT_PRED2(holds, lines.back(), "stopped, not all");
        lines.pop_back();
        for (const std::string& path : lines)
            ASSERT_TRUE(path.starts_with(root()) && path.ends_with("/x.WAV")) << path;
    }
}

} // namespace
} // namespace ov::cli
