// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_record.h"
#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "dictation/field_values.h"
#include "dictation/name_decoding.h"
#include "platform/locale.h"
#include "support/language/modLanguage.h"

#include <gtest/gtest.h>

namespace ov::modDictation {
namespace {

// The schemes are defined by passes over the whole text; the decoders read once.
TEST(NameDecoding, GivesWhatThePassesGive) {
    const std::string cases[][3] = {
        {"²0²1²2²3²4²5²6²7²8²9²A", "²0²1²2²3²4²5²6²7²8²9²A", "²*/\\?<>\".:|"},
        {"²³%!$", "²³%!$", "²³%!$"},
        {"%%%!!!²²²³³³$$##", ">%.!?²<³$:#", "%%%!!!²²²³³³$$##"},
        {"²01²00²0²1²²1²a²", "²01²00²0²1?1²a²", "*²0²*²*²a²"},
        {"äß€#A0\xC2", "äß€#A0\xC2", "äß€#A0\xC2"}};
    for (const auto& [text, general, second] : cases) {
        EXPECT_EQ(DecodeFieldText(text), general);
        EXPECT_EQ(DecodeFieldText2(text), second);
    }
}

TEST(DictationRecord, ReadsFields) {
    const std::tuple<std::string, std::int32_t, std::optional<std::string>> cases[] = {
        {"2$ROH@@5$HOCH", 2, "ROH"},
        {"@@12$x2$y", 2, {}}, // the status stands at the start
        {"@@2$ROH", 2, {}},
        {"2$ROH", 5, {}},
        {"2$@@5$@@6$x@", 5, ""},
        {"2$@@17$1@@7$x@", 7, "x@"},   // a number is not the start of another
        {"2$@@5$A@b@@5$B@", 5, "A@b"}, // the first one counts
        {"2$@@23$~²1", 23, "~*"},      // by the second scheme
        {"2$@@14$a@@²²", 14, "a"},     // cut before it is decoded
        {"2$" + std::string(28, 'x') + "@@14", 14, {}},
        {"2$@@0$z", 0, "z"},
        {"2$a~b@@5$", -1, "2$a*b@@5$"},
        {"2$", -2, "...\\Ward3"},
        {"2$@@7$24.12.2003 17$05$00", -3, "37979.7118055556"},
        {"2$@@4$ 24.12.2003  ", -4, "37979"},
        {"2$@@20$soon", -5, ""},
        {"2$", -3, ""}};
    for (const auto& [name, field, expected] : cases) {
        std::string value = "left over";
        EXPECT_EQ(GetDictationField(field, "\\store\\Ward3\\", name, value), expected.has_value());
        EXPECT_EQ(value, expected.value_or("")) << name << ", field " << field;
    }
}

// The search for a tag looks at blocks: it must find what a plain search finds, at any offset.
TEST(DictationRecord, FindsTagsAtEveryOffset) {
    for (std::size_t before = 0; before < 80; ++before)
        for (std::size_t behind = 0; behind < 40; ++behind) {
            const std::string text(1 + before % 2, '7');
            const std::string name =
                std::string(before, '@') + "@@17$" + text + std::string(behind, '@');
            const auto value = findFieldValue(name, "@@17$");
            ASSERT_TRUE(value) << before << ' ' << behind;
            ASSERT_EQ(*value, behind == 1 ? text + '@' : text) << before << ' ' << behind;
            ASSERT_FALSE(findFieldValue(name, "@@18$")) << before << ' ' << behind;
        }
}

TEST(DictationRecord, DirectoryText) {
    const std::pair<const char*, const char*> cases[] = {
        {"\\store\\Ward3\\", "...\\Ward3"},
        {"\\store\\Ward3\\erl\\", "...\\Ward3\\erl"}, // the finished ones keep their ward
        {"\\ERL\\", "...\\ERL"},
        {"D:\\ERL\\", "...\\ERL"},
        {"D:\\Ward3", "...\\Ward3"},
        {"Ward3\\", "Ward3"},
        {"\\", ""},
        {"\\a\\XERL\\", "...\\XERL"},
        {"\\Ä\\M\xFCller\\ERL\\", "...\\Müller\\ERL"}};
    for (const auto& [directory, text] : cases)
        EXPECT_EQ(GetDirectoryText(directory), text) << directory;
}

TEST(DictationRecord, Names) {
    std::string buffer;
    EXPECT_EQ(dictationName("2$ROH.Wav", buffer), "2$ROH");
    EXPECT_EQ(dictationName(".wav", buffer), "");
    EXPECT_EQ(dictationName("2$@@14$M\xFCller\xB2\xB2.wav", buffer), "2$@@14$Müller²²");
    for (const char* name : {"x.WAV", "x.wAv", ".wav", "a.b.wav"})
        EXPECT_TRUE(hasDictationEnding(name)) << name;
    for (const char* name : {"wav", "x.wave", "x.wa", "x.wav ", "xwav", "", "x\x0Ewav"})
        EXPECT_FALSE(hasDictationEnding(name)) << name;
}

std::string describe(const std::optional<DateSerial>& serial) {
    if (!serial)
        return "none";
    const platform::DateTime date = dateOf(*serial);
    return platform::formatIsoDate(date) +
           (serial->hasTime ? " " + platform::formatLongTime(date) : "");
}

TEST(FieldDate, ReadsTheWrittenForm) {
    platform::setLocale(platform::localeNamed("de"));
    const std::pair<const char*, const char*> cases[] = {
        {"24.12.2003 17:05:00", "2003-12-24"}, // colons are no time
        {"01.01.29x", "2029-01-01"},
        {"01.01.0030", "1930-01-01"},
        {"31.02.2004", "2004-03-02"}, // rolls over
        {"01.13.2003", "2004-01-01"},
        {"00.03.2004", "2004-02-29"},
        {"24x.12y.2003z", "2003-12-24"},
        {"24.12-2003 17$05$00 x", "2003-12-24 17:05:00"},
        {"24.12.2003 -1$-1$-1", "2003-12-24 00:00:00"}, // a sign is no digit
        {"²².³³.2003", "2002-11-30"}};
    for (const auto& [text, date] : cases)
        EXPECT_EQ(describe(ReadFieldDate(text, false)), date) << text;
    EXPECT_EQ(describe(ReadFieldDate("24.12.2003 17$05$00", true)), "2003-12-24");
    for (const char* text : {"99999999999.1.2003", "1.1.203", "1.1.03ä", "1.2.3.2003", "24122003",
                             ".1.2.2003", " 24.12.2003", "01.01.10000", "31.12.9999 24$00$00",
                             "01.01.2003 99999999999$0$0", "01.01.2003 0$0$32768"})
        EXPECT_EQ(describe(ReadFieldDate(text, false)), "none") << text;
    // Serials and written dates are the same.
    EXPECT_EQ(describe(readDateOrSerial("37979.7118055556")), "2003-12-24 17:05:00");
    EXPECT_EQ(describe(readDateOrSerial(" 24.12.2003 17$05$00 ")), "2003-12-24 17:05:00");
    EXPECT_EQ(describe(readDateOrSerial("-1")), "1899-12-29");
    for (const char* text :
         {"", "nan", "inf", "1e300", "20031224", "37979x", ".", "2958465.9999999"})
        EXPECT_EQ(describe(readDateOrSerial(text)), "none") << text;
    for (const std::int32_t day : {-657434, -1, 0, 1, 37979, 2958465})
        for (const std::int32_t second : {0, 1, 43200, 86399}) {
            const DateSerial serial{day, second, second != 0};
            std::string text;
            appendSerialText(serial, text);
            EXPECT_EQ(readDateOrSerial(text), serial) << day << ' ' << second;
        }
    platform::setLocale(std::nullopt);
}

TEST(FieldDate, Seconds) {
    for (const auto& [text, seconds] : {std::pair("00:02:15", 135), std::pair("00$02$15", 135),
                                        std::pair(" 1:30 ", 5400), std::pair("25:00:00", 90000)})
        EXPECT_EQ(readSeconds(text), seconds);
    for (const char* text :
         {"", "135", "1:60", "1:2:60", "1:2:3:4", "a:b", "-1:00", "1::2", "99999:00", "00:02:15x"})
        EXPECT_FALSE(readSeconds(text)) << text;
}

TEST(FieldCodes, CodesOfTexts) {
    const auto codes = [](std::int32_t field, const std::vector<const char*>& texts) {
        std::string list;
        for (const char* text : texts)
            list += std::to_string(GetFieldCode(field, text)) + " ";
        return list;
    };
    EXPECT_EQ(codes(2, {"", "wav", "ROH", "MAI", "X", " ROH"}), "6 6 7 9 0 0 ");
    EXPECT_EQ(codes(99, {"Stop"}) + codes(6, {"ROH"}), "8 0 ");
    EXPECT_EQ(codes(5, {"", "normal", "FRIST", "HOCH", "EDIT", "MSG"}), "1 1 2 3 4 5 ");
    EXPECT_EQ(codes(5, {"1", "2", "3", "4", "5", "6"}), "1 3 2 5 4 0 ");
    EXPECT_EQ(codes(17, {"", "0", "1", "128", "512", "384", "1023", "1024", "128abc", "x", "-1"}),
              "0 0 10 17 19 35 145 0 17 0 145 ");
}

// The pair 6 and 7 is crossed, as are 16 and its neighbours.
TEST(FieldCodes, TextsOfCodes) {
    modLanguage::SetLanguage(9, 0);
    std::string texts;
    for (std::int32_t code = 0; code <= 31; ++code)
        texts += GetStatusText(code) + "|";
    EXPECT_EQ(texts,
              "|Normal|Deadline|High|Editing|Message|Dictated|Draft|On hold|Sent by email|New|"
              "In progress|Deferred|Query|Typed|Finished|Printed|(Status 128)|(Status 256)|"
              "(Status 512)|||||||||||Finished|Finished and printed|");
    EXPECT_EQ(std::string(codeWord(8)).append(codeWord(4)).append(codeWord(10)), "STOPEDIT");
}

// What a list shows of what is no code, no date, no length.
TEST(FieldValues, ShownTexts) {
    modLanguage::SetLanguage(7, 0);
    platform::setLocale(platform::localeNamed("de"));
    const std::tuple<std::int32_t, const char*, const char*> cases[] = {
        {9, "2$@@7$4.2.2003 7$05$00", "04.02.2003 07:05:00"},
        {16, "2$@@4$bald", "bald"},
        {13, "2$@@6$kurz", "kurz"},
        {2, "2$FOO", "FOO"},
        {7, "2$@@17$384", "(Status 128), (Status 256)"},
        {7, "2$@@17$0", ""},
        {7, "2$@@17$x", "x"},
        {0, "2$", ""}};
    for (const auto& [field, name, shown] : cases)
        EXPECT_EQ(shownValue(field, {"\\store\\Ward3\\", name}), shown) << name;
    platform::setLocale(std::nullopt);
}

} // namespace
} // namespace ov::modDictation
