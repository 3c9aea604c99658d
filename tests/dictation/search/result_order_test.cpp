// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "dictation/search/collation_key.h"
#include "dictation/search/result_order.h"
#include "platform/files.h"
#include "plugin/host_error.h"
#include "tests/recording_interface.h"

#include <gtest/gtest.h>
#include <unicode/coll.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <tuple>

namespace ov::modDictation {
namespace {

using Order = std::vector<std::int32_t>;

TEST(ResultOrder, ByEveryKindOfValue) {
    const std::vector<std::string> names = {
        "2$MAI@@14$zeta@@5$HOCH@@6$00$10$00@@7$02.01.2020@@12$10@@11$Befund der Klinik Nord",
        "2$ROH@@14$Öztürk@@5$NORMAL@@6$00$02$00@@7$01.02.2019@@12$9@@11$Befund der Klinik Mitte",
        "2$STOP@@14$oben@@5$FRIST@@6$x@@7$soon@@12$9a@@11$Befund der Klinik",
        "2$ROH@@14$Ozean@@5$HOCH@@6$01$00$00@@7$02.01.2020 08$00$00@@11$Befund der Klinik Mitte B"};
    DictationList list;
    for (const std::string& name : names)
        list.add("\\s\\", name + ".WAV");
    const std::tuple<std::int32_t, Order, Order> cases[] = {
        {5, {3, 4, 2, 1}, {1, 2, 4, 3}},  // umlauts in their place
        {9, {3, 2, 1, 4}, {4, 1, 2, 3}},  // dates by day, then time
        {13, {3, 2, 1, 4}, {4, 1, 2, 3}}, // lengths by seconds
        {2, {2, 4, 3, 1}, {1, 3, 2, 4}},  // codes by number, ties as found
        {15, {2, 3, 1, 4}, {1, 4, 3, 2}},
        {8, {4, 2, 3, 1}, {1, 3, 2, 4}},  // 9 before 10, missing first
        {18, {3, 2, 4, 1}, {1, 4, 2, 3}}, // behind a long common beginning
        {3, {1, 2, 3, 4}, {1, 2, 3, 4}}};
    for (const auto& [field, up, down] : cases) {
        EXPECT_EQ(sortedOrder(list, field, false), up) << field;
        EXPECT_EQ(sortedOrder(list, field, true), down) << field;
    }
}

// As `sort` orders the paths where there is no country.
TEST(ResultOrder, ByPath) {
    const std::vector<std::string> directories = {"\\s\\",          "\\s\\a\\",   "\\s\\a-b\\",
                                                  "\\s\\a\\c\\",    "\\s\\a.b\\", "\\s\\Z\\",
                                                  "\\s\\\xC3\xA4\\"};
    DictationList list;
    std::vector<std::pair<std::string, std::int32_t>> paths;
    for (const std::string& directory : directories)
        for (const char* name : {"b.WAV", "a.WAV", "a-b.WAV", "\xFF.WAV", "a"}) {
            list.add(directory, name);
            paths.emplace_back(platform::toNativePath(directory + name), list.size());
        }
    std::ranges::sort(paths);
    Order expected;
    for (const auto& [path, index] : paths)
        expected.push_back(index);
    const SortKey path[] = {{wholePath, false}};
    EXPECT_EQ(sortedOrder(list, path), expected);
    std::ranges::reverse(expected);
    const SortKey fromTheEnd[] = {{wholePath, true}};
    EXPECT_EQ(sortedOrder(list, fromTheEnd), expected);
}

TEST(ResultOrder, ByAnyNumberOfKeys) {
    DictationList list;
    for (const char* name : {"2$ROH@@14$b@@12$2@@18$x", "2$ROH@@14$a@@12$2", "2$WAV@@14$b@@12$2",
                             "2$ROH@@14$a@@12$1", "2$ROH@@14$b@@12$1", "2$ROH@@14$a@@12$2"})
        list.add("\\s\\", std::string(name) + ".WAV");
    const std::pair<std::vector<SortKey>, Order> cases[] = {
        {{}, {1, 2, 3, 4, 5, 6}},
        {{{8, true}}, {1, 2, 3, 6, 4, 5}},
        {{{2, false}, {5, false}, {8, true}}, {3, 2, 6, 4, 1, 5}},
        {{{8, false}, {5, true}, {2, true}}, {5, 4, 1, 3, 2, 6}},
        {{{5, false}, {8, true}, {wholePath, true}}, {2, 6, 4, 3, 1, 5}},
        {{{5, false}, {5, true}, {8, false}}, {4, 2, 6, 5, 1, 3}}};
    for (const auto& [keys, expected] : cases)
        EXPECT_EQ(sortedOrder(list, keys), expected) << keys.size();
}

// Names with few different values, most of them in many names; long texts differ far behind.
void fill(DictationList& list, int count) {
    std::mt19937 dice(20261121);
    const auto upTo = [&dice](std::uint32_t end) { return std::to_string(dice() % end); };
    const std::string far(30, 'x');
    while (list.size() < count) {
        std::string name = "2$";
        name.append(dice() % 3 == 0 ? "ROH" : "WAV").append("@@4$").append(upTo(12));
        name.append(".").append(upTo(12)).append(".2026@@6$").append(upTo(700)).append("$00$00");
        name.append("@@12$").append(upTo(90)).append("@@11$").append(far).append(upTo(4));
        name.append(dice() % 2 == 0 ? far : "").append("@@14$");
        if (dice() % 5 != 0)
            name.append("Ä").append(upTo(3));
        list.add("\\s\\", name + ".WAV");
    }
}

// The place of each hit's value among all of them, by the order of the values.
template <typename Value, typename Read>
std::vector<std::size_t> ranks(const DictationList& list, Read read) {
    std::vector<Value> values;
    for (std::int32_t i = 1; i <= list.size(); ++i)
        values.push_back(read(list[i]));
    std::vector<Value> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::size_t> places;
    places.reserve(values.size());
    for (const Value& value : values)
        places.push_back(static_cast<std::size_t>(
            std::lower_bound(sorted.begin(), sorted.end(), value) - sorted.begin()));
    return places;
}

std::vector<std::size_t> ranks(const DictationList& list, std::int32_t field) {
    if (sortsByNumber(field))
        return ranks<double>(list, [field](const auto& hit) { return sortNumber(field, hit); });
    const CollationAlphabet alphabet("en");
    CollationKeys keys(alphabet);
    return ranks<std::string>(list, [&](const Dictation& hit) {
        std::string key;
        keys.append(shownValue(field, hit), key);
        return key;
    });
}

Order plainOrder(const std::vector<std::size_t>& ranks, bool descending) {
    const auto rank = [&](std::int32_t i) { return ranks[static_cast<std::size_t>(i) - 1]; };
    Order order(ranks.size());
    std::iota(order.begin(), order.end(), 1);
    std::stable_sort(order.begin(), order.end(), [&](std::int32_t i, std::int32_t j) {
        return descending ? rank(j) < rank(i) : rank(i) < rank(j);
    });
    return order;
}

// On any number of threads as by one that sorts in the plainest way.
TEST(ResultOrder, OfManyRows) {
    DictationList list;
    fill(list, 40'000);
    ResultOrders one(1);
    ResultOrders three(3);
    for (const std::int32_t field : {field_id::status, field_id::due, field_id::number,
                                     field_id::subject, field_id::author, field_id::name})
        for (const auto places = ranks(list, field); const bool descending : {false, true}) {
            const Order expected = plainOrder(places, descending);
            EXPECT_TRUE(one.sorted(list, field, descending) == expected) << field << descending;
            EXPECT_TRUE(three.sorted(list, field, descending) == expected) << field << descending;
        }
}

// Whatever happens meanwhile, no thread reads the list any more afterwards.
TEST(ResultOrder, MayBeInterrupted) {
    const tests::RecordingInterface person([] { throw HostError(5, "gone"); });
    DictationList list;
    fill(list, 100'000);
    ResultOrders orders;
    EXPECT_THROW(orders.sorted(list, field_id::name, false), HostError);
    list.clear();
    EXPECT_EQ(orders.sorted(list, field_id::name, false), Order());
}

TEST(DictationList, FindsEachHitByItsPath) {
    DictationList list;
    const std::pair<const char*, const char*> hits[] = {
        {"\\a\\", "1.WAV"},
        {"\\a\\", "2.WAV"},
        {"\\b\\", "1.WAV"},
        {"\\a\\", "3.WAV"}, // met again after the folders in it
        {"", "4.WAV"}};
    for (const auto& [directory, name] : hits)
        list.add(directory, name);
    for (std::int32_t i = 1; i <= list.size(); ++i)
        EXPECT_EQ(list.find(list[i]), i);
    for (const char* missing :
         {"", "\\a\\", "\\a\\4.WAV", "\\b\\2.WAV", "\\c\\1.WAV", "\\a\\1.WA", "1.WAV"})
        EXPECT_EQ(list.find(dictationOfPath(missing)), 0) << missing;
}

std::string randomText(std::mt19937& dice) {
    // Near relatives, so that every level of the comparison decides some pairs; the last ones
    // are outside of what is looked up, the Czech "ch" is one letter.
    static constexpr const char* pieces[] = {
        "a",  "A",      "ä", "Ä", "á", "b", "c", "h",  "ch",     "s",     "ss", "ß",
        "o",  "ø",      "œ", "z", "1", "2", "9", "0",  "-",      ".",     " ",  "$",
        "\"", "\u00a0", "ł", "'", "e", "é", "я", "中", "\u0308", "\u0323"};
    std::string text;
    for (std::size_t left = dice() % 7; left > 0; --left)
        text += pieces[dice() % std::size(pieces)];
    return text;
}

// Two texts of the same letters, of which the accents alone decide.
std::pair<std::string, std::string> relatives(std::mt19937& dice) {
    static constexpr const char* letters[][4] = {{"a", "A", "ä", "á"}, {"o", "ö", "ô", "O"}};
    std::pair<std::string, std::string> both;
    for (std::size_t left = dice() % 7; left > 0; --left) {
        const auto& letter = letters[dice() % 2];
        both.first += letter[dice() % 4];
        both.second += letter[dice() % 4];
    }
    return both;
}

// As the library compares two texts, the slow plain way; an accent counts however far behind.
TEST(CollationKeys, OrderTextsAsTheLibraryDoes) {
    const std::string far(600, 'x');
    for (const char* locale : {"de", "en", "sv", "cs"}) {
        std::mt19937 dice(20261121);
        UErrorCode error = U_ZERO_ERROR;
        const std::unique_ptr<icu::Collator> plain(icu::Collator::createInstance(locale, error));
        plain->setStrength(icu::Collator::SECONDARY);
        plain->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, error);
        plain->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, error);
        const CollationAlphabet alphabet(locale);
        CollationKeys keys(alphabet);
        for (int i = 0; i < 20000; ++i) {
            const std::string before = i % 200 == 0 ? far : "";
            const auto [one, other] =
                i % 2 == 0 ? std::pair(randomText(dice), randomText(dice)) : relatives(dice);
            const std::string a = before + one + before;
            const std::string b = before + other + before;
            std::string keyA;
            std::string keyB;
            keys.append(a, keyA);
            keys.append(b, keyB);
            const int order = keyA.compare(keyB);
            ASSERT_EQ((order > 0) - (order < 0), plain->compareUTF8(a, b, error))
                << locale << " '" << a << "' '" << b << "'";
        }
    }
}

} // namespace
} // namespace ov::modDictation
