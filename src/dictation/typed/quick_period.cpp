// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/quick_period.h"

#include "dictation/field_date.h"
#include "dictation/typed/criterion_text.h"
#include "dictation/typed/ranges.h"
#include "dictation/typed_date.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <string>

namespace ov::modDictation {

namespace {

using platform::DateTime;

std::optional<int> numberOf(std::string_view digits) {
    constexpr std::size_t most = 9;
    int number = 0;
    if (digits.size() > most || !isAllDigits(digits))
        return std::nullopt;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

Period days(const DateTime& first, const DateTime& last) {
    return {{dayNumber(first), dayNumber(last)}};
}

std::optional<Period> relativePeriod(std::string_view word, const DateTime& now) {
    // Criteria may name operators by number; here a number is a day.
    const bool isNumber = !word.empty() && word.front() >= '0' && word.front() <= '9';
    if (isNumber || word.find_first_of(" \t") != std::string_view::npos)
        return std::nullopt;
    std::string typed(fieldDefinition(field_id::dictated).key);
    const ParsedCriterion parsed = parseCriterion(typed.append(" ").append(word));
    const std::int32_t operatorId = parsed.criterion.Operator;
    const NumberRange range = relativeDays(operatorId, now, platform::locale().firstWeekday);
    if (!parsed.ok() || range.first > range.last)
        return std::nullopt;
    return Period{range, operatorId};
}

// The last day of the month where it has no such day.
DateTime monthsFrom(const DateTime& now, int months) {
    using namespace std::chrono;
    const year_month month = year_month{year{now.year}, std::chrono::month{1}} +
                             std::chrono::months{now.month - 1 + months};
    const year_month_day last = month / std::chrono::last;
    const auto day = std::min(static_cast<unsigned>(now.day), static_cast<unsigned>(last.day()));
    return {static_cast<int>(month.year()), static_cast<int>(static_cast<unsigned>(month.month())),
            static_cast<int>(day)};
}

std::optional<Period> distantDay(std::string_view text, const DateTime& now) {
    constexpr int farthest = 9999; // in units; no calendar goes on for so many years
    if (text.size() < 3 || (text.front() != '-' && text.front() != '+'))
        return std::nullopt;
    const auto number = numberOf(text.substr(1, text.size() - 2));
    if (!number || *number > farthest)
        return std::nullopt;
    const int distance = text.front() == '-' ? -*number : *number;
    constexpr int daysOfWeek = 7;
    constexpr int monthsOfYear = 12;
    const std::int32_t today = dayNumber(now);
    switch (text.back()) {
    case 'd':
    case 'D':
        return Period{{today + distance, today + distance}};
    case 'w':
    case 'W':
        return Period{{today + distance * daysOfWeek, today + distance * daysOfWeek}};
    case 'm':
    case 'M':
        return days(monthsFrom(now, distance), monthsFrom(now, distance));
    case 'y':
    case 'Y':
        return days(monthsFrom(now, distance * monthsOfYear),
                    monthsFrom(now, distance * monthsOfYear));
    default:
        return std::nullopt;
    }
}

std::optional<Period> yearOrMonth(std::string_view text) {
    constexpr std::size_t yearDigits = 4;
    constexpr std::size_t monthEnd = 7;
    const auto year = numberOf(text.substr(0, yearDigits));
    if (!year || *year < 1900 || *year > 2099)
        return std::nullopt;
    if (text.size() == yearDigits)
        return days({*year, 1, 1}, {*year, 12, 31});
    if (text.size() != monthEnd || text[yearDigits] != '-')
        return std::nullopt;
    const auto month = numberOf(text.substr(yearDigits + 1));
    if (!month || *month < 1 || *month > 12)
        return std::nullopt;
    const DateTime first{*year, *month, 1};
    return Period{{dayNumber(first), dayNumber(monthsFrom(first, 1)) - 1}};
}

struct Unit {
    char letter;
    std::int32_t seconds;
};
constexpr std::array<Unit, 3> units = {{{'H', 3600}, {'M', 60}, {'S', 1}}};

} // namespace

std::optional<Period> quickPeriod(std::string_view text, const DateTime& now) {
    text = platform::trimmed(text);
    if (const auto period = relativePeriod(text, now))
        return period;
    if (const auto day = distantDay(text, now))
        return day;
    if (const auto period = yearOrMonth(text))
        return period;
    const DayWords words{modLanguage::GetText(text_id::dayYesterday),
                         modLanguage::GetText(text_id::dayToday),
                         modLanguage::GetText(text_id::dayTomorrow)};
    const auto day = readTypedDate(text, now, words);
    return day ? std::optional(days(*day, *day)) : std::nullopt;
}

std::optional<std::int32_t> quickSeconds(std::string_view text) {
    text = platform::trimmed(text);
    if (const auto seconds = readSeconds(text))
        return seconds;
    std::int64_t seconds = 0;
    const Unit* unit = units.begin();
    if (text.empty())
        return std::nullopt;
    for (; !text.empty(); text = platform::trimmed(text)) {
        const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
        const auto number = numberOf(text.substr(0, digits));
        const std::string letter = platform::upperCase(text.substr(digits, 1));
        unit = std::find_if(unit, units.end(),
                            [&](const Unit& u) { return letter == std::string(1, u.letter); });
        if (!number || unit == units.end())
            return std::nullopt;
        seconds += std::int64_t{*number} * unit->seconds;
        ++unit; // each once
        text.remove_prefix(digits + 1);
    }
    return possibleSeconds.contains(seconds) ? std::optional(static_cast<std::int32_t>(seconds))
                                             : std::nullopt;
}

} // namespace ov::modDictation
