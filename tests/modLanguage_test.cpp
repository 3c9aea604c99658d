// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/files.h"
#include "platform/user_interface.h"
#include "support/language_file.h"
#include "support/modLanguage.h"
#include "support/modUtil.h"
#include "support/resource_gateway.h"
#include "support/text_expansion.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <vector>

namespace {

using namespace ov;

// A folder of language files that this thread's texts come from.
class LanguageFolder : public testing::Test {
public:
    LanguageFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "ov-XXXXXX").native();
        folder_ = mkdtemp(name.data());
        resource_gateway::SetResPath(platform::fromNativePath(folder_.native()));
        modLanguage::reset();
        modUtil::reset();
    }
    ~LanguageFolder() override {
        std::filesystem::remove_all(folder_);
        resource_gateway::SetResPath({});
        modLanguage::reset();
        modUtil::reset();
    }

protected:
    void create(const char* directory) const {
        std::filesystem::create_directories(folder_ / directory);
    }
    std::string path(const std::string& name) const {
        return platform::fromNativePath((folder_ / name).native());
    }
    void write(const char* name, std::string_view content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }
    void load(std::string_view content) const {
        write("OVSearch.drl", content);
        ASSERT_TRUE(modLanguage::LoadLanguageFile());
        modLanguage::SetLanguage(9, 0);
    }

private:
    std::filesystem::path folder_;
};

// Notes the boxes and answers questions as told.
class Person final : public platform::UserInterface {
public:
    Person() : before_(platform::installUserInterface(this)) {}
    ~Person() override { platform::installUserInterface(before_); }

    platform::MessageAnswer showMessage(const platform::MessageBox& box) override {
        boxes.push_back(box);
        return saysYes ? platform::MessageAnswer::yes : box.defaultAnswer;
    }
    void processMessages() override {}
    void beep() override {}

    std::vector<platform::MessageBox> boxes;
    bool saysYes = false;

private:
    platform::UserInterface* before_;
};

TEST(LanguageFile, Grammar) {
    const struct {
        const char* rule;
        std::string content;
        std::optional<std::string> first; // text 1 in English
    } cases[] = {
        {"plain", "[9]\n1=One\n", "One"},
        {"no line end at the end", "[9]\n1=One", "One"},
        {"CR LF", "[9]\r\n1=One\r\n", "One"},
        {"byte-order mark", "\xEF\xBB\xBF[9]\n1=One\n", "One"},
        {"blanks before", "[9]\n1= One\n", " One"},
        {"blanks behind", "[9]\n1=One \r\n", "One "},
        {"quotes keep blanks", "[9]\n1=\" One \"\n", " One "},
        {"one pair of quotes", "[9]\n1=\"\"One\"\"\n", "\"One\""},
        {"quote inside", "[9]\n1=the \"One\"\n", "the \"One\""},
        {"a single quote", "[9]\n1=\"\n", "\""},
        {"equals sign in the text", "[9]\n1=a=b\n", "a=b"},
        {"blanks around number and header", " [9] \n 1 =One\n", "One"},
        {"semicolon in the text", "[9]\n1=One; two\n", "One; two"},
        {"empty text", "[9]\n1=\n", ""},
        {"first of two", "[9]\n1=One\n1=Two\n", "One"},
        {"section in two pieces", "[9]\n2=Two\n[7]\n1=Eins\n[9]\n1=One\n", "One"},
        {"Windows-1252",
         "[9]\n1=Stra\xDF"
         "e\n",
         "Straße"},
        {"one line of each encoding", "[9]\n2=\xFC\n1=\xC3\xBC\n", "ü"},
        {"lone CR is text", "[9]\n1=a\rb\n", "a\rb"},
        {"comment", "[9]\n;1=One\n", std::nullopt},
        {"before any section", "1=One\n[9]\n", std::nullopt},
        {"other language", "[7]\n1=Eins\n", std::nullopt},
        {"header without its end", "[9]\n2=Two\n[9\n1=One\n", std::nullopt},
        {"header that is no number", "[9]\n[nine]\n1=One\n", std::nullopt},
        {"header with a sign", "[+9]\n1=One\n", std::nullopt},
        {"number with a sign", "[9]\n+1=One\n", std::nullopt},
        {"number beyond 32 bits", "[9]\n4294967297=One\n", std::nullopt},
        {"language beyond 32 bits", "[4294967305]\n1=One\n", std::nullopt},
        {"number missing", "[9]\n=One\n", std::nullopt},
        {"no equals sign", "[9]\n1\n", std::nullopt},
        {"empty", "", std::nullopt},
        {"zero bytes", std::string("\0[\0009\0]\0", 7), std::nullopt},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.rule);
        const LanguageFile file = LanguageFile::parse(test.content);
        EXPECT_EQ(file.find(1, 9, 0), test.first);
    }
}

TEST(LanguageFile, Languages) {
    const LanguageFile file =
        LanguageFile::parse("[7]\n1=Straße\n2=Januar\n[7.2]\n1=Strasse\n[9]\n1=Street\n3=only\n"
                            "[12]\n2=janvier\n");
    const struct {
        const char* rule = "";
        std::int32_t number = 0, language = 0, subLanguage = 0;
        std::optional<std::string> text;
    } cases[] = {
        {"German", 1, 7, 0, "Straße"},
        {"0 is German", 1, 0, 0, "Straße"},
        {"English", 1, 9, 0, "Street"},
        {"sub-language", 1, 7, 2, "Strasse"},
        {"sub-language of language 0", 1, 0, 2, "Strasse"},
        {"sub-language falls back", 2, 7, 2, "Januar"},
        {"unknown sub-language", 1, 7, 5, "Straße"},
        {"unknown language", 1, 10, 1, "Street"},
        {"negative language", 1, -7, -1, "Street"},
        {"language that lacks a text", 1, 12, 0, "Street"},
        {"text in English only", 3, 7, 2, "only"},
        {"text in German only", 2, 9, 0, std::nullopt},
        {"unknown text", 4, 9, 0, std::nullopt},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.rule);
        EXPECT_EQ(file.find(test.number, test.language, test.subLanguage), test.text);
    }
}

TEST_F(LanguageFolder, GatewayTellsMissingFilesFromMissingTexts) {
    write("texts.drl", "[9]\n1=One\n");
    std::array<char, 16> buffer{};
    EXPECT_EQ(resource_gateway::GetResString("texts.drl", 1, buffer, 9, 0), 3);
    EXPECT_EQ(std::string_view(buffer.data(), 3), "One");
    EXPECT_EQ(resource_gateway::GetResString("texts.drl", 2, buffer, 9, 0), 0);
    EXPECT_EQ(resource_gateway::GetResString("other.drl", 1, buffer, 9, 0), -1);
    EXPECT_EQ(resource_gateway::GetResString("", 1, buffer, 9, 0), -1);
}

TEST_F(LanguageFolder, GatewayFindsInstalledFiles) {
    const struct {
        const char* layout;
        const char* module; // directory of the program or plug-in
        const char* texts;
        bool isFound;
    } cases[] = {
        {"build tree", "a/bin", "a/bin/DRL", true},
        {"program", "b/bin", "b/share/ovsearch/DRL", true},
        {"plug-in", "c/lib/triplet/ovsearch", "c/share/ovsearch/DRL", true},
        {"fourth parent", "d/1/2/3/4", "d/share/ovsearch/DRL", true},
        {"fifth parent", "e/1/2/3/4/5", "e/share/ovsearch/DRL", false},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.layout);
        create(test.module);
        create(test.texts);
        write((test.texts + std::string("/x.drl")).c_str(), "");
        const std::string found = resource_gateway::defaultPath(path(test.module) + "\\", "x.drl");
        EXPECT_EQ(found,
                  path(test.isFound ? test.texts : test.module + std::string("/DRL")) + "\\x.drl");
    }
}

TEST_F(LanguageFolder, GatewayCutsBeforeTheCharacterThatDoesNotFit) {
    write("texts.drl", "[9]\n1=12ü\n");
    std::array<char, 4> buffer{};
    EXPECT_EQ(resource_gateway::GetResString("texts.drl", 1, buffer, 9, 0), 4);
    EXPECT_EQ(resource_gateway::GetResString("texts.drl", 1, std::span(buffer).first(3), 9, 0), 2);
    EXPECT_EQ(resource_gateway::GetResString("texts.drl", 1, {}, 9, 0), 0);
}

TEST_F(LanguageFolder, LongLinesAndForeignBytesGiveNoText) {
    load("[9]\n1=" + std::string(5'000'000, 'x') + "\n2=Two\n");
    EXPECT_EQ(modLanguage::GetText(1).size(), modLanguage::resourceBufferSize);
    EXPECT_EQ(modLanguage::GetText(2), "Two");

    std::string bytes;
    for (unsigned seed = 1; bytes.size() < 100'000; seed = seed * 1664525U + 1013904223U)
        bytes.push_back(static_cast<char>(seed >> 24U));
    load(bytes);
    EXPECT_EQ(modLanguage::GetText(1), "");
}

TEST_F(LanguageFolder, FileIsReadAnewWhenLoadedAgain) {
    EXPECT_FALSE(modLanguage::LoadLanguageFile());
    EXPECT_EQ(modLanguage::GetText(1), "");
    load("[9]\n1=One\n");
    EXPECT_EQ(modLanguage::GetText(1), "One");
    load("[9]\n1=Another\n");
    EXPECT_EQ(modLanguage::GetText(1), "Another");
}

TEST_F(LanguageFolder, FileWithoutTextsIsLoaded) {
    load("");
    EXPECT_EQ(modLanguage::GetText(1), "");
}

TEST_F(LanguageFolder, NumberChoosesTheFile) {
    write("OVStd.drl", "[9]\n1=host\n19999=host\n20000=host\n29999=host\n30000=host\n");
    EXPECT_EQ(modLanguage::GetText(20000), "host") << "needs no control file";
    write("OVSearch.drl", "[9]\n1=own\n19999=own\n20000=own\n");
    EXPECT_EQ(modLanguage::GetText(1), "") << "before the file is loaded";

    ASSERT_TRUE(modLanguage::LoadLanguageFile());
    modLanguage::SetLanguage(9, 0);
    const std::pair<std::int32_t, const char*> cases[] = {
        {-5, ""},        {0, ""},         {1, "own"},  {19999, "own"},
        {20000, "host"}, {29999, "host"}, {30000, ""}, {30001, ""},
    };
    for (const auto& [number, text] : cases)
        EXPECT_EQ(modLanguage::GetText(number), text) << number;
}

TEST_F(LanguageFolder, LanguageChangesAtOnce) {
    load("[7]\n1=Eins\n[7.2]\n1=Eis\n[9]\n1=One\n");
    EXPECT_EQ(modLanguage::GetText(1), "One");
    modLanguage::SetLanguage(7, 0);
    EXPECT_EQ(modLanguage::GetText(1), "Eins");
    modLanguage::SetLanguage(0, 2);
    EXPECT_EQ(modLanguage::GetText(1), "Eis");
}

TEST_F(LanguageFolder, TextsOfOtherNumbersAndTheVersion) {
    load("[9]\n22=Version\n3=OVSearch, %#VERSION%\n4=(%#5%)\n5=%#4% 50%%#13#%1%\n");
    EXPECT_EQ(modLanguage::GetText(3).find("OVSearch, Version "), 0U);
    EXPECT_EQ(modLanguage::GetText(4), "(%#4% 50%%\r\n%1%)") << "one level only";
}

TEST_F(LanguageFolder, ArgumentsAsAListOfEitherKind) {
    load("[9]\n1=%1% and %2%\n");
    EXPECT_EQ(modLanguage::GetText(1), "%1% and %2%");
    EXPECT_EQ(modLanguage::GetText(1, {"a", "b"}), "a and b");
    EXPECT_EQ(modLanguage::GetText(1, std::vector<std::string>{"a", "b"}), "a and b");
}

TEST(TextExpansion, Places) {
    using Arguments = std::vector<std::string_view>;
    const struct {
        const char* rule = "";
        const char* text = "";
        std::optional<Arguments> arguments;
        const char* expected = "";
    } cases[] = {
        {"no places", "Datei", Arguments{"x"}, "Datei"},
        {"empty text", "", Arguments{"x"}, ""},
        {"lone percent sign", "100 %", Arguments{"x"}, "100 %"},
        {"two percent signs", "50%% sicher", std::nullopt, "50% sicher"},
        {"only the two", "%%%%", std::nullopt, "%%"},
        {"three percent signs", "%%%", std::nullopt, "%%"},
        {"escaped place", "%%1%% is %1%", Arguments{"x"}, "%1% is x"},

        {"argument", "Datei %1% fehlt", Arguments{"a.wav"}, "Datei a.wav fehlt"},
        {"every place of it", "%1%, %1% %2%", Arguments{"a", "b"}, "a, a b"},
        {"other order", "%2% %1%", Arguments{"a", "b"}, "b a"},
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
        {"suffix that brings its blank", "Suchergebnis%1%", Arguments{" (2)"}, "Suchergebnis (2)"},

        {"argument like a place", "%1% %2%", Arguments{"%2%", "b"}, "%2% b"},
        {"argument with percent signs", "in 100%%: %1%, %2%", Arguments{"100%1%", "b"},
         "in 100%: 100%1%, b"},
        {"argument pairs with nothing", "%1% 5% %2%", Arguments{"50%", "b"}, "50% 5% %2%"},
        {"argument builds no number", "%1%, <%#%1%2%>", Arguments{"2"}, "2, <>"},
        {"argument like a reference", "%1% %2%", Arguments{"%#22%", "b"}, "%#22% b"},

        {"argument beyond the list", "%1% %2% %1%#13#%%", Arguments{"a"}, "a %2% a\r\n%%"},
        {"argument 0", "%0% %1%", Arguments{"a"}, "%0% %1%"},
        {"negative", "%-1% %1%", Arguments{"a"}, "%-1% %1%"},
        {"empty list", "%1%#13#", Arguments{}, "%1%\r\n"},
        {"huge argument number", "%1% %99999999999999999999%", Arguments{"a"},
         "a %99999999999999999999%"},

        {"text by number", "<%#22%>", std::nullopt, "<text 22>"},
        {"no text by that number", "<%#5%>", std::nullopt, "<>"},
        {"reference without a number", "<%#abc%><%#%>", std::nullopt, "<><>"},
        {"huge reference", "%#22% %#9999999999% %#22%", std::nullopt,
         "text 22 %#9999999999% %#22%"},
        {"version in any case", "%#Version%", std::nullopt, "v%1%"},
        {"place in what was put in", "%#VERSION% %1%", Arguments{"a"}, "v%1% a"},

        {"other tokens", "%PATH% %1% % 2 %", Arguments{"a"}, "%PATH% a % 2 %"},
        {"places out of step", "5%x%1% %1%", Arguments{"a"}, "5%x%1% %1%"},

        {"line break", "eins#13#zwei", std::nullopt, "eins\r\nzwei"},
        {"two line breaks", "eins#13##13#zwei", std::nullopt, "eins\r\n\r\nzwei"},
        {"nearly a line break", "#13 #1#13#", std::nullopt, "#13 #1\r\n"},
        {"line break in an argument", "%1%", Arguments{"a#13#b"}, "a\r\nb"},
        {"argument builds no line break", "Nr. #%1%#", Arguments{"13"}, "Nr. #13#"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.rule);
        std::optional<std::span<const std::string_view>> arguments;
        if (test.arguments)
            arguments = *test.arguments;
        EXPECT_EQ(expandText(test.text, {.arguments = arguments,
                                         .text = [](std::int32_t number) -> std::string {
                                             return number == 22 ? "text 22" : "";
                                         },
                                         .version = [] { return std::string("v%1%"); }}),
                  test.expected);
    }
}

TEST_F(LanguageFolder, References) {
    load("[9]\n4001=New search criterion\n2=Two\n");
    const struct {
        const char* caption;
        std::int32_t number;
        const char* text;
    } cases[] = {
        {"#4001", 4001, "New search criterion"},
        {"#2", 2, "Two"},
        {"# 2", 2, "Two"},
        {"#1.6", 2, "Two"},
        {"#2nd", 2, "Two"},
        {"#5", 5, ""},
        {"#", 0, "#"},
        {"", 0, ""},
        {"#x", 0, "#x"},
        {"#0", 0, "#0"},
        {"#-2", -2, "#-2"},
        {" #2", 0, " #2"},
        {"4001", 0, "4001"},
        {"#99999999999", 2147483647, ""},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.caption);
        EXPECT_EQ(modLanguage::ParseTextRef(test.caption), test.number);
        EXPECT_EQ(modLanguage::TranslateRef(test.caption), test.text);
    }
}

TEST_F(LanguageFolder, LoadFailureIsToldInTheLanguageOfTheHost) {
    Person person;
    ASSERT_FALSE(modLanguage::LoadLanguageFile());
    for (const std::int32_t language : {0, 7, 9, 12}) {
        modLanguage::SetLanguage(language, 0);
        modLanguage::ShowLanguageLoadFailure();
    }
    const std::string german = "Sprachen-Datei (OVSearch.drl) konnte nicht geladen werden.";
    const std::string english = "Could not load language file (OVSearch.drl).";
    std::vector<std::string> texts;
    for (const auto& box : person.boxes) {
        texts.push_back(box.text);
        EXPECT_EQ(box.icon, platform::MessageIcon::exclamation);
        EXPECT_EQ(box.title, "OVSearch");
    }
    EXPECT_EQ(texts, (std::vector{german, german, english, english}));
}

TEST_F(LanguageFolder, BoxesCarryTheKeptTitle) {
    Person person;
    modUtil::ShowMessage("first");
    modUtil::SetMessageTitle("Diktatsuche");
    modUtil::ShowMessage("second");
    modUtil::ShowMessage("third", platform::MessageIcon::exclamation, "Own");
    std::vector<std::string> titles;
    for (const auto& box : person.boxes)
        titles.push_back(box.title);
    EXPECT_EQ(titles, (std::vector<std::string>{"OVSearch", "Diktatsuche", "Own"}));
}

TEST_F(LanguageFolder, QuestionsDefaultToNo) {
    Person person;
    EXPECT_FALSE(modUtil::AskYesNo("Really?"));
    EXPECT_EQ(person.boxes.at(0).buttons, platform::MessageButtons::yesNo);
    EXPECT_EQ(person.boxes.at(0).icon, platform::MessageIcon::question);
    person.saysYes = true;
    EXPECT_TRUE(modUtil::AskYesNo("Really?"));
}

} // namespace
