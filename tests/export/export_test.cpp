// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/export_settings.h"
#include "tests/export/export_fixture.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <regex>

namespace ov::exporting {
namespace {

TEST_F(Export, CsvHoldsEveryNameAndNoFormula) {
    addHostile();
    std::string expected = "\xEF\xBB\xBF"
                           "Author;Number;Dictated;Length\r\n";
    for (const auto& [author, inCsv] : hostile)
        expected.append(inCsv).append(";;;\r\n");
    EXPECT_EQ(text(Format::csv), expected);
    document_.columns = {columnOf(8)};
    expected = "\xEF\xBB\xBFNumber\r\n";
    for (std::size_t i = 0; i < count(); ++i)
        expected.append("\"\"\r\n");
    EXPECT_EQ(text(Format::csv), expected) << "readers pass over an empty line";
}

TEST_F(Export, JsonHoldsEveryNameAndWhatItIs) {
    addHostile();
    add("a", "@@7$20.11.2026 17$05$00@@6$00$02$15@@12$42");
    add("b", "@@7$20.11.2026@@6$later@@12$007");
    const auto json = nlohmann::json::parse(text(Format::json));
    ASSERT_EQ(json.size(), count());
    for (std::size_t i = 0; i + 3 < count(); ++i)
        EXPECT_EQ(json[i]["author"], hostile[i].first);
    EXPECT_EQ(json[count() - 3]["author"], "Müller");
    EXPECT_EQ(json[count() - 2]["values"].dump(),
              R"({"author":"a","dictated":"2026-11-20T17:05:00","length":135,"number":42})");
    EXPECT_EQ(json[count() - 1]["values"].dump(),
              R"({"author":"b","dictated":"2026-11-20","number":"007"})");
    EXPECT_EQ(json[count() - 1]["number"], "007");
}

TEST_F(Export, HtmlHasNoMarkupOfOthers) {
    addHostile();
    document_.title = "<b>&\"";
    document_.criteria = {"\"Author\" contains <i>\u0080\u009F\u00A0\x7F"};
    const std::string html = text(Format::html);
    document_.title.clear();
    EXPECT_PRED2(holds, text(Format::html), "<title>-</title>") << "a page needs one";
    for (const char* never : {"\u0080", "\u009F", "\x7F", "<script", "<b>", "<i>", "\x1B", "\x01",
                              "\r", "\xEF\xBF\xBE"})
        EXPECT_FALSE(holds(html, never)) << never;
    for (const char* part :
         {"&lt;script&gt;alert(1)&lt;/script&gt;&amp;amp;", "<title>&lt;b&gt;&amp;&quot;</title>",
          "<th scope=\"col\" dir=\"auto\">Author</th>", "<caption>", "<html lang=\"en\">", "Müller",
          "\xE2\x90\x9B[31m", "/store/", "line\nend\u240D\nagain", "mark \uFFFD",
          "<li dir=\"auto\">&quot;Author&quot; contains &lt;i&gt;\uFFFD\uFFFD\u00A0\u2421</li>"})
        EXPECT_PRED2(holds, html, part);
    const std::regex cell("<td ");
    EXPECT_EQ(std::distance(std::sregex_iterator(html.begin(), html.end(), cell), {}),
              4 * rows_.count());
}

TEST_F(Export, TextHasALineForEveryRow) {
    addHostile();
    const std::string lines = text(Format::text);
    EXPECT_PRED2(holds, lines, "\nline end  again\t\t\t\n\\u202Egpj.exe\\u202C\t");
    for (const char* never : {"\r", "\x1B", "\x01", "\x7F"})
        EXPECT_FALSE(holds(lines, never));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), rows_.count() + 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\t'), 3 * (rows_.count() + 1));
}

TEST_F(Export, CriteriaStandInWords) {
    const modDictation::Criterion one{5, 17, "M", ""};
    EXPECT_EQ(describe({"", {{}}}).criteria, Cells{"No search criteria: all dictations"});
    EXPECT_EQ(describe({"", {one}}).criteria, Cells{"\"Author\" contains M"});
    for (const auto& [all, text] :
         {std::pair(false, "Finds dictations that meet at least one criterion."),
          std::pair(true, "Finds dictations that meet all criteria.")})
        EXPECT_EQ(describe({"", {one, one}, all}).criteria[0], text);
    const modDictation::Criterion below{5, 17, "M", "", true};
    EXPECT_EQ(describe({"", {one, below}}).criteria[2], "or: \"Author\" contains M");
    EXPECT_EQ(describe({"", {one, below}, false}).criteria[2], "and: \"Author\" contains M");
    EXPECT_EQ(describe({"", {{}, below}}).criteria.size(), 3U) << "the empty one is in the group";
    for (const auto& [number, name] :
         {std::pair(0, "de"), std::pair(7, "de"), std::pair(9, "en")}) {
        modLanguage::SetLanguage(number, 0);
        EXPECT_EQ(describe({}).language, name) << number;
    }
}

TEST_F(Export, KnowsFormatsByNameAndBoundsSizes) {
    const ExportSettings settings(path("local.ini"));
    EXPECT_TRUE(settings.format() == Format::pdf && settings.folder().empty());
    for (const auto& [name, format] : std::map<std::string, Format>{{"a.XLSX", Format::xlsx},
                                                                    {"x/a.b.Htm", Format::html},
                                                                    {".tsv", Format::text},
                                                                    {"a.json", Format::json}})
        EXPECT_EQ(formatOfFile(name), format) << name;
    for (const char* none : {"a.b/c", "a.b\\c", "csv", "a.csvx", "a.csv."})
        EXPECT_EQ(formatOfFile(none), std::nullopt) << none;
    for (const auto& [written, size] :
         {std::pair("1000", 36), std::pair("36", 36), std::pair("4", 4), std::pair("3", 0)}) {
        write("local.ini", "[OVSearch.ctrlOVSearch]\r\nPrintOrientation=7\r\nPrintFontName=Serif"
                           "\r\nPrintFontSize=" +
                               std::string(written) + "\r\n");
        EXPECT_EQ(settings.pageStyle().fontSize, size) << written;
    }
    const auto style = settings.pageStyle();
    EXPECT_TRUE(style.orientation == Orientation::landscape && style.fontName == "Serif");
}

} // namespace
} // namespace ov::exporting
