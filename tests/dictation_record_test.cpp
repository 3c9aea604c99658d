// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_record.h"
#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "dictation/field_values.h"
#include "dictation/name_decoding.h"
#include "dictation/name_encoding.h"
#include "platform/locale.h"
#include "support/language/modLanguage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ov::modDictation {
namespace {

struct TextCase {
    const char* what;
    std::string in;
    std::string out;
};

// The schemes are defined by passes over the whole text; the decoders read once.
TEST(NameDecoding, GivesWhatThePassesGive) {
    struct Case {
        std::string text;
        std::string general;
        std::string second;
    };
    for (const Case& c : std::vector<Case>{
             {"~_²²³³%%'!!$#", "*/?<>\".:", "~_²²³³%%'!!$#"},
             {"²0²1²2²3²4²5²6²7²8²9²A", "²0²1²2²3²4²5²6²7²8²9²A", "²*/\\?<>\".:|"},
             {"²³%!$", "²³%!$", "²³%!$"},
             {"%%%!!!²²²³³³$$##", ">%.!?²<³$:#", "%%%!!!²²²³³³$$##"},
             {"²01²00²0²1²²1²a²", "²01²00²0²1?1²a²", "*²0²*²*²a²"},
             {"a\xC2", "a\xC2", "a\xC2"},
             {"ÄÖÜäöüß€#A0", "ÄÖÜäöüß€#A0", "ÄÖÜäöüß€#A0"},
         }) {
        EXPECT_EQ(DecodeFieldText(c.text), c.general);
        EXPECT_EQ(DecodeFieldText2(c.text), c.second);
    }
}

TEST(NameEncoding, WritesWhatReadsBack) {
    struct Case {
        const char* what;
        std::string_view text;
        std::optional<std::string> general;
        std::optional<std::string> second;
    };
    for (const Case& c : std::vector<Case>{
             {"plain with umlauts", "Öztürk ß 7", "Öztürk ß 7", "Öztürk ß 7"},
             {"all that a file name cannot hold", "*/?<>\".:", "~_²²³³%%'!!$#", "²1²2²4²5²6²7²8²9"},
             {"backslash and bar", "a\\b|c", std::nullopt, "a²3b²Ac"},
             {"lone escape halves", "²a³%!$", "²a³%!$", "²0a³%!$"},
             {"literal pair", "a!!b", std::nullopt, "a!!b"},
             {"half behind an escape", "?²", "²²²", "²4²0"},
             {"superscript before a digit", "m²1", "m²1", std::nullopt},
             {"field separator", "a@@5$HOCH", std::nullopt, std::nullopt},
             {"would join the next separator", "a@", std::nullopt, std::nullopt},
             {"line end", "a\nb", std::nullopt, std::nullopt},
             {"not UTF-8", "M\xFCller", std::nullopt, std::nullopt},
         }) {
        EXPECT_EQ(encodeFieldText(c.text), c.general) << c.what;
        EXPECT_EQ(encodeFieldText2(c.text), c.second) << c.what;
    }
}

TEST(NameBuilder, RefusesAndStaysAsItWas) {
    DictationNameBuilder name(20);
    EXPECT_EQ(name.name(), "2$");
    EXPECT_TRUE(name.add(5, "HOCH"));
    EXPECT_TRUE(name.add(2, "ROH"));
    EXPECT_FALSE(name.add(5, "MSG")) << "there already";
    EXPECT_FALSE(name.add(2, "MAI")) << "there already";
    EXPECT_FALSE(name.add(-1, "x")) << "no field of a name";
    EXPECT_FALSE(name.add(0, "x")) << "no field of a name";
    EXPECT_FALSE(name.add(7, "a_b")) << "cannot be written";
    EXPECT_FALSE(name.add(8, "1234")) << "21 bytes";
    EXPECT_TRUE(name.add(8, "123")) << "20 bytes";
    EXPECT_EQ(name.name(), "2$ROH@@5$HOCH@@8$123");
}

TEST(DictationRecord, ReadsFields) {
    struct Case {
        const char* what;
        std::string name;
        std::int32_t field;
        bool found;
        std::string value;
    };
    const std::vector<Case> cases = {
        {"status", "2$ROH@@5$HOCH", 2, true, "ROH"},
        {"status not at the start", "@@12$x2$y", 2, false, ""},
        {"status as a tagged field", "@@2$ROH", 2, false, ""},
        {"absent", "2$ROH", 5, false, ""},
        {"empty", "2$@@5$@@6$x@", 5, true, ""},
        {"the last", "2$@@5$@@6$x@", 6, true, "x@"},
        {"a number is not the start of another", "2$@@17$1@@7$24.12.2003", 7, true, "24.12.2003"},
        {"the first one counts", "2$@@5$A@b@@5$B@", 5, true, "A@b"},
        {"three separators in a row", "2$x@@@5$HOCH", 5, true, "HOCH"},
        {"the second scheme for 23", "2$@@23$~²1", 23, true, "~*"},
        {"cut before it is decoded", "2$@@14$a@@²²", 14, true, "a"},
        {"a tag that is cut off", "2$" + std::string(28, 'x') + "@@14", 14, false, ""},
        {"zero", "2$@@0$z", 0, true, "z"},
        {"whole name", "2$a~b@@5$", -1, true, "2$a*b@@5$"},
        {"directory", "2$", -2, true, "...\\Ward3"},
        {"serial of a date", "2$@@7$24.12.2003 17$05$00", -3, true, "37979.7118055556"},
        {"serial is trimmed", "2$@@4$ 24.12.2003  ", -4, true, "37979"},
        {"serial of no date", "2$@@20$soon", -5, true, ""},
        {"serial of an absent date", "2$", -3, true, ""},
    };
    for (const Case& c : cases) {
        std::string value = "left over";
        EXPECT_EQ(GetDictationField(c.field, "\\store\\Ward3\\", c.name, value), c.found) << c.what;
        EXPECT_EQ(value, c.value) << c.what;
    }
}

// The search for a tag looks at blocks: it must find what a plain search finds, at any offset.
TEST(DictationRecord, FindsTagsAtEveryOffset) {
    for (std::size_t before = 0; before < 80; ++before)
        for (std::size_t behind = 0; behind < 40; ++behind) {
            const std::string name = std::string(before, '@') + "@@17$7" + std::string(behind, '@');
            const auto value = findFieldValue(name, "@@17$");
            ASSERT_TRUE(value) << before << ' ' << behind;
            ASSERT_EQ(*value, behind == 1 ? "7@" : "7") << before << ' ' << behind;
            ASSERT_FALSE(findFieldValue(name, "@@18$")) << before << ' ' << behind;
        }
}

TEST(DictationRecord, DirectoryText) {
    const std::vector<TextCase> cases = {
        {"last part", "\\store\\Ward3\\", "...\\Ward3"},
        {"finished ones keep their ward", "\\store\\Ward3\\erl\\", "...\\Ward3\\erl"},
        {"ERL at the top", "\\ERL\\", "...\\ERL"},
        {"ERL right below a drive", "D:\\ERL\\", "...\\ERL"},
        {"without a final backslash", "D:\\Ward3", "...\\Ward3"},
        {"only one backslash", "Ward3\\", "Ward3"},
        {"empty", "", ""},
        {"root", "\\", ""},
        {"ends in ERL but is not", "\\a\\XERL\\", "...\\XERL"},
        {"not UTF-8", "\\Ä\\M\xFCller\\ERL\\", "...\\Müller\\ERL"},
    };
    for (const TextCase& c : cases)
        EXPECT_EQ(GetDirectoryText(c.in), c.out) << c.what;
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
    const platform::DateTime d = dateOf(*serial);
    std::string text =
        std::to_string(d.year) + "-" + std::to_string(d.month) + "-" + std::to_string(d.day);
    if (serial->hasTime)
        text += " " + std::to_string(d.hour) + ":" + std::to_string(d.minute) + ":" +
                std::to_string(d.second);
    return text;
}

TEST(FieldDate, ReadsTheWrittenForm) {
    const std::vector<TextCase> cases = {
        {"colons are no time", "24.12.2003 17:05:00", "2003-12-24"},
        {"huge", "99999999999.1.2003", "none"},
        {"two digits of the year", "01.01.29x", "2029-1-1"},
        {"two digits before", "01.01.0030", "1930-1-1"},
        {"too short", "1.1.203", "none"},
        {"too short in characters", "1.1.03ä", "none"},
        {"four pieces", "1.2.3.2003", "none"},
        {"no separator", "24122003", "none"},
        {"a separator at the start", ".1.2.2003", "none"},
        {"leading blank", " 24.12.2003", "none"},
        {"day rolls over", "31.02.2004", "2004-3-2"},
        {"month rolls over", "01.13.2003", "2004-1-1"},
        {"day 0", "00.03.2004", "2004-2-29"},
        {"letters behind a number", "24x.12y.2003z", "2003-12-24"},
        {"mixed, a second blank ends the time", "24.12-2003 17$05$00 x", "2003-12-24 17:5:0"},
        {"year too late", "01.01.10000", "none"},
        {"rolls out of the years", "31.12.9999 24$00$00", "none"},
        {"huge time", "01.01.2003 99999999999$0$0", "none"},
        {"seconds beyond 16 bits", "01.01.2003 0$0$32768", "none"},
        {"a sign is no digit", "24.12.2003 -1$-1$-1", "2003-12-24 0:0:0"},
        {"superscript", "²².³³.2003", "2002-11-30"},
    };
    for (const TextCase& c : cases)
        EXPECT_EQ(describe(ReadFieldDate(c.in, false)), c.out) << c.what;
    EXPECT_EQ(describe(ReadFieldDate("24.12.2003 17$05$00", true)), "2003-12-24");
}

TEST(FieldDate, SerialsAndWrittenDatesAreTheSame) {
    EXPECT_EQ(describe(readDateOrSerial("37979.7118055556")), "2003-12-24 17:5:0");
    EXPECT_EQ(describe(readDateOrSerial(" 24.12.2003 17$05$00 ")), "2003-12-24 17:5:0");
    EXPECT_EQ(describe(readDateOrSerial("0")), "1899-12-30");
    EXPECT_EQ(describe(readDateOrSerial("-1")), "1899-12-29");
    for (const char* text :
         {"", "nan", "inf", "1e300", "20031224", "37979x", ".", "2958465.9999999"})
        EXPECT_EQ(describe(readDateOrSerial(text)), "none") << text;
    for (const std::int32_t day : {-657434, -1, 0, 1, 37979, 2958465})
        for (const std::int32_t second : {0, 1, 43200, 86399}) {
            const DateSerial serial{day, second, second != 0};
            EXPECT_EQ(readDateOrSerial(serialText(serial)), serial) << day << ' ' << second;
        }
}

TEST(FieldDate, Seconds) {
    EXPECT_EQ(readSeconds("00:02:15"), 135);
    EXPECT_EQ(readSeconds("00$02$15"), 135);
    EXPECT_EQ(readSeconds(" 1:30 "), 5400);
    EXPECT_EQ(readSeconds("25:00:00"), 90000);
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

// What a list shows.
TEST(FieldValues, ShownTexts) {
    modLanguage::SetLanguage(7, 0);
    platform::setLocale(platform::localeNamed("de"));
    const auto shown = [](std::int32_t field, const char* name) {
        return fieldText(field, "\\store\\Ward3\\", name);
    };
    EXPECT_EQ(shown(9, "2$@@7$4.2.2003 7$05$00"), "04.02.2003 07:05:00");
    EXPECT_EQ(shown(16, "2$@@4$bald"), "bald");
    EXPECT_EQ(shown(13, "2$@@6$0$2$5"), "00:02:05");
    EXPECT_EQ(shown(13, "2$@@6$kurz"), "kurz");
    EXPECT_EQ(shown(2, "2$FOO"), "FOO");
    EXPECT_EQ(shown(7, "2$@@17$128"), "(Status 128)");
    EXPECT_EQ(shown(7, "2$@@17$384"), "(Status 128), (Status 256)");
    EXPECT_EQ(shown(7, "2$@@17$0"), "");
    EXPECT_EQ(shown(7, "2$@@17$x"), "x");
    EXPECT_EQ(shown(0, "2$"), "");
    platform::setLocale(std::nullopt);
}

} // namespace
} // namespace ov::modDictation
