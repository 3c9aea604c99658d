// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/field_table.h"
#include "dictation/filter/row_filter.h"
#include "platform/text.h"
#include "tests/settings_fixture.h"

#include <array>
#include <random>
#include <tuple>

namespace ov::modDictation {
namespace {

using Fields = std::vector<std::int32_t>;

const Fields withName = {1, 2, 3, 5, 7, 9, 13, 15, 18, 23, 26};
const Fields withoutName = {1, 2, 3, 5, 7, 9, 13, 15, 18, 23};

std::shared_ptr<const DictationList> randomList(std::mt19937& random, int count) {
    const auto pick = [&](std::initializer_list<const char*> of) {
        return std::string(*(of.begin() + random() % of.size()));
    };
    auto list = std::make_shared<DictationList>();
    for (int i = 0; i < count; ++i) {
        std::string name = "2$" + pick({"WAV", "ROH", "x"});
        name += "@@14$" + pick({"Müller", "mu\xCC\x88ller", "#Weiß", "O'Neill",
                                "M\xFC"
                                "ller",
                                ""});
        name += "@@11$" + pick({"Brief", "Befund$#1", "%%a!!b", "_", "brief an Müller"});
        name += "@@92$" + pick({"a²9b", "Gruppe", "²1"}) + "@@98$" + pick({"D", ""});
        name += "@@7$" + pick({"21-11-2026 17$05$00", "1-2-2003", "soon"});
        name += "@@6$00$0" + std::to_string(random() % 10) + "$11@@17$" + pick({"0", "3", "16"});
        list->add(pick({"C:\\Store\\Ward\\", "C:\\Store\\Ward\\ERL\\"}), name + ".WAV");
    }
    return list;
}

// The same, cell by cell.
std::vector<std::uint8_t> plainMarks(const DictationList& list, const Fields& fields,
                                     const std::vector<std::string>& words) {
    std::vector<std::uint8_t> marks;
    for (std::int32_t hit = 1; hit <= list.size(); ++hit)
        marks.push_back(std::ranges::all_of(words, [&](const std::string& word) {
            return std::ranges::any_of(fields, [&](std::int32_t field) {
                return platform::upperCase(shownValue(field, list[hit]))
                           .find(platform::upperCase(word)) != std::string::npos;
            });
        }));
    return marks;
}

void expectSame(const std::shared_ptr<const DictationList>& list, const Fields& fields,
                std::size_t room, const std::vector<std::string>& texts) {
    RowTexts rows({.hits = list, .fields = fields, .codes = {}}, room);
    const RowFilter wider("e");
    const auto wide = keptHits(rows, wider, nullptr, {});
    for (const std::string& typed : texts) {
        std::istringstream blanks(typed);
        const std::vector<std::string> words{std::istream_iterator<std::string>(blanks), {}};
        const RowFilter filter(typed);
        const auto expected = plainMarks(*list, fields, words);
        const auto kept = keptHits(rows, filter, nullptr, {});
        EXPECT_EQ(kept->marks, expected) << typed;
        EXPECT_EQ(kept->count, std::ranges::count(expected, 1)) << typed;
        if (filter.isWithin(wider)) {
            EXPECT_EQ(keptHits(rows, filter, wide.get(), {})->marks, expected) << typed;
        }
    }
}

TEST(RowFilter, FindsWhatLookingAtEachCellFinds) {
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto few = randomList(random, 300);
    for (const Fields& fields : {withName, withoutName})
        for (const std::size_t room : {RowTexts::usualBytes, std::size_t{0}})
            expectSame(few, fields, room,
                       {"e", "mül", "müller  brief ", "21/11", "11/21/2026", "ward\\erl", "00:05",
                        "Befund:", "#weiß", "o\"n", "b@@", "14$:", "brief an", ":b |", "d", "*",
                        "wavm", "9:11 x", "befund:1"});
    constexpr int moreThanAPart = 17000;
    expectSame(randomList(random, moreThanAPart), {5, 18}, RowTexts::usualBytes, {"weiß"});
}

// "101": which rows stay.
std::string kept(RowTexts& rows, std::string_view filter) {
    std::string marks;
    const auto hits = keptHits(rows, RowFilter(filter), nullptr, {});
    for (const std::uint8_t mark : hits->marks)
        marks += mark != 0 ? '1' : '0';
    return marks;
}

TEST(RowFilter, WordsThatNameAFieldTestIt) {
    const auto list = std::make_shared<DictationList>();
    for (const char* name : {"2$ROH@@14$Zeh Li@@5$HOCH@@6$00$05$00.WAV",
                             "2$WAV@@14$M\xFCller@@6$00$06$00@@11$author:x \"zeh.WAV",
                             "2$WAV@@14$Lizeh@@11$due:soon.WAV"})
        list->add("C:\\Store\\", name);
    for (const Fields& fields : {Fields{5, 18}, Fields{18}}) {
        RowTexts rows({.hits = list, .fields = fields, .codes = {}});
        const std::pair<const char*, std::vector<const char*>> cases[] = {
            {"000", {"autor:zeh", "author:x"}},
            {"001", {"author:zeh status:wav soon", "\"due:soon\""}},
            {"010", {"-author:zeh", "length:>5m", "-soon -author:zeh", "-( soon prio:hoch )"}},
            {"011",
             {"( soon -author:zeh ) ( length:6m author:li )", "( length:6m ( author:li soon ) )"}},
            {"100", {"author:\"zeh l\"", "prio:3,normal", "( -soon prio:normal ) length:5m"}},
            {"101", {"author:ZEH", "( soon prio:hoch )"}},
            {"110", {"-soon"}},
            {"111", {"( author:li x )"}}};
        for (const auto& [marks, filters] : cases)
            for (const char* filter : filters)
                EXPECT_EQ(kept(rows, filter), marks) << filter;
    }
}

// While somebody types, what cannot be read yet keeps all rows, and is told.
TEST(RowFilter, LeavesOutWhatCannotBeRead) {
    const auto list = std::make_shared<DictationList>();
    for (const char* name : {"2$ROH@@14$Zeh@@5$HOCH", "2$WAV@@14$Anna@@11$knee, left (-)"})
        list->add("C:\\Store\\", std::string(name) + ".WAV");
    RowTexts rows({.hits = list, .fields = {5, 18}, .codes = {}});
    // What is typed, the rows that stay, what is read of it, what is left out.
    const std::array<const char*, 4> cases[] = {
        {"zeh prio:", "10", "zeh", "prio:|"},
        {"prio:h  zeh", "10", "zeh", "prio:h|"},
        {"dictated:202 knee -prio:x,hi", "01", "knee", "dictated:202|-prio:x,hi|"},
        {"author:! -length: due:soon", "11", "", "author:!|-length:|due:soon|"},
        {"- zeh", "10", "zeh", "-|"},
        {"knee \"zeh, l", "01", "knee", "\"zeh, l|"},
        {"knee ( zeh prio:h", "01", "knee", "( zeh prio:h|"},
        {"knee ) ( ) left", "01", "knee left", ")|( )|"},
        {"( zeh prio:h ( x", "11", "", "( zeh prio:h ( x|"},
        {"( zeh prio:h )", "10", "( zeh )", "prio:h|"},
        {"-( prio:h ) anna", "01", "anna", "-( prio:h )|"},
        {"-author:=zeh anna", "01", "anna", "-author:=zeh|"},
        {"\"knee, left\"", "01", "\"knee, left\"", ""}};
    for (const auto& [typed, marks, text, expected] : cases) {
        EXPECT_EQ(kept(rows, typed), marks) << typed;
        const RowFilter filter(typed);
        std::string leftOut;
        for (const std::string& part : filter.reading().leftOut)
            leftOut += part + "|";
        EXPECT_EQ(leftOut, expected) << typed;
        EXPECT_EQ(filter.reading().text, text) << typed;
        EXPECT_FALSE(filter.reading().isTooLong);
    }
    std::string many;
    for (int i = 0; i < 501; ++i)
        many += "z ";
    EXPECT_EQ(kept(rows, many.substr(2)), "10");
    EXPECT_EQ(kept(rows, many), "11");
    EXPECT_TRUE(RowFilter(many).reading().isTooLong);
}

TEST(RowFilter, GivesUpWhenNobodyWaits) {
    std::mt19937 random;
    std::stop_source stopped;
    stopped.request_stop();
    RowTexts rows({.hits = randomList(random, 1), .fields = withName, .codes = {}});
    EXPECT_EQ(keptHits(rows, RowFilter("e"), nullptr, stopped.get_token()), nullptr);
}

TEST(RowFilter, KnowsWhenItOnlyNarrows) {
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"müll", "mül", true},
        {"a müll", "MÜL", true},
        {"mül", "müll", false},
        {"ab", "a b", true},
        {"a b", "ab", false},
        {"author:mül x", "author:mü", true},
        {"author:a", "", true},
        {"", "author:a", false},
        {"author:a", "author:b", false},
        {"author:a,b", "author:a", false},
        {"author:a", "author:a,b", true},
        {"author:a", "( b author:a )", true},
        {"( a b ) c", "( b a )", true},
        {"( a b ) c", "( a d )", false},
        {"-a", "-ab", true},
        {"-ab", "-a", false},
        {"-a", "a", false},
        {"a prio:", "a", true},
        {"length:5m author:a", "author:a length:5m", true}};
    for (const auto& [filter, wider, isWithin] : cases)
        EXPECT_EQ(RowFilter(filter).isWithin(RowFilter(wider)), isWithin) << filter;
}

} // namespace
} // namespace ov::modDictation
