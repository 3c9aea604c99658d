// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/language/english_texts.h"
#include "support/language/language_file.h"
#include "support/language/modLanguage.h"
#include "support/language/resource_gateway.h"
#include "support/language/text_expansion.h"
#include "support/modUtil.h"
#include "tests/recording_interface.h"
#include "tests/settings_fixture.h"

#include <array>
#include <regex>
#include <tuple>

namespace ov {
namespace {

using namespace std::string_literals;
using OptionalText = std::optional<std::string>;
using Lines = std::vector<std::string>;

// The folder is where this thread's texts come from.
class LanguageFolder : public tests::SettingsTest {
public:
    LanguageFolder() { start(path("")); }
    ~LanguageFolder() override { start({}); }

protected:
    void load(std::string_view content) {
        write("OVSearch.drl", content);
        ASSERT_TRUE(modLanguage::LoadLanguageFile());
        modLanguage::SetLanguage(9, 0);
    }

private:
    static void start(const std::string& folder) {
        resource_gateway::SetResPath(folder);
        modLanguage::reset();
        modUtil::reset();
    }
};

TEST(LanguageFile, Grammar) {
    const std::pair<OptionalText, Lines> cases[] = {
        // text 1 in English
        {"One",
         {"[9]\n1=One", "[9]\r\n1=One\r\n", "\xEF\xBB\xBF[9]\n1=One\n", "[9]\n1=\"One\"\n",
          " [9] \n 1 =One\n", "[9]\n1=One\n1=Two\n", "[9]\n2=Two\n[7]\n1=Eins\n[9]\n1=One\n"}},
        {" One ", {"[9]\n1= One \r\n", "[9]\n1=\" One \"\n"}},
        {"\"One\"", {"[9]\n1=\"\"One\"\"\n"}},
        {"\"", {"[9]\n1=\"\n"}},
        {"a=\"b\"; c\rd", {"[9]\n1=a=\"b\"; c\rd\n"}},
        {"", {"[9]\n1=\n", "[9]\n1=\"\"\n"}},
        {"Straße", {"[9]\n1=Stra\xDF\x65\n"}},
        {std::nullopt,
         {"[9]\n;1=One\n", "1=One\n[9]\n", "[9]\n2=Two\n[9\n1=One\n", "[9]\n[nine]\n1=One\n",
          "[9]\n[9.]\n1=One\n", "[+9]\n1=One\n", "[9]\n+1=One\n", "[9]\n4294967297=One\n",
          "[9]\n=One\n", "[9]\n1\n", "\0[\0009\0]\0"s}}};
    for (const auto& [text, contents] : cases)
        for (const std::string& content : contents)
            EXPECT_EQ(LanguageFile::parse(content).find(1, 9, 0), text) << content;
}

TEST(LanguageFile, Languages) {
    const LanguageFile file =
        LanguageFile::parse("[7]\n1=Straße\n2=Januar\n[7.2]\n1=Strasse\n[9]\n1=Street\n3=only\n"
                            "[12]\n2=janvier\n");
    const std::tuple<std::int32_t, std::int32_t, std::int32_t, OptionalText> cases[] = {
        {1, 7, 0, "Straße"},  {1, 0, 0, "Straße"}, {1, 7, 2, "Strasse"},
        {1, 0, 2, "Strasse"}, {2, 7, 2, "Januar"}, {1, 10, 1, "Street"},
        {1, 12, 0, "Street"}, {3, 7, 2, "only"},   {2, 9, 0, std::nullopt}};
    for (const auto& [number, language, subLanguage, text] : cases)
        EXPECT_EQ(file.find(number, language, subLanguage), text) << number << " " << language;
}

TEST_F(LanguageFolder, GatewayFindsInstalledFiles) {
    for (const auto& [module, texts, found] : std::vector<std::array<std::string, 3>>{
             {"a/bin", "a/bin/DRL", "a/bin/DRL"},
             {"d/1/2/3/4", "d/share/ovsearch/DRL", "d/share/ovsearch/DRL"},
             {"e/1/2/3/4/5", "e/share/ovsearch/DRL", "e/1/2/3/4/5/DRL"}}) {
        write(texts + "/x.drl", "");
        const std::string place = platform::fromNativePath((folder() / module).native()) + "\\";
        EXPECT_EQ(platform::toNativePath(resource_gateway::defaultPath(place, "x.drl")),
                  folder() / found / "x.drl");
    }
}

TEST_F(LanguageFolder, FileIsReadAnewWhenLoadedAgainAndLongLinesAreCutBetweenCharacters) {
    EXPECT_FALSE(modLanguage::LoadLanguageFile());
    load("");
    EXPECT_EQ(modLanguage::GetText(1), "") << "a file without texts is one";
    load("[9]\n2=Two\n1=" + std::string(modLanguage::resourceBufferSize - 1, 'x') + "ü");
    EXPECT_EQ(modLanguage::GetText(1).size(), modLanguage::resourceBufferSize - 1);
    EXPECT_EQ(modLanguage::GetText(2), "Two");
}

TEST_F(LanguageFolder, NumberChoosesTheFile) {
    write("OVStd.drl", "[9]\n1=host\n19999=host\n20000=host\n29999=host\n30000=host\n");
    EXPECT_EQ(modLanguage::GetText(20000), "host") << "needs no control file";
    write("OVSearch.drl", "[9]\n1=own\n19999=own\n20000=own\n");
    EXPECT_EQ(modLanguage::GetText(1), "") << "before the file is loaded";

    ASSERT_TRUE(modLanguage::LoadLanguageFile());
    std::string found;
    for (const std::int32_t number : {-5, 0, 1, 19999, 20000, 29999, 30000})
        found += modLanguage::GetText(number) + ",";
    EXPECT_EQ(found, ",,own,own,host,host,,");
}

TEST_F(LanguageFolder, TextsFollowLanguageArgumentsAndReferences) {
    load("[7.2]\n1=Eis\n[9]\n1=%1% and %2%\n22=Version\n3=OVSearch, %#VERSION%\n"
         "4=(%#5%)\n5=%#4% 50%%#13#%1%\n");
    EXPECT_EQ(modLanguage::GetText(1), "%1% and %2%");
    EXPECT_EQ(modLanguage::GetText(1, {"a", "b"}), "a and b");
    EXPECT_TRUE(std::regex_match(modLanguage::GetText(3),
                                 std::regex(R"(OVSearch, Version \d+\.\d\d\.\d{3})")));
    EXPECT_EQ(modLanguage::GetText(4), "(%#4% 50%%\r\n%1%)") << "one level only";
    modLanguage::SetLanguage(0, 2);
    EXPECT_EQ(modLanguage::GetText(1), "Eis");
}

TEST(TextExpansion, Places) {
    const std::vector<std::string_view> given = {"x",      "",   "%1%", "50%", "2",
                                                 "a#13#b", "13", "h",   "i",   "j"};
    const auto text22 = [](std::int32_t number) { return number == 22 ? "text 22"s : ""s; };
    TextSources sources{
        .arguments = std::nullopt, .text = text22, .version = [] { return "v%1%"s; }};
    const auto expanded = [&sources](Lines texts) {
        for (std::string& text : texts)
            text = expandText(text, sources);
        return texts;
    };
    EXPECT_EQ(expanded({"%%%", "Datei %1%", "<%#5%>", "<%#abc%><%#%>", "%#22% %#9999999999%"}),
              (Lines{"%%", "Datei %1%", "<>", "<><>", "text 22 %#9999999999%"}));
    sources.arguments.emplace();
    EXPECT_EQ(expanded({"%1%#13#"}), Lines{"%1%\r\n"});
    sources.arguments = given;
    EXPECT_EQ(expanded({"100 %", "%%1%% is %1%", "%01%, %1% %8%", "%10%%1%", "%0% %1%",
                        "%1% %11% %1%#13##13#%%", "%1% %99999999999999999999%"}),
              (Lines{"100 %", "%1% is x", "x, x h", "jx", "%0% %1%", "x %11% x\r\n\r\n%%",
                     "x %99999999999999999999%"}));
    EXPECT_EQ(expanded({"%#Version% %1%", "%PATH% %1% % 2 %", "5%x%1% %1%", "%3% %8%", "%4% 5% %8%",
                        "%5%, <%#%5%8%>", "%6%", "Nr. #%7%#"}),
              (Lines{"v%1% x", "%PATH% x % 2 %", "5%x%1% %1%", "%1% h", "50% 5% %8%", "2, <>",
                     "a\r\nb", "Nr. #13#"}));
    EXPECT_EQ(expanded({"%2% fehlt", "Datei %2%", "Datei%2%.", "a %2% %2% b", "a %2% %1% b"}),
              (Lines{"fehlt", "Datei", "Datei.", "a b", "a x b"}))
        << "empty";
    EXPECT_EQ(expandText("<%#22%><%#VERSION%><%1%>", {}), "<><><%1%>") << "no sources";
}

TEST_F(LanguageFolder, OwnEnglishStandsInForStandardTextsThatAreMissing) {
    const std::string damaged = "[9]\n20101=Ok\n20102=\n[7]\n20101=Gut\n";
    const std::string whole(englishStandardTexts);
    for (const std::string& content : {""s, "\0\1"s, damaged, whole}) {
        const tests::RecordingInterface person;
        modLanguage::reset();
        if (!content.empty())
            write("OVStd.drl", content);
        modLanguage::SetLanguage(7, 0);
        load("[9]\n1261=No %1%\n");
        EXPECT_TRUE(modLanguage::LoadLanguageFile());
        EXPECT_EQ(person.boxLines(),
                  content == whole ? Lines() : Lines{"exclamation, OVSearch: No OVStd.drl"});
        EXPECT_EQ(modLanguage::GetText(20101), content == damaged ? "Ok" : "OK");
        EXPECT_EQ(modLanguage::GetText(20102), "Cancel");
        EXPECT_EQ(modLanguage::GetText(20000), "") << "none of ours";
        EXPECT_EQ(modLanguage::GetText(1), "") << "the control's own file";
    }
}

TEST_F(LanguageFolder, References) {
    load("[9]\n1=One\n4001=New search criterion\n2=Two\n");
    std::string found;
    for (const char* caption : {"#1", "#4001", "# 2", "#2nd", "#5", "#", "", "#x", "#-2", " #2"})
        found += std::to_string(modLanguage::ParseTextRef(caption)) + ' ' +
                 modLanguage::TranslateRef(caption) + '\n';
    EXPECT_EQ(found,
              "1 One\n4001 New search criterion\n2 Two\n2 Two\n5 \n0 #\n0 \n0 #x\n-2 #-2\n0  #2\n");
}

TEST_F(LanguageFolder, BoxesTellTheLoadFailureAndCarryTheKeptTitle) {
    const tests::RecordingInterface person;
    ASSERT_FALSE(modLanguage::LoadLanguageFile());
    for (const std::int32_t language : {0, 7, 9, 12}) {
        modLanguage::SetLanguage(language, 0);
        modLanguage::ShowLanguageLoadFailure();
    }
    modUtil::SetMessageTitle("Diktatsuche");
    modUtil::ShowMessage("kept");
    modUtil::ShowMessage("given", platform::MessageIcon::exclamation, "Own");
    const std::string german = "exclamation, OVSearch: Sprachen-Datei (OVSearch.drl) konnte nicht "
                               "geladen werden.";
    const std::string english =
        "exclamation, OVSearch: Could not load language file (OVSearch.drl).";
    EXPECT_EQ(person.boxLines(),
              (Lines{german, german, english, english, "information, Diktatsuche: kept",
                     "exclamation, Own: given"}));
}

} // namespace
} // namespace ov
