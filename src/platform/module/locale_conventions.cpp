// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/module/locale_library.h"

#include <unicode/calendar.h>
#include <unicode/dcfmtsym.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

#include <memory>

namespace ov::platform::loaded {

namespace {

using Pattern = std::u16string_view;

// The pattern of a short date, "dd.MM.yy". Some locales put marks of direction between.
void readDatePattern(Pattern pattern, Locale& result) {
    const std::size_t first = pattern.find_first_of(u"dMLyu");
    if (first == Pattern::npos)
        return;
    result.dateOrder = pattern[first] == u'd'                             ? DateOrder::dayMonthYear
                       : pattern[first] == u'M' || pattern[first] == u'L' ? DateOrder::monthDayYear
                                                                          : DateOrder::yearMonthDay;
    result.dayTwoDigits = pattern.find(u"dd") != Pattern::npos;
    if (const std::size_t at = pattern.find_first_of(u"./-", first); at != Pattern::npos)
        result.dateSeparator = static_cast<char>(pattern[at]);
}

// "h:mm:ss a" counts twelve hours, "HH 'h' mm" does not.
void readTimePattern(Pattern pattern, Locale& result) {
    const std::size_t hour = pattern.find_first_of(u"hHkK");
    result.twelveHours = hour != Pattern::npos && (pattern[hour] == u'h' || pattern[hour] == u'K');
}

std::unique_ptr<icu::SimpleDateFormat> simpleFormat(icu::DateFormat* created) {
    std::unique_ptr<icu::DateFormat> format(created);
    auto* simple = dynamic_cast<icu::SimpleDateFormat*>(format.get());
    if (simple == nullptr)
        return nullptr;
    static_cast<void>(format.release());
    return std::unique_ptr<icu::SimpleDateFormat>(simple);
}

void readDate(const icu::Locale& named, Locale& result) {
    const auto format =
        simpleFormat(icu::DateFormat::createDateInstance(icu::DateFormat::kShort, named));
    icu::UnicodeString pattern;
    if (format)
        format->toPattern(pattern);
    readDatePattern({pattern.getBuffer(), static_cast<std::size_t>(pattern.length())}, result);
}

void readTime(const icu::Locale& named, Locale& result) {
    const auto format =
        simpleFormat(icu::DateFormat::createTimeInstance(icu::DateFormat::kMedium, named));
    if (!format)
        return;
    icu::UnicodeString pattern;
    format->toPattern(pattern);
    readTimePattern({pattern.getBuffer(), static_cast<std::size_t>(pattern.length())}, result);
    std::int32_t count = 0;
    const icu::UnicodeString* halves = format->getDateFormatSymbols()->getAmPmStrings(count);
    if (!result.twelveHours || count < 2)
        return;
    result.am.clear();
    result.pm.clear();
    halves[0].toUTF8String(result.am);
    halves[1].toUTF8String(result.pm);
}

void readNumberSigns(const icu::Locale& named, Locale& result) {
    UErrorCode error = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(named, error);
    const icu::UnicodeString& sign =
        symbols.getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    if (U_SUCCESS(error) && sign == u",")
        result.decimalSign = ',';
    if (U_SUCCESS(error))
        symbols.getConstSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol)
            .toUTF8String(result.groupSign);
}

void readWeek(const icu::Locale& named, Locale& result) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(named, error));
    if (U_SUCCESS(error))
        result.firstWeekday = calendar->getFirstDayOfWeek(error) - UCAL_SUNDAY;
}

} // namespace

Locale conventionsOf(const std::string& locale) {
    Locale result;
    icu::Locale named = icu::Locale::createCanonical(locale.c_str());
    UErrorCode error = U_ZERO_ERROR;
    named.setKeywordValue("calendar", "gregorian", error);
    readDate(named, result);
    readTime(named, result);
    readNumberSigns(named, result);
    readWeek(named, result);
    return result;
}

} // namespace ov::platform::loaded
