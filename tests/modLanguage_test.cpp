// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "recording_interface.h"
#include "settings_fixture.h"
#include "support/english_texts.h"
#include "support/language_file.h"
#include "support/modLanguage.h"
#include "support/modUtil.h"
#include "support/resource_gateway.h"
#include "support/text_expansion.h"

#include <array>
#include <optional>
#include <regex>
#include <vector>

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
    void load(std::string_view content) const {
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
    const struct {
        const char* rule;
        std::string content;
        OptionalText first{}; // text 1 in English
    } cases[] = {
        {"no line end at the end", "[9]\n1=One", "One"},
        {"CR LF", "[9]\r\n1=One\r\n", "One"},
        {"byte-order mark", "\xEF\xBB\xBF[9]\n1=One\n", "One"},
        {"blanks on both sides", "[9]\n1= One \r\n", " One "},
        {"quotes keep blanks", "[9]\n1=\" One \"\n", " One "},
        {"one pair of quotes", "[9]\n1=\"\"One\"\"\n", "\"One\""},
        {"quote inside", "[9]\n1=the \"One\"\n", "the \"One\""},
        {"a single quote", "[9]\n1=\"\n", "\""},
        {"other signs in the text", "[9]\n1=a=b; c\n", "a=b; c"},
        {"blanks around number and header", " [9] \n 1 =One\n", "One"},
        {"empty text", "[9]\n1=\n", ""},
        {"first of two", "[9]\n1=One\n1=Two\n", "One"},
        {"section in two pieces", "[9]\n2=Two\n[7]\n1=Eins\n[9]\n1=One\n", "One"},
        {"Windows-1252", "[9]\n1=Stra\xDF\x65\n", "Straße"},
        {"lone CR is text", "[9]\n1=a\rb\n", "a\rb"},
        {"comment", "[9]\n;1=One\n"},
        {"before any section", "1=One\n[9]\n"},
        {"header without its end", "[9]\n2=Two\n[9\n1=One\n"},
        {"header that is no number", "[9]\n[nine]\n1=One\n"},
        {"header with a sign", "[+9]\n1=One\n"},
        {"number with a sign", "[9]\n+1=One\n"},
        {"number beyond 32 bits", "[9]\n4294967297=One\n"},
        {"number missing", "[9]\n=One\n"},
        {"no equals sign", "[9]\n1\n"},
        {"empty", ""},
        {"zero bytes", "\0[\0009\0]\0"s},
    };
    for (const auto& test : cases)
        EXPECT_EQ(LanguageFile::parse(test.content).find(1, 9, 0), test.first) << test.rule;
}

TEST(LanguageFile, Languages) {
    const LanguageFile file =
        LanguageFile::parse("[7]\n1=Straße\n2=Januar\n[7.2]\n1=Strasse\n[9]\n1=Street\n3=only\n"
                            "[12]\n2=janvier\n");
    const struct {
        const char* rule = "";
        std::int32_t number = 0, language = 0, subLanguage = 0;
        OptionalText text;
    } cases[] = {
        {"German", 1, 7, 0, "Straße"},
        {"0 is German", 1, 0, 0, "Straße"},
        {"sub-language", 1, 7, 2, "Strasse"},
        {"sub-language of language 0", 1, 0, 2, "Strasse"},
        {"sub-language falls back", 2, 7, 2, "Januar"},
        {"unknown language", 1, 10, 1, "Street"},
        {"negative language", 1, -7, -1, "Street"},
        {"language that lacks a text", 1, 12, 0, "Street"},
        {"text in English only", 3, 7, 2, "only"},
        {"text in German only", 2, 9, 0, std::nullopt},
    };
    for (const auto& test : cases)
        EXPECT_EQ(file.find(test.number, test.language, test.subLanguage), test.text) << test.rule;
}

TEST_F(LanguageFolder, GatewayCopiesWhatFitsAndTellsMissingFilesFromMissingTexts) {
    write("texts.drl", "[9]\n1=12ü\n");
    std::array<char, 4> buffer{};
    const auto get = [&buffer](std::string_view file, std::int32_t number, std::size_t size) {
        return resource_gateway::GetResString(file, number, std::span(buffer).first(size), 9, 0);
    };
    EXPECT_EQ(get("texts.drl", 1, 4), 4);
    EXPECT_EQ(std::string_view(buffer.data(), 4), "12ü");
    EXPECT_EQ(get("texts.drl", 1, 3), 2);
    EXPECT_EQ(get("texts.drl", 1, 0), 0);
    EXPECT_EQ(get("texts.drl", 2, 4), 0);
    EXPECT_EQ(get("other.drl", 1, 4), -1);
    EXPECT_EQ(get("", 1, 4), -1);
}

TEST_F(LanguageFolder, GatewayFindsInstalledFiles) {
    const struct {
        const char* layout;
        std::string module; // directory of the program or plug-in
        std::string texts;
        bool isFound;
    } cases[] = {
        {"build tree", "a/bin", "a/bin/DRL", true},
        {"program", "b/bin", "b/share/ovsearch/DRL", true},
        {"plug-in", "c/lib/triplet/ovsearch", "c/share/ovsearch/DRL", true},
        {"fourth parent", "d/1/2/3/4", "d/share/ovsearch/DRL", true},
        {"fifth parent", "e/1/2/3/4/5", "e/share/ovsearch/DRL", false},
    };
    for (const auto& test : cases) {
        std::filesystem::create_directories(folder() / test.module);
        std::filesystem::create_directories(folder() / test.texts);
        write(test.texts + "/x.drl", "");
        const std::string expected = (test.isFound ? test.texts : test.module + "/DRL") + "/x.drl";
        const std::string module =
            path("") + platform::fromNativePath("/" + test.module).substr(1) + "\\";
        EXPECT_EQ(platform::toNativePath(resource_gateway::defaultPath(module, "x.drl")),
                  folder() / expected)
            << test.layout;
    }
}

TEST_F(LanguageFolder, LongLinesAreCut) {
    load("[9]\n1=" + std::string(1'000'000, 'x') + "\n2=Two\n");
    EXPECT_EQ(modLanguage::GetText(1).size(), modLanguage::resourceBufferSize);
    EXPECT_EQ(modLanguage::GetText(2), "Two");
}

TEST_F(LanguageFolder, FileIsReadAnewWhenLoadedAgain) {
    EXPECT_FALSE(modLanguage::LoadLanguageFile());
    load("");
    EXPECT_EQ(modLanguage::GetText(1), "") << "a file without texts is one";
    load("[9]\n1=One\n");
    EXPECT_EQ(modLanguage::GetText(1), "One");
}

TEST_F(LanguageFolder, NumberChoosesTheFile) {
    write("OVStd.drl", "[9]\n1=host\n19999=host\n20000=host\n29999=host\n30000=host\n");
    EXPECT_EQ(modLanguage::GetText(20000), "host") << "needs no control file";
    write("OVSearch.drl", "[9]\n1=own\n19999=own\n20000=own\n");
    EXPECT_EQ(modLanguage::GetText(1), "") << "before the file is loaded";

    ASSERT_TRUE(modLanguage::LoadLanguageFile());
    const std::pair<std::int32_t, const char*> cases[] = {
        {-5, ""},        {0, ""},         {1, "own"},  {19999, "own"},
        {20000, "host"}, {29999, "host"}, {30000, ""},
    };
    for (const auto& [number, text] : cases)
        EXPECT_EQ(modLanguage::GetText(number), text) << number;
}

TEST_F(LanguageFolder, TextsFollowLanguageArgumentsAndReferences) {
    load("[7]\n1=Eins\n[7.2]\n1=Eis\n[9]\n1=%1% and %2%\n22=Version\n3=OVSearch, %#VERSION%\n"
         "4=(%#5%)\n5=%#4% 50%%#13#%1%\n");
    EXPECT_EQ(modLanguage::GetText(1), "%1% and %2%");
    EXPECT_EQ(modLanguage::GetText(1, {"a", "b"}), "a and b");
    EXPECT_EQ(modLanguage::GetText(1, std::vector<std::string>{"a", "b"}), "a and b");
    EXPECT_TRUE(std::regex_match(modLanguage::GetText(3),
                                 std::regex(R"(OVSearch, Version \d+\.\d\d\.\d{3})")));
    EXPECT_EQ(modLanguage::GetText(4), "(%#4% 50%%\r\n%1%)") << "one level only";
    modLanguage::SetLanguage(7, 0);
    EXPECT_EQ(modLanguage::GetText(1), "Eins");
    modLanguage::SetLanguage(0, 2);
    EXPECT_EQ(modLanguage::GetText(1), "Eis");
}

TEST(TextExpansion, Places) {
    using Arguments = std::vector<std::string_view>;
    const struct {
        const char* rule = "";
        const char* text = "";
        std::optional<Arguments> arguments;
        const char* expected = "";
    } cases[] = {
        {"lone percent sign", "100 %", Arguments{"x"}, "100 %"},
        {"three percent signs", "%%%", std::nullopt, "%%"},
        {"escaped place", "%%1%% is %1%", Arguments{"x"}, "%1% is x"},

        {"argument", "Datei %1% fehlt", Arguments{"a.wav"}, "Datei a.wav fehlt"},
        {"every place of it", "%1%, %1% %2%", Arguments{"a", "b"}, "a, a b"},
        {"no list", "Datei %1% fehlt", std::nullopt, "Datei %1% fehlt"},
        {"tenth argument", "%10%%1%", Arguments{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"},
         "ja"},
        {"place written otherwise", "%01% %1%", Arguments{"a"}, "a a"},

        {"empty argument in the middle", "Datei %1% fehlt", Arguments{""}, "Datei fehlt"},
        {"empty argument first", "%1% fehlt", Arguments{""}, "fehlt"},
        {"empty argument last", "Datei %1%", Arguments{""}, "Datei"},
        {"empty argument without blanks", "Datei%1%.", Arguments{""}, "Datei."},
        {"empty, two places", "a %1% %1% b", Arguments{""}, "a b"},
        {"empty, then another", "a %1% %2% b", Arguments{"", "x"}, "a x b"},
        {"filled, then empty", "%1% %2%.", Arguments{"x", ""}, "x."},

        {"argument like a place", "%1% %2%", Arguments{"%2%", "b"}, "%2% b"},
        {"argument pairs with nothing", "%1% 5% %2%", Arguments{"50%", "b"}, "50% 5% %2%"},
        {"argument builds no number", "%1%, <%#%1%2%>", Arguments{"2"}, "2, <>"},

        {"argument beyond the list", "%1% %2% %1%#13#%%", Arguments{"a"}, "a %2% a\r\n%%"},
        {"argument 0", "%0% %1%", Arguments{"a"}, "%0% %1%"},
        {"negative", "%-1% %1%", Arguments{"a"}, "%-1% %1%"},
        {"empty list", "%1%#13#", Arguments{}, "%1%\r\n"},
        {"huge number", "%1% %99999999999999999999%", Arguments{"a"}, "a %99999999999999999999%"},

        {"text by number", "<%#22%>", std::nullopt, "<text 22>"},
        {"no text by that number", "<%#5%>", std::nullopt, "<>"},
        {"reference without a number", "<%#abc%><%#%>", std::nullopt, "<><>"},
        {"huge reference", "%#22% %#9999999999%", std::nullopt, "text 22 %#9999999999%"},
        {"version in any case", "%#Version% %1%", Arguments{"a"}, "v%1% a"},

        {"other tokens", "%PATH% %1% % 2 %", Arguments{"a"}, "%PATH% a % 2 %"},
        {"places out of step", "5%x%1% %1%", Arguments{"a"}, "5%x%1% %1%"},

        {"line breaks", "eins#13##13#zwei", std::nullopt, "eins\r\n\r\nzwei"},
        {"line break in an argument", "%1%", Arguments{"a#13#b"}, "a\r\nb"},
        {"argument builds no line break", "Nr. #%1%#", Arguments{"13"}, "Nr. #13#"},
    };
    for (const auto& test : cases) {
        TextSources sources{.arguments = std::nullopt,
                            .text = [](std::int32_t number) -> std::string {
                                return number == 22 ? "text 22" : "";
                            },
                            .version = [] { return std::string("v%1%"); }};
        if (test.arguments)
            sources.arguments = *test.arguments;
        EXPECT_EQ(expandText(test.text, sources), test.expected) << test.rule;
    }
    EXPECT_EQ(expandText("<%#22%><%#VERSION%><%1%>", {}), "<><><%1%>") << "no sources";
}

TEST_F(LanguageFolder, OwnEnglishStandsInForStandardTextsThatAreMissing) {
    const std::string damaged = "[9]\n20101=Ok\n20102=\n[7]\n20101=Gut\n";
    for (const std::string& content : {""s, "\0\1"s, damaged}) {
        const tests::RecordingInterface person;
        modLanguage::reset();
        if (!content.empty())
            write("OVStd.drl", content);
        modLanguage::SetLanguage(7, 0);
        load("[9]\n1261=No %1%\n");
        EXPECT_TRUE(modLanguage::LoadLanguageFile());
        EXPECT_EQ(person.boxLines(), Lines{"exclamation, OVSearch: No OVStd.drl"}) << "once";
        EXPECT_EQ(modLanguage::GetText(20101), content == damaged ? "Ok" : "OK");
        EXPECT_EQ(modLanguage::GetText(20102), "Cancel");
        EXPECT_EQ(modLanguage::GetText(20000), "") << "none of ours";
        EXPECT_EQ(modLanguage::GetText(1), "") << "the control's own file";
    }
    const tests::RecordingInterface person;
    modLanguage::reset();
    write("OVStd.drl", std::string(englishStandardTexts));
    load("[9]\n1261=No %1%\n");
    EXPECT_EQ(person.boxLines(), Lines{});
}

TEST_F(LanguageFolder, References) {
    load("[9]\n4001=New search criterion\n2=Two\n");
    const struct {
        const char* caption;
        std::int32_t number;
        const char* text;
    } cases[] = {
        {"#4001", 4001, "New search criterion"},
        {"# 2", 2, "Two"},
        {"#1.6", 2, "Two"},
        {"#2nd", 2, "Two"},
        {"#5", 5, ""},
        {"#", 0, "#"},
        {"", 0, ""},
        {"#x", 0, "#x"},
        {"#-2", -2, "#-2"},
        {" #2", 0, " #2"},
        {"#99999999999", 2147483647, ""},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(modLanguage::ParseTextRef(test.caption), test.number) << test.caption;
        EXPECT_EQ(modLanguage::TranslateRef(test.caption), test.text) << test.caption;
    }
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
              (std::vector{german, german, english, english, "information, Diktatsuche: kept"s,
                           "exclamation, Own: given"s}));
}

TEST(MessageBoxes, QuestionsDefaultToNo) {
    tests::RecordingInterface person;
    EXPECT_FALSE(modUtil::AskYesNo("Really?"));
    EXPECT_EQ(person.boxes.at(0).buttons, platform::MessageButtons::yesNo);
    EXPECT_EQ(person.boxes.at(0).icon, platform::MessageIcon::question);
    person.saysYes = true;
    EXPECT_TRUE(modUtil::AskYesNo("Really?"));
}

} // namespace
} // namespace ov
