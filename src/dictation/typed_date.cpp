// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed_date.h"

#include "dictation/field_date.h"
#include "platform/text.h"

#include <array>
#include <charconv>
#include <utility>

namespace ov::modDictation {

using platform::DateTime;

namespace {

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Digits and nothing else; so few that every sum with a day has room.
std::optional<int> readNumber(std::string_view digits) {
    constexpr std::size_t most = 5;
    int number = 0;
    const char* end = digits.data() + digits.size();
    if (digits.empty() || digits.size() > most || digits.front() == '-' ||
        std::from_chars(digits.data(), end, number).ptr != end)
        return std::nullopt;
    return number;
}

DateTime daysFrom(const DateTime& today, int days) {
    return dateOf({dayNumber(today) + days, 0, false});
}

std::optional<DateTime> readWord(std::string_view text, const DateTime& today,
                                 const DayWords& words) {
    const std::string wanted = platform::upperCase(text);
    for (const auto& [word, days] : std::array<std::pair<const std::string&, int>, 3>{
             {{words.yesterday, -1}, {words.today, 0}, {words.tomorrow, 1}}})
        if (!wanted.empty() && platform::upperCase(word) == wanted)
            return daysFrom(today, days);
    return std::nullopt;
}

std::optional<DateTime> readDistance(std::string_view text, const DateTime& today) {
    if (text.empty() || (text.front() != '-' && text.front() != '+'))
        return std::nullopt;
    const auto days = readNumber(text.substr(1));
    if (!days)
        return std::nullopt;
    return daysFrom(today, text.front() == '-' ? -*days : *days);
}

std::optional<DateTime> readDayAndMonth(std::string_view text, const DateTime& today) {
    const std::size_t at = text.find_first_of("./-");
    if (at == text.npos)
        return std::nullopt;
    const char separator = text[at];
    std::string_view second = text.substr(at + 1);
    if (second.ends_with(separator))
        second.remove_suffix(1);
    auto day = readNumber(text.substr(0, at));
    auto month = readNumber(second);
    if (!day || !month)
        return std::nullopt;
    if (separator != '.' && platform::locale().dateOrder != platform::DateOrder::dayMonthYear)
        std::swap(day, month);
    return platform::parseDate(platform::formatIsoDate({today.year, *month, *day, 0, 0, 0}));
}

// Parted where the locale's order has it; the year is first or last, with two or four digits.
std::optional<DateTime> readDigits(std::string_view text, const DateTime& today) {
    constexpr std::size_t dayAndMonth = 4;
    constexpr std::size_t shortYear = 6;
    constexpr std::size_t longYear = 8;
    if (text.find_first_not_of("0123456789") != text.npos ||
        (text.size() != dayAndMonth && text.size() != shortYear && text.size() != longYear))
        return std::nullopt;
    const bool yearFirst = platform::locale().dateOrder == platform::DateOrder::yearMonthDay;
    const std::size_t first = yearFirst && text.size() > dayAndMonth ? text.size() - 4 : 2;
    std::string parted(text);
    parted.insert(first + 2, text.size() > dayAndMonth ? "/" : "");
    parted.insert(first, "/");
    return text.size() == dayAndMonth ? readDayAndMonth(parted, today)
                                      : platform::parseDate(parted);
}

} // namespace

std::optional<DateTime> readTypedDate(std::string_view text, const DateTime& today,
                                      const DayWords& words) {
    text = trimmed(text);
    if (const auto date = readWord(text, today, words))
        return date;
    if (const auto date = readDistance(text, today))
        return date;
    if (const auto date = readDayAndMonth(text, today))
        return date;
    if (const auto date = readDigits(text, today))
        return date;
    return platform::parseDate(text);
}

} // namespace ov::modDictation
