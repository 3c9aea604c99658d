// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "demo/demo_names.h"

#include "dictation/dictation_record.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace ov::demo {

namespace {

using modDictation::DictationNameBuilder;
using std::chrono::days;
using std::chrono::sys_days;
using Texts = std::span<const std::string_view>;

// What the fields of a name hold.
namespace field {
using namespace modDictation::dictation_field;
constexpr int authorCode = 3;
constexpr int length = 6;
constexpr int fileNumber = 8;
constexpr int column1 = 9;
constexpr int column2 = 10;
constexpr int subject = 11;
constexpr int number = 12;
constexpr int worktype = 13;
constexpr int author = 14;
constexpr int typist = 16;
constexpr int note1 = 91;
constexpr int group = 92;
constexpr int note2 = 95;
constexpr int marker = 98;
} // namespace field

constexpr int noHour = -1;
constexpr int rareAuthorIndex = 5;

// Values that the first names carry, so that the smallest store shows every escape.
struct Showcase {
    int index;
    int field;
    std::string_view value;
};
constexpr std::array<Showcase, 7> showcases{
    {{0, field::subject, "Verdacht auf Infekt? (Typ 1/2)"},
     {1, field::note2, "CRP < 5, RR > 140: *bitte* prüfen"},
     {2, field::note1, "\"wie besprochen\", Rückfragen an Dr. Lang"},
     {3, field::freeText, "Fläche 4 cm², siehe C:\\Akten\\Weiß | Station 3/4?"},
     {4, field::freeText, "<eilt> *neu* \"Nr. 7\""},
     {rareAuthorIndex, field::status, "ROH"},
     {rareAuthorIndex, field::priority, "HOCH"}}};

struct Author {
    std::string_view code;
    std::string_view name;
};
constexpr std::array<Author, 3> rareAuthors{
    {{"OEZ", "Dr. Öztürk"}, {"OEZ", "Öztürk"}, {"oez", "DR. ÖZTÜRK"}}};
constexpr std::array<Author, 7> germanAuthors{{{"MUE", "Dr. Müller"},
                                               {"WEB", "Weber"},
                                               {"KRA", "Krämer"},
                                               {"SCH", "Prof. Schönfeld"},
                                               {"HOF", "Hofmann"},
                                               {"LAN", "Dr. Lang"},
                                               {"BRA", "Brandt"}}};
// The first two are no lawyers.
constexpr std::array<Author, 5> englishAuthors{{{"HAR", "Dr Harris"},
                                                {"PAT", "Dr Patel"},
                                                {"WHI", "Whitfield"},
                                                {"BEN", "J. Bennett"},
                                                {"CLA", "M. Clarke"}}};

// "HOCH" stands for one priority in five, the empty text and absent fields for normal ones.
constexpr std::array<std::string_view, 20> priorities{
    {"NORMAL", "NORMAL", "NORMAL", "NORMAL", "NORMAL", "NORMAL", "1", "1",    "HOCH", "HOCH",
     "HOCH",   "HOCH",   "2",      "FRIST",  "3",      "MSG",    "4", "EDIT", "5",    ""}};
constexpr std::array<std::string_view, 10> statuses{
    {"ROH", "ROH", "ROH", "ROH", "WAV", "WAV", "STOP", "STOP", "MAI", ""}};
constexpr std::array<std::string_view, 16> flagSets{{"1", "2", "4", "8", "16", "32", "64", "128",
                                                     "256", "512", "3", "48", "129", "384", "1023",
                                                     ""}};
constexpr std::array<std::string_view, 4> markers{{"D", "D", "d", "X"}};

// The first half of each is German, the second English.
constexpr std::array<std::string_view, 6> typists{
    {"Frau Keller", "Jäger", "Yılmaz", "S. Thompson", "Nowak", "Mrs Reed"}};
constexpr std::array<std::string_view, 4> groups{
    {"Schreibbüro 1", "Schreibbüro 2", "Day shift", "Night shift"}};
constexpr std::array<std::string_view, 4> rooms{{"Zimmer 12", "Außenstelle", "Room 7", "Annexe"}};
constexpr std::array<std::string_view, 4> costCentres{{"KST 4711", "Privat", "CC-20", "Private"}};
constexpr std::array<std::string_view, 6> firstNotes{{"Bitte heute noch", "Kopie an Müller",
                                                      "Rückfrage: Termin?", "Please call back",
                                                      "2 enclosures", "urgent / by hand"}};
constexpr std::array<std::string_view, 6> secondNotes{
    {"Aufnahme leise", "zweiter Teil folgt", "", "spelling of names on tape", "poor sound", ""}};
constexpr std::array<std::string_view, 4> remarks{
    {"Fläche 3 x 4 m²", "Rückruf 8:30 | Pforte", "see also: letter of 3.11.", "page 2/3"}};

struct TradeTexts {
    Texts subjects;
    Texts worktypes;
    std::span<const Author> authors;
    std::string_view filePrefix;
    bool english;
};

constexpr std::array<std::string_view, 8> medicalGermanSubjects{
    {"Entlassungsbrief Müller-Lüdenscheidt", "OP-Bericht Appendektomie", "Befund MRT Knie links",
     "Arztbrief Diabetes mellitus Typ 2", "Verlegung nach Herzinfarkt",
     "Röntgen Thorax in 2 Ebenen", "Gutachten Rentenversicherung", "Aufklärung Narkose"}};
constexpr std::array<std::string_view, 4> medicalGermanWorktypes{
    {"Arztbrief", "OP-Bericht", "Befund", "Gutachten"}};
constexpr std::array<std::string_view, 6> legalGermanSubjects{
    {"Klageschrift Weiß ./. Stadtwerke", "Schriftsatz Unterhalt", "Kaufvertrag Grundstück",
     "Mahnung Bauträger", "Widerspruch Bußgeldbescheid", "Testament Gräfin"}};
constexpr std::array<std::string_view, 3> legalGermanWorktypes{
    {"Schriftsatz", "Vertrag", "Aktenvermerk"}};
constexpr std::array<std::string_view, 6> medicalEnglishSubjects{
    {"Discharge letter", "Chest X-ray report", "Clinic letter: hypertension",
     "Operation note hip replacement", "Referral to cardiology", "Ultrasound abdomen"}};
constexpr std::array<std::string_view, 3> medicalEnglishWorktypes{{"Letter", "Report", "Note"}};
constexpr std::array<std::string_view, 5> legalEnglishSubjects{
    {"Witness statement", "Lease agreement 14 High Street", "Letter before action",
     "Affidavit of service", "Draft will and codicil"}};
constexpr std::array<std::string_view, 3> legalEnglishWorktypes{{"Letter", "Deed", "Memo"}};

TradeTexts textsOf(DemoTrade trade) {
    switch (trade) {
    case DemoTrade::legalGerman:
        return {legalGermanSubjects, legalGermanWorktypes, germanAuthors, "12 C ", false};
    case DemoTrade::medicalEnglish:
        return {medicalEnglishSubjects, medicalEnglishWorktypes, englishAuthors, "H", true};
    case DemoTrade::legalEnglish:
        return {legalEnglishSubjects, legalEnglishWorktypes,
                std::span<const Author>(englishAuthors).subspan(2), "M", true};
    case DemoTrade::medicalGerman:
        break;
    }
    return {medicalGermanSubjects, medicalGermanWorktypes, germanAuthors, "P", false};
}

Texts half(Texts texts, bool second) {
    return texts.subspan(second ? texts.size() / 2 : 0, texts.size() / 2);
}

template <typename... Numbers>
std::string formatted(const char* format, Numbers... numbers) {
    std::array<char, 64> buffer{};
    const int size = std::snprintf(buffer.data(), buffer.size(), format, numbers...);
    return {buffer.data(), static_cast<std::size_t>(std::max(size, 0))};
}

} // namespace

DemoNames::DemoNames(std::uint32_t seed, const platform::DateTime& today)
    : dice_(seed),
      year_(today.year),
      today_(std::chrono::year{today.year} /
             std::chrono::month{static_cast<unsigned>(today.month)} /
             std::chrono::day{static_cast<unsigned>(today.day)}) {}

DemoName DemoNames::next(DemoTrade trade) {
    const int index = count_++;
    DemoName result;
    result.seconds = static_cast<int>(3 + std::min(dice_.below(38), dice_.below(38)));
    result.age = days(std::min(dice_.below(63), dice_.below(63)));
    result.dictated = today_ - result.age;
    const std::string_view ending = dice_.chance(10) ? ".wav" : ".WAV";
    if (index >= showcaseCount && dice_.chance(1)) { // straight from a recorder, no fields
        result.fileName = formatted("REC%07d", index).append(ending);
        return result;
    }

    DictationNameBuilder name;
    name.add(field::number, formatted("%06d", 100000 + index));
    for (const Showcase& showcase : showcases)
        if (showcase.index == index)
            name.add(showcase.field, showcase.value);
    addState(name);
    addTimes(name, result);
    addAuthor(name, result, trade, index == rareAuthorIndex);
    addOffice(name, textsOf(trade).english);
    result.fileName = name.name() + std::string(ending);
    return result;
}

void DemoNames::addState(DictationNameBuilder& name) {
    name.add(field::status, dice_.pick(Texts(statuses)));
    if (dice_.chance(90))
        name.add(field::priority, dice_.pick(Texts(priorities)));
    if (dice_.chance(30))
        name.add(field::flags, dice_.pick(Texts(flagSets)));
    if (dice_.chance(15))
        name.add(field::marker, dice_.pick(Texts(markers)));
    if (dice_.chance(10))
        name.add(field::secondStatus, dice_.pick(Texts(statuses)));
}

void DemoNames::addTimes(DictationNameBuilder& name, const DemoName& result) {
    if (dice_.chance(97))
        name.add(field::length, formatted("00$00$%02d", result.seconds));
    const bool isToday = result.age == days(0); // early, so that it lies behind the reader
    if (dice_.chance(95))
        name.add(field::dictated,
                 dateText(result.dictated, isToday ? 5 : 7 + static_cast<int>(dice_.below(8))));
    const auto age = static_cast<std::uint32_t>(result.age.count());
    const int hour = isToday ? 6 : 16 + static_cast<int>(dice_.below(4));
    const sys_days changed = result.dictated + days(dice_.below(age + 1));
    if (dice_.chance(40))
        name.add(field::changed, dateText(changed, hour));
    if (dice_.chance(40))
        name.add(field::due,
                 dateText(today_ + days(static_cast<int>(dice_.below(57)) - 7), noHour));
}

void DemoNames::addAuthor(DictationNameBuilder& name, DemoName& result, DemoTrade trade,
                          bool rare) {
    const TradeTexts texts = textsOf(trade);
    rare = dice_.below(50) == 0 || rare;
    const Author& author = dice_.pick(rare ? std::span<const Author>(rareAuthors) : texts.authors);
    if (rare || dice_.chance(95)) {
        name.add(field::author, author.name);
        result.author = rare ? rareAuthors.front().name : author.name;
    }
    if (dice_.chance(60))
        name.add(field::authorCode, author.code);
    const std::uint32_t file = 100 + dice_.below(900);
    if (dice_.chance(50))
        name.add(field::fileNumber,
                 std::string(texts.filePrefix) + formatted("%u/%02d", file, year_ % 100));
    if (dice_.chance(80))
        name.add(field::subject, dice_.pick(texts.subjects));
    if (dice_.chance(30))
        name.add(field::worktype, dice_.pick(texts.worktypes));
}

void DemoNames::addOffice(DictationNameBuilder& name, bool english) {
    struct Choice {
        int field;
        std::uint32_t percent;
        Texts texts;
    };
    static constexpr std::array<Choice, 7> choices{{{field::typist, 40, typists},
                                                    {field::group, 20, groups},
                                                    {field::column1, 12, rooms},
                                                    {field::column2, 12, costCentres},
                                                    {field::note1, 12, firstNotes},
                                                    {field::note2, 10, secondNotes},
                                                    {field::freeText, 5, remarks}}};
    for (const Choice& choice : choices)
        if (dice_.chance(choice.percent))
            name.add(choice.field, dice_.pick(half(choice.texts, english)));
}

// "21-11-2026 17$05$00" or with dots; without an hour the day alone.
std::string DemoNames::dateText(sys_days day, int hour) {
    const std::chrono::year_month_day date(day);
    const char separator = dice_.chance(70) ? '-' : '.';
    std::string text =
        formatted("%02u%c%02u%c%d", static_cast<unsigned>(date.day()), separator,
                  static_cast<unsigned>(date.month()), separator, static_cast<int>(date.year()));
    const std::uint32_t minute = dice_.below(60);
    const std::uint32_t second = dice_.below(60);
    if (hour != noHour)
        text += formatted(" %02d$%02u$%02u", hour, minute, second);
    return text;
}

} // namespace ov::demo
