// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/field_table.h"
#include "export/file_export.h"
#include "platform/locale.h"
#include "support/language/modLanguage.h"
#include "tests/child_process.h"
#include "tests/run_program.h"
#include "tests/settings_fixture.h"

namespace ov::exporting {

using namespace std::string_literals;
using tests::holds;
using tests::shellOutput;
using Cells = std::vector<std::string>;

inline const GoOn always = [](std::int64_t) { return true; };

// Authors of dictations, and their cells of CSV: an apostrophe before what some reader might run,
// no control, quotation marks where a reader might see the end of the cell.
inline const std::pair<std::string, std::string> hostile[] = {
    {"=HYPERLINK(1)", "'=HYPERLINK(1)"},
    {"+1;=2", "\"'+1;'=2\""},
    {"-1, 2", R"("'-1, 2")"},
    {"@SUM(1)", "'@SUM(1)"},
    {"\t=1", "' =1"},
    {"\r=1", "' =1"},
    {"\v=1+1", "' =1+1"},
    {"x;\f=1+1", "\"x;' =1+1\""},
    {"\u0085=1+1", "' =1+1"},
    {"\u2028=cmd", "' =cmd"},
    {"<script>alert(1)</script>&amp;", "\"<script>alert(1)</script>&amp;\""},
    {"\"quoted\", comma; semicolon", R"("""quoted"", comma; semicolon")"},
    {"line\nend\r\nagain", "line end  again"},
    {"\xE2\x80\xAEgpj.exe\xE2\x80\xAC", "\\u202Egpj.exe\\u202C"},
    {"\x1B[31m\x01\x7F", "\\u001B[31m\\u0001\\u007F"},
    {"mark \xEF\xBF\xBE!", "mark \xEF\xBF\xBE!"},
    {std::string(200, 'x'), std::string(200, 'x')},
    {"  ", "  "},
    {"a;=1, \"+1\t-1;b-c", R"("a;'=1,' ""+1 -1;b-c")"},
    {"＝1", "'＝1"},
    {"M\xFCller", "Müller"}};

class Export : public tests::SettingsTest {
public:
    Export() {
        platform::setLocale(platform::Locale{platform::DateOrder::dayMonthYear, '.', true, false,
                                             "AM", "PM", ',', 1});
        modLanguage::SetLanguage(9, 0);
        modLanguage::LoadLanguageFile();
        modDictation::BuildSearchFieldTable();
        document_ = describe({"\\store\\", {}});
        document_.columns = {columnOf(5), columnOf(8), columnOf(9), columnOf(13)};
    }
    ~Export() override {
        modDictation::resetSearchFieldTable();
        modLanguage::reset();
        platform::setLocale(std::nullopt);
    }

protected:
    void add(const std::string& author, const std::string& more = {}) {
        hits_.add("\\store\\", "2$WAV@@14$" + escaped(author) + more + ".WAV");
    }
    void addHostile() {
        for (const auto& [author, inCsv] : hostile)
            add(author);
    }
    // As a file name holds it.
    static std::string escaped(const std::string& text) {
        static const std::map<char, std::string> escapes = {{'"', "'"}, {'<', "³³"}, {'>', "%%"},
                                                            {'/', "_"}, {':', "$#"}, {'.', "!!"}};
        std::string out;
        for (const char c : text)
            out += escapes.contains(c) ? escapes.at(c) : std::string(1, c);
        return out;
    }
    std::size_t count() const { return static_cast<std::size_t>(rows_.count()); }
    std::string text(Format format) const { return *exportText(document_, rows_, format, always); }
    ExportResult toFile(const std::string& name, Format format) const {
        return exportFile(document_, rows_, format, path(name), always, nullptr);
    }
    // What two files of the same list have in common: not the time that stands in some.
    std::string essence(const std::string& name, Format format) const {
        if (format == Format::pdf)
            return std::to_string(fs::file_size(folder() / name));
        return format == Format::xlsx ? shellOutput("unzip -p '" + (folder() / name).native() +
                                                    "' xl/worksheets/sheet1.xml")
                                      : read(name);
    }

    modDictation::DictationList hits_;
    HitRows rows_{hits_};
    Document document_;
};

} // namespace ov::exporting
