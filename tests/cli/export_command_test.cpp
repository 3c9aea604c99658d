// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/cli/cli_fixture.h"

// `ovsearch export`, run as a person or a script runs it.

namespace ov::cli {
namespace {

using tests::shellOutput;

class ExportCommand : public Cli {
protected:
    ProgramResult exportTo(const std::string& name, const Texts& options = {},
                           const ProgramRun& how = {}) const {
        return run(plus({"export", settings_.native(name), root()}, options), how);
    }
    std::string content(const std::string& name) const {
        return shellOutput("cat '" + settings_.native(name) + "'");
    }
};

TEST_F(ExportCommand, WritesWhatFindFinds) {
    store_.add("2$WAV@@14$Zeh@@6$00$00$20.WAV").add("a/2$ROH@@14$Müller@@5$HOCH.WAV");
    EXPECT_EQ(exportTo("l.csv", {"--columns", "author,priority", "--sort", "author"}).exitCode, 0);
    EXPECT_EQ(content("l.csv"), "\xEF\xBB\xBF"
                                "Author,Priority\r\nMüller,High\r\nZeh,Normal\r\n");
    exportTo("t.csv", {"--columns", "author,priority", "--sort", "author", "--separator", "tab"});
    EXPECT_EQ(content("t.csv").substr(3), "Author\tPriority\r\nMüller\tHigh\r\nZeh\tNormal\r\n");
    EXPECT_EQ(find({"--format", "csv", "--columns", "author", "--columns", "priority", "--sort",
                    "author", "--separator", ";"})
                  .output,
              "author;priority\r\nMüller;High\r\nZeh;Normal\r\n");
    const ProgramRun how{.onTerminal = true};
    const ProgramResult shown = exportTo("l.json", {"--columns", "author,length"}, how);
    EXPECT_PRED2(holds, shown.output, "1 of 2 rows");
    EXPECT_TRUE(shown.output.ends_with("\r\x1B[K")) << shown.output;
    EXPECT_EQ(content("l.json"), find({"--format", "json", "--columns", "author,length"}).output);
    const ProgramRun full{.onTerminal = true, .longestFile = 10};
    const std::string before = content("l.json");
    const ProgramResult refused = exportTo("l.json", {"--force"}, full);
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_PRED2(holds, refused.output, "\r\x1B[Kovsearch: ");
    EXPECT_PRED2(holds, refused.output, "l.json: File too large");
    EXPECT_EQ(content("l.json"), before);
    EXPECT_EQ(exportTo("l.txt", {"-c", "author is nobody"}).exitCode, 1);
    EXPECT_FALSE(fs::exists(settings_.native("l.txt"))) << "nothing found";
}

TEST_F(ExportCommand, InterruptedWritesNothing) {
    tests::addEndlessTree(store_);
    const ProgramRun how{.interruptAt = " hits, in ", .onTerminal = true};
    const ProgramResult result = exportTo("l.csv", {}, how);
    EXPECT_EQ(result.exitCode, -SIGINT);
    EXPECT_PRED2(holds, result.output, "l.csv was not written");
    EXPECT_FALSE(fs::exists(settings_.native("l.csv")));
}

#ifdef OV_PDF_MODULE
// Read back by others.
TEST_F(ExportCommand, WritesPages) {
    for (int i = 100; i < 300; ++i)
        store_.add("2$WAV@@14$Author " + std::to_string(i) + "@@6$00$00$20.WAV");
    for (const char* name :
         {"=1+1", "two\nlines", "\xE2\x80\xAEtxet\xE2\x80\xAC", "\xD7\xA9\xD7\x9C"})
        store_.add(std::string("2$ROH@@14$") + name + ".WAV");
    ASSERT_EQ(
        exportTo("l.pdf", {"--columns", "author,length,status", "--sort", "author", "--language",
                           "de", "--title", "Liste (Ä)", "-c", "author is-not-empty"})
            .exitCode,
        0);
    const std::string file = "'" + settings_.native("l.pdf") + "'";
    EXPECT_PRED2(holds, shellOutput("qpdf --check " + file), "No syntax or stream encoding errors");
    const std::string pages = shellOutput("pdfinfo " + file + "; pdftotext -layout " + file + " -");
    for (const char* part :
         {"Title:           Liste (Ä)", "Creator:         OVSearch", "\"Autor\" ist nicht leer",
          "Author 100", "Author 299", "00:00:20", "=1+1", "two lines", "Diktiert", "Seite 1 von 4",
          "Seite 4 von 4", "Gedruckt am"})
        EXPECT_PRED2(holds, pages, part);
}
#endif

} // namespace
} // namespace ov::cli
