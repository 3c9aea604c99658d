// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/export/print/printed_pages_fixture.h"

#include <sstream>

namespace ov::exporting::print {
namespace {

TEST_F(PrintedPages, HaveTitleCriteriaCaptionsRowsAndFoot) {
    document.title = "Proof list";
    document.criteria = {"All of:", "Author contains Müller"};
    document.storeFolder = "/store/" + std::string(90, 'x');
    add("Author");
    add("Dictated", {}, dateField);
    add("Subject of the dictation", "Subject");
    cells.rows = {{"Müller", "20.11.2026 17:05:00", "short"},
                  {"Zeh", "",
                   "line\nend, " + std::string(40, 'w') +
                       " and many more words that do "
                       "not fit into three lines " +
                       std::string(99, 'm')},
                  {"", "", "blanks behind" + std::string(300, ' ')},
                  {"Last", "21.11.2026", "@" + std::string(31, 'm') + "i"}};
    EXPECT_EQ(pages()[0].lines(),
              (Texts{"28: 28 Proof | 76 list", "49: 28 All of:", "58: 28 Author contains Müller",
                     "77: 28 Author | 69 Dictated | 169 Subject of the dictation",
                     "90: 28 Müller | 69 20.11.2026 17:05:00 | 169 short",
                     "104: 28 Zeh | 169 line end, " + std::string(40, 'w') + " and many",
                     "115: 169 more words that do not fit into three lines",
                     "125: 169 " + std::string(44, 'm') + "…", "139: 169 blanks behind",
                     "152: 28 Last | 69 21.11.2026 | 169 @" + std::string(31, 'm') + "i",
                     "804: 28 Printed today | 87 · | 95 /store/" + std::string(81, 'x') +
                         "… | 522 Page 1 of 1"}));
    Texts table = shades(165);
    table.resize(6); // without the foot
    EXPECT_EQ(table, (Texts{"75-88 236", "88-89 90", "102-102 200", "137-137 200", "150-151 200",
                            "164-164 200"}));
    EXPECT_EQ(shades(20), Texts{}) << "the margin";
    document.criteria.assign(14, "x");
    EXPECT_EQ(pages()[0].lines()[13], "160: 28 …") << "the others are left out";
    document.title += " " + std::string(200, 'x');
    EXPECT_EQ(pages()[0].lines()[2], "65: 28 x") << "below two lines";
    document.title = "Proof list";
    cells.rows = {{"Müller", "20.11.2026 17:05:00", "short"}};
    pages();
    EXPECT_EQ(shades(516), Texts{}) << "as far as the columns, which are as wide as what they hold";
}

TEST_F(PrintedPages, TurnAndShrinkUntilColumnsFit) {
    const std::string words = "some words and some more of them";
    // Columns, their text, the size of the font and the direction that are wished; then width of
    // the paper, height of a line, lines, captions.
    using Case = std::tuple<int, std::string, std::int32_t, Orientation, std::string>;
    const std::vector<Case> cases = {
        {2, "narrow", 0, Orientation::automatic, "595 105 3 28 Caption | 73 Caption"},
        {2, "narrow", 0, Orientation::landscape, "842 105 3 28 Caption | 73 Caption"},
        {4, words, 0, Orientation::automatic, "842 105 3 28 Caption | 200 Caption"},
        {4, words, 0, Orientation::portrait, "595 105 4 28 Caption | 164 Caption"},
        {16, "unbreakable", 0, Orientation::automatic, "842 82 3 28 Caption | 77 Caption"},
        {30, "unbreakable", 0, Orientation::automatic, "842 70 4 28 Cap | 55 Cap"},
        {14, "unbreakable", 12, Orientation::automatic, "842 140 4 28 Cap | 85 Cap"},
        {14, "unbreakable", 0, Orientation::portrait, "595 70 4 28 Caption | 67 Caption"}};
    for (const auto& [columns, text, fontSize, orientation, expected] : cases) {
        document.columns.clear();
        addColumns(columns, text);
        document.style.fontSize = fontSize;
        document.style.orientation = orientation;
        const PdfPage page = pages().at(0);
        const Texts lines = page.lines();
        std::ostringstream seen;
        seen << std::lround(page.size.width()) << " "
             << std::lround(page.words[0].place.height() * 10) << " " << lines.size() << " "
             << lines[0].substr(4, lines[0].find(" | ", 17) - 4);
        EXPECT_EQ(seen.str(), expected);
    }
}

TEST_F(PrintedPages, TakeARowEachWhereTheyAreTooSmall) {
    document.style.fontSize = 36;
    addColumns(1, "several words that take more lines than one", 3);
    ListPages pages(document, cells, QPageSize(QSizeF(200, 120), QPageSize::Point));
    EXPECT_TRUE(pages.layOut([](std::int64_t) { return true; }));
    EXPECT_EQ(pages.count(), 3);
    EXPECT_EQ(pages.rowsBefore(1), 1);
}

// Dates stay whole for longest, then the words of captions; both are taken from what is wide.
TEST_F(PrintedPages, ShareTheWidth) {
    document.style.fontSize = 9;
    document.style.orientation = Orientation::portrait;
    add("Rindfleischetikettierungsgesetz", "Gesetz");
    for (int i = 0; i < 4; ++i)
        add("Dictated", {}, dateField);
    for (const char* caption : {"Bemerkung 1", "Kennzeichnungen", "S 2", "S 3"})
        add(caption);
    cells.rows = {Texts(9, "20.11.2026 17:05:00")};
    cells.rows[0][0] = std::string(60, 'w');
    Texts lines = pages().at(0).lines();
    EXPECT_EQ(lines[0] + lines[1],
              "42: 28 Gesetz | 80 Dictated | 137 Dictated | 195 Dictated | 252 Dictated | "
              "309 Bemerkung | 373 Kennzeichnungen | 469 S 2 | 521 S 352: 309 1");
    EXPECT_EQ(lines[3], "77: 28 wwwwww | 80 17:05:00 | 137 17:05:00 | 195 17:05:00 | "
                        "252 17:05:00 | 309 17:05:00 | 373 17:05:00 | 469 6 | 521 6");
    EXPECT_EQ(lines[4], "87: 28 wwwww… | 469 17:05:00 | 521 17:05:00");
    add("Donaudampfschifffahrt");
    add("Steuervergünstigungen");
    cells.rows[0].resize(11);
    lines = pages().at(0).lines();
    EXPECT_EQ(lines[0],
              "42: 28 Gesetz | 73 Dictated | 131 Dictated | 188 Dictated | 245 Dictated | "
              "302 Beme… | 347 Kenn… | 392 S 2 | 437 S 3 | 482 Dona… | 527 Steue…");
    EXPECT_TRUE(lines[2].ends_with("302 026 | 347 026 | 392 026 | 437 026")) << lines[2];
}

TEST_F(PrintedPages, BreakBetweenRows) {
    document.title = "Proof list";
    add("Number");
    add("Text");
    for (int i = 0; i < 130; ++i)
        cells.rows.push_back({std::to_string(i), i % 7 == 0 ? "ab " + std::string(297, 'w') : "x"});
    const std::vector<PdfPage> all = pages();
    ASSERT_EQ(all.size(), 4U);
    EXPECT_TRUE(all[0].lines()[2].starts_with("72: 28 0 | 74 ab ww"))
        << "the word would not be whole on a line of its own either";
    const Texts ends = {"758: 28 41 | 74 x", "782: 74 " + std::string(65, 'w') + "…",
                        "775: 28 128 | 74 x", "61: 28 129 | 74 x"};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Texts lines = all[i].lines();
        EXPECT_EQ(lines[0] + lines[1], i == 0 ? "28: 28 Proof | 76 list58: 28 Number | 74 Text"
                                              : "28: 28 Proof list47: 28 Number | 74 Text");
        EXPECT_EQ(lines[lines.size() - 2], ends[i]);
        EXPECT_TRUE(lines.back().ends_with("Page " + std::to_string(i + 1) + " of 4"));
    }
}

TEST_F(PrintedPages, TellHowFarTheyAreAndStopWhenTold) {
    addColumns(1, "text", 500);
    std::vector<std::int64_t> told;
    PdfFile file;
    EXPECT_TRUE(writePdf(document, cells, file, [&](std::int64_t done) {
        told.push_back(done);
        return true;
    }));
    EXPECT_TRUE(std::ranges::is_sorted(told));
    EXPECT_EQ(told.front(), 0);
    EXPECT_EQ(told[499], 250) << "half when the pages have been found";
    EXPECT_EQ(told.back(), 500);
    for (const std::int64_t last : {100, 400})
        EXPECT_FALSE(writePdf(document, cells, file, [&](std::int64_t done) {
            EXPECT_LT(done, last + 60);
            return done < last;
        }));
}

// Words of the program's own font, so that every machine breaks them at the same places.
TEST_F(PrintedPages, WrapEveryScript) {
    add("Text");
    add("Last");
    const auto times = [](int count, const char* text) {
        return QString::fromUtf8(text).repeated(count).toStdString();
    };
    const Texts words = {"Mu\u0308ller ", "x\u0302yz ", "Мюллер ", "مولر ", "מולר "};
    for (const std::string& word : words)
        cells.rows.push_back({times(90, word.c_str()), "end"});
    cells.rows.push_back({"", "end"});
    cells.rows.push_back({"Z" + times(60, "\u0301"), "end"});
    const PdfPage page = pages().at(0);
    std::vector<double> tops; // of rows
    std::vector<double> cut;
    for (const PdfWord& word : page.words) {
        if (word.text == "end")
            tops.push_back(word.place.top());
        if (word.text.find("…") != std::string::npos)
            cut.push_back(word.place.top());
    }
    ASSERT_EQ(tops.size(), cells.rows.size());
    ASSERT_EQ(cut.size(), words.size());
    for (std::size_t i = 0; i < words.size(); ++i) { // three lines each
        EXPECT_NEAR(cut[i] - tops[i], 2 * 10.5, 0.6) << words[i];
        EXPECT_NEAR(tops[i + 1] - tops[i], 3 * 10.5 + 3.2, 0.6) << words[i];
    }
    EXPECT_EQ(page.find("Müller").place.left(), page.find("Text").place.left()) << "composed";
    double right = 0;
    for (const PdfWord& word : page.words)
        if (word.text.starts_with("\xD7"))
            right = std::max(right, word.place.right());
    EXPECT_NEAR(right, page.find("end").place.left() - 5.8, 0.5) << "from right to left";
    for (const std::string& shade : shades(33))
        EXPECT_FALSE(std::stoi(shade) > tops[5] && std::stoi(shade) < tops[5] + 8)
            << "marks stay in their cell: " << shade;
    for (int i = 0; i < 5; ++i)
        add("Donaudampfschifffahrtsgesellschaft x\u0302yz");
    cells.rows = {Texts(7, "x")};
    document.style.orientation = Orientation::portrait;
    EXPECT_PRED2(tests::holds, pages().at(0).lines()[1], ": 28 x | ")
        << "nothing behind a word that is cut";
}

} // namespace
} // namespace ov::exporting::print
