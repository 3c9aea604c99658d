// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// That no file is called written which is not whole.

#include "export/pdf_module.h"
#include "export/xlsx_writer.h"
#include "platform/loaded_module.h"
#include "tests/export/export_fixture.h"

#include <algorithm>

namespace ov::exporting {
namespace {

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
