// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_facts.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "platform/locale.h"
#include "support/language/modLanguage.h"
#include "support/log.h"
#include "support/modFilePath.h"
#include "support/modWFRoutines.h"
#include "tests/fake_host.h"
#include "tests/settings_fixture.h"

namespace ov::modDictation {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* askForDirectory = "PI_GetDirectory(32)";
constexpr const char* columnsFile = "columns/SearchColumns.dat";

// The host's directory 32 is "columns" of the folder, which is the control's own directory too.
class FieldTable : public tests::SettingsTest {
public:
    FieldTable() {
        fs::create_directory(folder() / "columns");
        host().answers[askForDirectory] = path("columns") + "\\";
        forget();
        modFilePath::SetDirectory(modFilePath::directory_id::module, path(""));
        modLanguage::SetLanguage(9, 0);
        platform::setLocale(platform::localeNamed("de"));
        BuildSearchFieldTable();
    }
    ~FieldTable() override {
        forget();
        modLanguage::reset();
        platform::setLocale(std::nullopt);
    }

protected:
    tests::FakeHost& host() { return *plugIn_.host; }

    static void show(std::int32_t id, bool visible) {
        searchFields()[static_cast<std::size_t>(id)].Visible = visible;
    }
    static std::string hidden() {
        std::string list;
        for (const SearchField& field : searchFields())
            if (!field.Visible)
                list += std::to_string(field.Id) + " ";
        return list;
    }

    // What was logged, without time stamps.
    static Lines logged() {
        Lines lines = recentLogLines();
        for (std::string& line : lines)
            line.erase(0, line.find(" - ") + 3);
        return lines;
    }

private:
    static void forget() {
        resetSearchFieldTable();
        modFilePath::reset();
        modWFRoutines::reset();
        resetLog();
    }

    tests::StartedPlugIn plugIn_;
};

TEST_F(FieldTable, RowsAndCaptionsInTheLanguageOfTheUser) {
    const std::string name =
        "2$ROH@@3$f3@@4$01.02.2026@@5$HOCH@@6$00$01$30@@7$03.02.2026@@8$f8@@9$f9@@10$f10@@11$f11"
        "@@12$f12@@13$f13@@14$f14@@16$f16@@17$2@@20$04.02.2026@@91$f91@@92$f92@@95$f95@@98$D"
        "@@99$MAI@@23$x";
    std::string captions;
    std::string unusual; // sorted by another, at the place of another
    std::string values;
    for (const SearchField& field : searchFields()) {
        captions += field.Caption + "/" + field.ShortCaption + " ";
        if (const int by = fieldDefinition(field.Id).sortField; by != field.Id)
            unusual += std::to_string(field.Id) + ">" + std::to_string(by) + " ";
        if (field.Position != field.Id)
            unusual += std::to_string(field.Id) + "@" + std::to_string(field.Position) + " ";
        values += shownValue(field.Id, {"\\s\\Ward\\", field.Id == 26 ? "f26" : name}) + " ";
    }
    EXPECT_EQ(captions,
              "(no field)/(no field) Folder/Folder Status/S Marker/M Author code/Code "
              "Author/Author Typist/Typist State flags/Flags Number/No. Dictated/Dictated -/- "
              "Changed/Changed -/- Length/Length File number/File no. Priority/P Due date/Due -/- "
              "Subject/Subject Note 1/Note 1 Note 2/Note 2 Column 1/Column 1 Column 2/Column 2 "
              "Work group/Group Work type/Type Second status/S 2 File name/File name ");
    EXPECT_EQ(unusual, "9>10 11>12 16>17 22@23 23@24 24@25 25@26 26@22 ");
    EXPECT_EQ(values,
              " ...\\Ward Draft D f3 f14 f16 In progress f12 03.02.2026 46056 04.02.2026 46057 "
              "00:01:30 f8 High 01.02.2026 46054 f11 f91 f95 f9 f10 f92 f13 Sent by email f26 ");
    EXPECT_EQ(GetSearchFieldCaption(27, true) + GetSearchFieldCaption(-1, false), "<?><?>");

    show(4, false);
    show(24, true);
    modLanguage::SetLanguage(7, 0);
    BuildSearchFieldTable();
    EXPECT_EQ(searchFields()[11].Caption, "Geändert am");
    EXPECT_EQ(searchFields()[14].ShortCaption, "Az.");
    EXPECT_EQ(hidden(), "0 4 25 ") << "the choice of columns is kept";
}

TEST_F(FieldTable, FactsOfADictation) {
    show(8, false);
    std::string facts;
    for (const auto& [caption, value] :
         describeDictation("\\s\\Ward\\2$MAI@@99$ROH@@12$7@@14$M\xFCller.WAV"))
        facts.append(caption).append("=").append(value).append(";");
    EXPECT_EQ(facts, "Folder=...\\Ward;Status=Sent by email;Author=Müller;Number=7;Priority=Normal;"
                     "File name=2$MAI@@99$ROH@@12$7@@14$Müller;Second status=Draft;");
}

TEST_F(FieldTable, CaptionsOfTheHost) {
    write("registry.reg", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\Software\\Orvanta\\WF\\OVGRID]\n"
                          "\"ColFiles\"=\"Fall\"\n\"ColScheduleTime\"=\"Frist\"\n"
                          "\"ColColumn1\"=\"Raum\"\n\"ColColumn2\"=\"\"\n\"Author\"=\"x\"\n");
    platform::reloadRegistry();
    modWFRoutines::reset();
    std::string captions;
    for (const std::int32_t id : {14, 16, 21, 22, 5})
        captions += GetSearchFieldCaption(id, true) + "/" + GetSearchFieldCaption(id, false) + " ";
    EXPECT_EQ(captions, "Fall/Fall Frist/Frist Raum/Raum Column 2/Column 2 Author/Author ");
}

TEST_F(FieldTable, ColumnsAreKeptInAFile) {
    EXPECT_EQ(hidden(), "0 24 25 ");
    show(5, false);
    LoadColumnSettings();
    EXPECT_EQ(hidden(), "0 24 25 ") << "without a file all that can be chosen show";
    EXPECT_EQ(host().takeCalls(), Lines{askForDirectory});

    write(columnsFile, "[ColumnVisible]\n4=0\n7=no\n8=&H1\n9=2\n10=0\n12=0\n24=-1\n0=-1\n"
                       "27=0\n[Other]\n5=0\n");
    LoadColumnSettings();
    EXPECT_EQ(hidden(), "0 4 7 24 25 ") << "only those that can be chosen";

    fs::remove(folder() / columnsFile);
    host().answers[askForDirectory] = path("columns"); // without its end
    show(26, false);
    SaveColumnSettings();
    EXPECT_EQ(read(columnsFile),
              "[ColumnVisible]\r\n1=-1\r\n2=-1\r\n3=-1\r\n4=0\r\n5=-1\r\n6=-1\r\n7=0\r\n8=-1\r\n"
              "9=-1\r\n11=-1\r\n13=-1\r\n14=-1\r\n15=-1\r\n16=-1\r\n18=-1\r\n19=-1\r\n20=-1\r\n"
              "21=-1\r\n22=-1\r\n23=-1\r\n26=0\r\n");
    resetSearchFieldTable();
    BuildSearchFieldTable();
    LoadColumnSettings();
    EXPECT_EQ(hidden(), "0 4 7 24 25 26 ");
    EXPECT_EQ(logged(), Lines());
}

// A bare file name would mean the Windows directory, which is the folder here.
TEST_F(FieldTable, ColumnsThatCannotBeKeptStayAndAreLoggedOnce) {
    const std::string others = "[ColumnVisible]\n5=0\n";
    write("SearchColumns.dat", others);
    fs::create_directory(folder() / columnsFile);
    show(4, false);
    SaveColumnSettings();
    const auto loadAndSave = [] {
        LoadColumnSettings();
        SaveColumnSettings();
    };
    host().refused = {"PI_GetDirectory"};
    loadAndSave();
    host().refused.clear();
    host().answers.clear();
    loadAndSave();
    EXPECT_EQ(hidden(), "0 4 24 25 ");
    EXPECT_EQ(read("SearchColumns.dat"), others);
    EXPECT_EQ(
        logged(),
        (Lines{"ERROR (0): WriteIniString - " + (folder() / columnsFile).native() +
                   ": [ColumnVisible] 1 cannot be written",
               "ERROR (5): LoadColumnSettings - refused", "ERROR (5): SaveColumnSettings - refused",
               "ERROR (0): SaveColumnSettings - SearchColumns.dat: the host has no directory "
               "for it"}));
}

} // namespace
} // namespace ov::modDictation
