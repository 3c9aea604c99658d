// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/locale.h"
#include "support/modINI.h"
#include "support/numbers.h"
#include "support/path_setting.h"
#include "tests/settings_fixture.h"

#include <array>
#include <limits>
#include <vector>

namespace ov::modINI {
namespace {

using namespace std::string_literals;

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

class ModIni : public tests::SettingsTest {
public:
    ~ModIni() override { platform::setLocale({}); }

protected:
    std::string file() const { return path("f.ini"); }
    std::int32_t number(std::int32_t minimum = 0, std::int32_t maximum = 0) const {
        return ReadIniNumber("S", "k", 7, minimum, maximum, file());
    }
};

TEST(Numbers, AtTheStartOfAText) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::string zeros(400, '0');
    const std::pair<double, std::vector<std::string>> cases[] = {
        {25, {"25", " \t25 x", "+25abc", "25.", "25.0.1", "25e", "25e+x", "2.5e1", zeros + "25"}},
        {-0.5, {"-.5", "-0.5,", "-5e-1", "-5.E-1"}},
        {1, {"1,5", "1 000", "1\0002"s, "1" + zeros + "e-400", "0." + zeros + "1e401"}},
        {0, {"", " ", "-", ".", "-.", "e5", "- 5", "+-5", "\xEF\xBC\x95", "&H1F", "inf", "nan"}},
        {0,
         {"0x10", "0e999", "1e-99999999999999999999", "1" + zeros + "e-999", "0." + zeros + "1e5",
          "0." + zeros + "1e"}},
        {infinity, {"1" + zeros, "1e999", "1e99999999999999999999", "1" + zeros + "e-50"}},
        {-infinity, {"-1" + zeros, "-1e999"}}};
    for (const auto& [expected, texts] : cases)
        for (const std::string& text : texts)
            EXPECT_EQ(leadingNumber(text), expected) << text;
}

TEST_F(ModIni, readsNumbers) {
    // The sign of decimals, then that of groups; texts; numbers.
    const std::tuple<std::string, std::vector<const char*>, std::vector<std::int32_t>> locales[] = {
        {".",
         {"-25", "\" 25 \"", "2.5", "3.5", "25 pixels", "2,5", "1.234", "-2147483649", "1e999",
          "0.49999999999999994", "2147483646.5"},
         {-25, 25, 2, 4, 25, 2, 1, lowest, highest, 0, 2147483646}},
        {".",
         {"", "e5", "&Hx", "&H-1", "&H1F", "&h1f&", "&HFFFFFFFF", "&H00000000FF", "&H100000000"},
         {7, 7, 7, 7, 31, 31, -1, 255, highest}},
        {",", {"3,5 cm", "3.5"}, {4, 4}},
        {",.",
         {"1.234", "-12.345.678,5 cm", "3.5", "0.500", "1.2345", "1234.567"},
         {1234, -12345678, 4, 0, 1, 1235}},
        {".,", {"1,234,567.5", "2,5"}, {1234568, 2}},
        {".,", {"123,456", "1234,567"}, {123456, 1234}},
        {",\u202F", {"1 234", "1\u202F234"}, {1234, 1234}},
        {".\u2019", {"1'234"}, {1234}}};
    for (const auto& [signs, texts, expected] : locales) {
        platform::setLocale(
            platform::Locale{.decimalSign = signs[0], .groupSign = signs.substr(1)});
        std::vector<std::int32_t> found;
        for (const char* text : texts) {
            write("f.ini", "[S]\nk="s + text + "\n");
            found.push_back(number());
        }
        EXPECT_EQ(found, expected) << signs;
    }
}

TEST_F(ModIni, limitsNumbersWhenTheLimitsDiffer) {
    write("f.ini", "[S]\nk=25\n");
    EXPECT_EQ((std::vector{number(10, 10), number(1, 10), number(30, 40), number(40, 10)}),
              (std::vector{25, 10, 30, 10}));
    write("f.ini", "");
    EXPECT_EQ(number(10, 20), 7) << "the default is not limited";
}

TEST_F(ModIni, readsBooleans) {
    write("f.ini", "[S]\na=1\nb=0\nc=-1\nd=0.5\ne=True\nf=&H10\ng=\n");
    std::string found;
    for (const char* key : {"a", "b", "c", "d", "e", "f", "g", "none"})
        for (const bool fallback : {true, false})
            found += ReadIniBoolean("S", key, fallback, file()) ? "T" : "f";
    EXPECT_EQ(found, "TTffTTTTffTTffTf");
}

TEST_F(ModIni, readsPaths) {
    const std::string existing = path("").substr(0, path("").size() - 1);
    write("f.ini", "[S]\na=" + existing + "\nb=\\no\\such\nc=\nd=" + std::string(5000, 'x') + "\n");
    const auto read = [this](const char* key, bool allowMissing) {
        return ReadIniPath("S", key, "D:\\default", file(), allowMissing);
    };
    EXPECT_EQ(read("a", false), path(""));
    EXPECT_EQ(read("b", true), "\\no\\such\\");
    EXPECT_EQ(read("b", false), "");
    EXPECT_EQ(read("c", true), "");
    EXPECT_EQ(read("d", true), std::string(4095, 'x') + "\\");
    EXPECT_EQ(read("none", true), "D:\\default\\");
}

// A mark of our own, so that paths of foreign bytes can be written as text.
TEST_F(ModIni, writesPathsThatAreNoTextInAForm) {
    const std::pair<const char*, const char*> cases[] = {
        {"\\a b\\c", "\\a b\\c"},
        {"\\a\xE4%:/~\x01", "file:///a%E4%25%3A%2F~%01"},
        {"d:\\\xFF:", "file:///d:/%FF%3A"},
        {"\xFF", "\xFF"}};
    for (const auto& [path, setting] : cases) {
        EXPECT_EQ(settingOfPath(path), setting);
        EXPECT_EQ(pathOfSetting(setting), path);
    }
}

TEST_F(ModIni, writesWhatItReads) {
    write("f.ini", "[0]\na=1\n[00]\n");
    EXPECT_TRUE(WriteIniString("S", "text", "C:\\x y", file()) &&
                WriteIniNumber("S", "k", lowest, file()) &&
                WriteIniBoolean("S", "on", true, file()) &&
                WriteIniBoolean("S", "off", false, file()));
    EXPECT_EQ(read("f.ini"), "[00]\n[S]\r\ntext=C:\\x y\r\nk=-2147483648\r\non=-1\r\noff=0\r\n");
    write("f.ini", "[S]\nk=1\n[0]\n");
    EXPECT_TRUE(WriteIniString("S", "k", "1", file()));
    EXPECT_EQ(read("f.ini"), "[S]\nk=1\n") << "the section goes also when the value stands";
}

TEST_F(ModIni, theDirectReaderGoesLineByLine) {
    const std::array<std::string, 4> cases[] = {
        {"[section]\r\nKey=Value\r\n", "SECTION", "KEY", "Value"},
        {"[ö]\nä=1\n", "Ö", "Ä", "1"},
        {"[S]\nKey =Value\n", "S", "Key", "(default)"},
        {"  [S]\t\n\t k=  v  \n", "S", "k", "  v"},
        {"[S]\n\nk\n=v\n;k=0\nk=\"a=b\"\nk=2\n", "S", "k", "\"a=b\""},
        {"[S]\n=v\n", "S", "", "(default)"},
        {"[S] ; note\nk=1\n[ S ]\nk=1\n", "S", "k", "(default)"},
        {"k=1\n[S]\na=1\n[T]\nk=2\n", "S", "k", "(default)"},
        {"[S]\na=1\n[T]\nk=1\n[s]\nk=2\n", "S", "k", "2"},
        {"[S]\n[x\nk=1\n", "S", "k", "(default)"},
        {"[S]\rk=v", "S", "k", "v"},
        {"\xFF\xFE[\0S\0]\0\n\0k\0=\0\xE4\0"s, "S", "k", "ä"},
        {"[\xD6]\nk=\xE4\n", "ö", "k", "ä"}};
    for (const auto& [content, section, key, expected] : cases) {
        write("f.ini", content); // a bare name: in the Windows directory
        EXPECT_EQ(ReadIniValueDirect(section, key, "(default)", "f.ini"), expected) << content;
    }
    EXPECT_EQ(ReadIniValueDirect("S", "k", "(default)", "missing.ini"), "(default)");
}

} // namespace
} // namespace ov::modINI
