// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/looks/file_link.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "platform/terminal/terminal.h"
#include "tests/cli/cli_fixture.h"

// What a person sees on a terminal, and a program that reads the same does not.

namespace ov::cli {
namespace {

class OnATerminal : public Cli {
protected:
    OnATerminal() {
        const std::string length = "@@6$00$01$30";
        store_.add("2$ROH" + length + "@@14$Müller@@11$" + std::string(60, 's') + ".WAV");
        store_.add("deep/er/2$ROH" + length + "@@14$M\u030Cu\u0308ller.WAV");
        store_.add("wide/2$STOP@@11$" +
                   std::regex_replace(std::string(60, 'u'), std::regex("u"), "ü") + ".WAV");
        for (int i = 0; i < 20; ++i)
            store_.add("many/2$MAI@@14$Zeh@@11$" + std::to_string(i) + ".WAV");
        terminal_.onTerminal = true;
        for (const char* variable : {"COLUMNS", "NO_COLOR", "VTE_VERSION", "TERM_PROGRAM", "PAGER",
                                     "OVSEARCH_PAGER", "KONSOLE_VERSION", "WT_SESSION"})
            terminal_.environment[variable] = "";
        terminal_.environment["TERM"] = "xterm";
    }
    ProgramRun with(std::map<std::string, std::string> environment, int rows = 50) const {
        ProgramRun how = terminal_;
        how.rows = static_cast<unsigned short>(rows);
        environment.merge(how.environment);
        how.environment = environment;
        return how;
    }
    // Without progress, which a busy machine has.
    std::string shown(const Texts& options, const ProgramRun& how) const {
        const std::regex progress("\r[^\r\n\x1B]*\x1B\\[K|\r");
        return std::regex_replace(find(options, how).output, progress, "");
    }

    static std::string red(const std::string& text) { return "\x1B[1;31m" + text + "\x1B[0m"; }

    ProgramRun terminal_;
    const Texts two_{"-c", "status = ROH", "--columns", "author,subject,length,path"};
};

TEST_F(OnATerminal, TableIsAsWideAsTheTerminal) {
    for (const auto& [columns, variable, width] :
         {std::tuple(70, "", 70U), {200, "64", 64U}, {50, "", 50U}}) {
        ProgramRun how = with({{"COLUMNS", variable}});
        how.columns = static_cast<unsigned short>(columns);
        const std::string table = shown(two_, how);
        const Texts lines = split(table, '\n');
        ASSERT_EQ(lines.size(), 3U) << table;
        for (const std::string& line : lines) {
            EXPECT_LE(columnCount(std::regex_replace(line, std::regex("\x1B\\[[0-9;]*m"), "")),
                      width)
                << line;
        }
        EXPECT_TRUE(std::regex_search(table, std::regex("Müller +s+… +00:01:30 +….*s\\.WAV\n")))
            << table;
    }
    const std::string path = store_.native("deep/er");
    EXPECT_PRED2(holds, shown(two_, {}), path) << "whole where nobody looks";
    EXPECT_PRED2(holds, shown(two_, with({{"COLUMNS", "500"}})), path);
}

TEST_F(OnATerminal, ColourMarksWhatWasLookedFor) {
    const std::string title = "\x1B[1;4mAuthor\x1B[0m\n";
    ProgramRun dumb = with({{"TERM", "dumb"}});
    ProgramRun plain = with({{"NO_COLOR", "1"}});
    const std::string rows = "Müller\nM\u030Cu\u0308ller\n";
    const std::string ue = title + "M" + red("ü") + "ller\nM\u030C" + red("u\u0308") + "ller\n";
    const std::string ll = title + "Mü" + red("ll") + "er\nM\u030Cu\u0308" + red("ll") + "er\n";
    const std::string m = title + red("M") + "üller\n" + red("M\u030C") + "u\u0308ller\n";
    const std::tuple<std::string, Texts, ProgramRun, std::string> cases[] = {
        {"author contains Ü", {}, terminal_, ue},
        {"author contains Ü", {"--color=always"}, {}, ue},
        {"author contains Ü", {"--color=always"}, plain, ue},
        {"author contains Ü", {}, plain, "Author\n" + rows},
        {"author contains Ü", {}, dumb, "Author\n" + rows},
        {"author contains Ü", {"--color=never"}, terminal_, "Author\n" + rows},
        {"author contains l", {}, terminal_, ll},
        {"author contains m", {}, terminal_, m},
        {"author is müller", {}, terminal_, title + red("Müller") + "\n"},
        {"author not-contains z", {}, terminal_, title + rows},
        {"folder is-not-empty", {"-c", "name contains ü"}, terminal_, title + rows}};
    for (const auto& [criterion, more, how, table] : cases) {
        const Texts options{"--columns", "author", "-c", "status = ROH", "-c", criterion};
        EXPECT_EQ(shown(plus(options, more), how), table) << criterion << joined(more);
    }
}

TEST_F(OnATerminal, WhatWasFoundIsSeenInACutCell) {
    const std::string a(30, 'a');
    const std::string b(30, 'b');
    store_.add("cut/2$CUT@@14$Abel@@11$" + a + "knee" + b + ".WAV");
    store_.add("cut/2$CUT@@14$Bea@@11$üüüüüüüüüühip" + b + ".WAV");
    const std::tuple<Texts, std::string, std::string> cases[] = {
        // options, width of the terminal, what it shows
        {{"-c", "subject contains knee"}, "20", "Abel    …aaa" + red("knee") + "bbb…\n"},
        {{"-c", "subject contains hip"}, "20", "Bea     …üüü" + red("hip") + "bbbb…\n"},
        {{"-c", "subject contains aa"}, "20", "Abel    " + red(a.substr(0, 11)) + "…\n"},
        {{"-c", "subject contains kneebb"}, "20", "Abel    …aa" + red("kneebb") + "bb…\n"},
        {{"-c", "subject is " + a + "knee" + b}, "20", "Abel    " + red(a.substr(0, 11)) + "…\n"},
        {{"--columns", "worktype"}, "8", "Subject   Work ty…\x1B[0m\n"},
        {{"--columns", "path", "-c", "subject contains knee"}, "100", a + red("knee") + b}};
    for (const auto& [more, width, cell] : cases) {
        const Texts options{"-c", "folder contains cut", "--columns", "author,subject"};
        EXPECT_PRED2(holds, shown(plus(options, more), with({{"COLUMNS", width}})), cell)
            << joined(more);
    }
    EXPECT_EQ(shown({"--count-by", "subject", "author:Abel"}, with({{"COLUMNS", "20"}})),
              "\x1B[1;4mSubject        Count\x1B[0m\naaaaaaaaaaaa…  1\n");
    EXPECT_PRED2(holds, shown({"--explain", "subject:" + a + " " + b}, with({{"COLUMNS", "60"}})),
                 "  \"Subject\" contains                0 of 25\n    " + a + "\n    " + b + "\n");
}

TEST_F(OnATerminal, RowsLeadToTheirFiles) {
    const std::string begin =
        "\x1B]8;;file://" + tests::shellOutput("printf %s \"$(uname -n)\"") + root();
    const std::string file = "/2%24ROH%40%406%2400%2401%2430%40%4014%24M%C3%BCller";
    const Texts options{"--columns=author", "-c",           "subject is-not-empty", "-c",
                        "status = ROH",     "--color=never"};
    const Texts always = plus(options, {"--hyperlink=always"});
    for (const std::string& table :
         {shown(options, with({{"VTE_VERSION", "5000"}})),
          shown(options, with({{"TERM", "xterm-kitty"}})), shown(always, {})}) {
        EXPECT_PRED2(holds, table, begin + file);
        EXPECT_PRED2(holds, table, ".WAV\x1B\\Müller\x1B]8;;\x1B\\\n");
    }
    for (const ProgramRun& how : {terminal_, with({{"VTE_VERSION", "4999"}}), ProgramRun{}})
        EXPECT_EQ(shown(options, how), "Author\nMüller\n");
    EXPECT_PRED2(holds, shown(plus(always, {"--columns=author,path"}), {}), "Müller  " + begin);
    const Texts paths = plus(always, {"--format", "paths"});
    EXPECT_PRED2(holds, shown(paths, {}), ".WAV\x1B\\" + root() + "/2$ROH");
    EXPECT_FALSE(holds(shown(plus(paths, {"-0"}), terminal_), "\x1B"));
    EXPECT_PRED2(holds, fileLink("", "/azAZ09-._~ %ü"), "/azAZ09-._~%20%25%C3%BC\x1B\\");
}

TEST_F(OnATerminal, AllOfAFieldIsShownInItsColumn) {
    const std::string name = "x/2$ROH@@11$one two three four@@91$" + std::string(30, 'n') + "ü.WAV";
    store_.add(name);
    const ProgramRun how = with({{"COLUMNS", "44"}, {"NO_COLOR", "1"}});
    const std::string table =
        std::regex_replace(run({"show", store_.native(name)}, how).output, std::regex("\r"), "");
    const std::string blanks(28, ' ');
    EXPECT_PRED2(holds, table,
                 "Subject        one two   one two\n" + blanks + "three     three\n" + blanks +
                     "four      four\n");
    EXPECT_PRED2(holds, table, "\n" + blanks + "nnnnnnü   nnnnnnü\n");
    EXPECT_PRED2(holds, run({"show", "--color=always", store_.native(name)}).output, "\x1B[");
    for (const std::string& line : split(run({"fields"}, how).output, '\n'))
        EXPECT_LE(columnCount(line), 70U) << line;
}

TEST_F(OnATerminal, PagerForWhatIsLongerThanTheScreen) {
    const std::string pages = "sed s/^/P:/";
    const std::string signals = // are as they were for us
        "sh -c \"ulimit -c 0; sh -c 'kill -XFSZ \\$\\$; echo lives'; echo left\" 2>/dev/null";
    const std::string none = "ovsearch: there is no pager \"no-such-pager\"; OVSEARCH_PAGER names "
                             "another one, --pager never goes without\nSubject\n";
    const std::string notRun =
        "ovsearch: the pager cannot be run; OVSEARCH_PAGER names another one";
    const std::tuple<std::string, Texts, int, std::string> cases[] = {
        // the pager, options, rows of the terminal (0: none), what is seen first
        {pages, {}, 10, "P:Subject\nP:"},
        {pages, {"--sort", "subject"}, 21, "P:Subject\nP:"},
        {pages, {}, 22, "Subject\n"},
        {pages, {"--count-by", "subject"}, 10, "P:Subject  Count\nP:"},
        {pages, {"--explain"}, 2, "P:All of these, in "},
        {signals, {}, 10, "left"},
        {pages, {"--pager=always"}, 22, "P:Subject\n"},
        {pages, {"--pager=never"}, 10, "Subject\n"},
        {pages, {"--pager=always"}, 0, "Subject\n"},
        {"no-such-pager", {}, 10, none},
        {"X= no-such-pager 2>/dev/null", {}, 10, notRun},
        // What is to be told waits until the screen is free again.
        {"wc -l; echo left", {"--limit=15"}, 10, "16\nleft\novsearch: the limit of 15 was reached"},
        // Whoever leaves it early has seen enough.
        {"head -n 1", {}, 10, "Subject\n"}};
    for (const auto& [pager, more, rows, beginning] : cases) {
        ProgramRun how = with({{"OVSEARCH_PAGER", pager}, {"PAGER", "false"}}, rows);
        how.onTerminal = rows > 0;
        const Texts options{"--columns", "subject", "-c", "status = MAI", "--color=never"};
        const std::string output = shown(plus(options, more), how);
        EXPECT_TRUE(output.starts_with(beginning)) << beginning << "\n" << output;
    }
    // What no eye sees and bytes beyond the first of a letter take no room.
    ProgramRun small = with({{"OVSEARCH_PAGER", pages}}, 3);
    small.columns = 70;
    EXPECT_FALSE(holds(shown({"-c", "status = STOP", "--columns", "subject", "--hyperlink=always",
                              "--color=always"},
                             small),
                       "P:"));
    small.columns = 30; // the way to the store takes two rows
    EXPECT_TRUE(shown({"-c", "status = STOP", "--explain"}, small).starts_with("P:"));
    const ProgramRun dumb = with({{"OVSEARCH_PAGER", pages}, {"TERM", "dumb"}}, 10);
    EXPECT_FALSE(holds(shown({"-c", "status = MAI"}, dumb), "P:"));
    for (const char* own : {"FRX", "M"}) { // the user's own, if there is one
        ProgramRun less = with({{"OVSEARCH_PAGER", "echo $LESS; cat"}}, 10);
        if (own == std::string("M"))
            less.environment["LESS"] = own;
        EXPECT_TRUE(shown({"-c", "status = MAI"}, less).starts_with(own));
    }
    // Ctrl-C is the pager's while it is there.
    const ProgramRun how = with(
        {{"OVSEARCH_PAGER", "cat >&2; kill -INT $PPID; ls /; kill -INT $PPID; echo left"}}, 10);
    const ProgramResult result = find({"-c", "status = MAI"}, how);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_PRED2(holds, result.output, "left");
}

TEST(TerminalInterface, SaysWhatABoxWouldOnOneLine) {
    TerminalInterface terminal;
    testing::internal::CaptureStderr();
    platform::MessageBox box;
    box.text = "It is lost.\r\n\r\nFind it.";
    terminal.showMessage(box);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ovsearch: It is lost. Find it.\n");
}

TEST(FedProgram, SaysThatItCouldNotBeStarted) {
    platform::FedProgram program;
    const std::string longerThanAnyMayBe(1 << 20, '=');
    EXPECT_FALSE(program.start("cat", longerThanAnyMayBe).ok());
}

} // namespace
} // namespace ov::cli
