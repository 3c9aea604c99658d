// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/export_settings.h"
#include "export/pdf_module.h"
#include "export/xlsx_writer.h"
#include "platform/loaded_module.h"
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
    settings.setFolder(path("gone"));
    EXPECT_EQ(settings.folder(), "") << "where nothing can be written";
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

// The sheet's own XML, as any spreadsheet reads it.
TEST_F(Export, SheetHasTextDatesLengthsAndNumbers) {
    addHostile();
    add("dated", "@@7$20.11.2026 17$05$00@@6$00$02$15@@12$42");
    add("early", "@@7$01.01.1900@@12$007");
    add("_x0041_", "@@12$123456789012345");
    add("long", "@@12$1234567890123456@@7$28.02.1900");
    add("safe", "@@7$01.03.1900");
    document_.sheetName = "[a]: *b?/c\\d, which is longer than a name";
    document_.columns.push_back({"path", pathColumn, "path", "path", 9999});
    ASSERT_TRUE(toFile("out.xlsx", Format::xlsx).ok());
    const auto part = [this](const std::string& name) {
        return shellOutput("unzip -p '" + (folder() / "out.xlsx").native() + "' xl/" + name);
    };
    const std::string sheet = part("worksheets/sheet1.xml");
    EXPECT_FALSE(holds(sheet, "<f>")) << "a formula";
    for (const char* text : {"=HYPERLINK(1)", "&lt;script&gt;", "line\nend_x000D_\nagain", "Müller",
                             "_x001B_[31m", "mark \xEF\xBF\xBD!", "_x005F_x0041_@@", ">007<",
                             ">01.01.1900<", ">28.02.1900<", "<t>1234567890123456<"})
        EXPECT_PRED2(holds, sheet, text);
    for (const char* number : {"s=\"3\"><v>46346.71180555555</v>", "<v>0.0015625</v>", "<v>42</v>",
                               "<v>123456789012345</v>", "s=\"5\"><v>61</v>"})
        EXPECT_PRED2(holds, sheet, number);
    for (const char* look : {"<pane ySplit=\"1\"", "width=\"18.7109375\"", "width=\"60.7109375\"",
                             "orientation=\"landscape\"", "<autoFilter ref=\"A1:E27\""})
        EXPECT_PRED2(holds, sheet, look);
    const std::string book = part("workbook.xml");
    EXPECT_PRED2(holds, book, "name=\"a    b  c d, which is longer t\"");
    EXPECT_PRED2(holds, book, "!$1:$1</definedName>") << "the captions on each page";
    using enum platform::DateOrder;
    for (const auto& [order, format] : {std::pair(dayMonthYear, R"(dd\.mm\.yyyy hh:mm:ss)"),
                                        std::pair(monthDayYear, R"(mm\.dd\.yyyy hh:mm:ss)"),
                                        std::pair(yearMonthDay, R"(yyyy\.mm\.dd hh:mm:ss)")}) {
        platform::Locale locale = platform::locale();
        locale.dateOrder = order;
        platform::setLocale(locale);
        ASSERT_TRUE(toFile("out.xlsx", Format::xlsx).ok());
        EXPECT_PRED2(holds, part("styles.xml"), format);
    }
    EXPECT_EQ(entryCount(), 1U) << "nothing is left beside it";
}

#ifdef OV_PDF_MODULE
// Stopped, refused, or wherever the disk ends: the old file stays and somebody hears of it, or the
// whole new one comes.
TEST_F(Export, NoFileIsHalf) {
    platform::Status loaded;
    const auto* module = platform::loadModule<PdfModule>(loaded);
    ASSERT_TRUE(module != nullptr) << loaded.description();
    const PdfWriter pdf = module->write;
    for (int i = 0; i < 400; ++i)
        add("author " + std::to_string(i));
    for (const FormatInfo& info : formats()) {
        const auto exported = [&](const std::string& name, const GoOn& goOn = always) {
            return exportFile(document_, rows_, info.format, path(name), goOn, pdf);
        };
        ASSERT_TRUE(tests::isTrueInChild([&] { return exported("whole").ok(); })) << info.ending;
        const std::string whole = essence("whole", info.format);
        const auto succeeds = [&](std::uintmax_t room) {
            write("out", "old");
            const bool ok = tests::isTrueWithFileLimit(room, [&] {
                const ExportResult result = exported("out");
                if (!result.ok() && (result.stopped || result.status.description().find("/out: ") ==
                                                           std::string::npos))
                    fs::remove(folder() / "out");
                return result.ok();
            });
            EXPECT_EQ(ok ? essence("out", info.format) : read("out"), ok ? whole : "old")
                << info.ending << " with room for " << room;
            return ok;
        };
        write("out", "old");
        EXPECT_TRUE(tests::isTrueInChild([&] {
            const auto result = exported("out", [](std::int64_t done) { return done < 300; });
            return result.stopped && result.status.ok();
        }));
        fs::permissions(folder(), fs::perms::owner_read | fs::perms::owner_exec);
        EXPECT_TRUE(tests::isTrueUnprivileged([&] { return !exported("out").ok(); }));
        fs::permissions(folder(), fs::perms::owner_all);
        EXPECT_EQ(read("out"), "old");
        std::uintmax_t tooLittle = 0;
        std::uintmax_t enough = 1U << 22U;
        while (enough - tooLittle > 1) {
            const std::uintmax_t between = (tooLittle + enough) / 2;
            (succeeds(between) ? enough : tooLittle) = between;
        }
        for (std::uintmax_t room = enough - 240; room < enough + 720; room += 32)
            succeeds(room);
        fs::remove(folder() / "out");
        EXPECT_EQ(entryCount(), 1U) << "something is left beside it";
    }
}
#endif

// A module may say that all went well.
TEST_F(Export, EndOfAPdfIsLookedAt) {
    static std::string written;
    const PdfWriter pdf = [](const Document&, const RowSource&, Sink& sink, const GoOn&) {
        return sink.write(written);
    };
    for (const auto& [end, whole] :
         {std::pair("1\n%%EOF\n", true), std::pair("23\n%%EOF\n", true),
          std::pair("0\n%%EOF\n", false), std::pair("24\n%%EOF\n", false),
          std::pair("x\n%%EOF\n", false), std::pair("1\n%%EO", false)}) {
        written = std::string("%PDF\nstartxref\n").append(end);
        EXPECT_EQ(exportFile(document_, rows_, Format::pdf, path("l.pdf"), always, pdf).ok(), whole)
            << end;
    }
}

TEST_F(Export, SheetHasARowTooFew) {
    struct ManyRows final : RowSource {
        std::int64_t rows = mostSheetRows;
        std::int64_t count() const override { return rows; }
        Dictation dictation(std::int64_t) const override { return {"\\store\\", "a.WAV"}; }
        std::string text(const Column&, std::int64_t) const override { return {}; }
    } many;
    const auto result = [&] {
        const GoOn never = [](std::int64_t) { return false; };
        return exportFile(document_, many, Format::xlsx, path("l.xlsx"), never, nullptr);
    };
    EXPECT_TRUE(result().stopped);
    ++many.rows;
    EXPECT_EQ(result().status.number(), EFBIG);
}

} // namespace
} // namespace ov::exporting
