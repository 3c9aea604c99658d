// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/relative_dates.h"

#include "dictation/search/matching.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <QDate>

namespace ov {

using widgets::text;

namespace {

QDate dateOfSerial(std::int64_t day) {
    return QDate(1899, 12, 30).addDays(day);
}

QString shown(QDate date, std::int32_t formatId) {
    return widgets::languageLocale().toString(date, text(formatId));
}

// What the first date has in common with the last is said once.
std::int32_t formatOfFirst(QDate first, QDate last) {
    if (first.year() != last.year())
        return text_id::formatWholeDate;
    return first.month() != last.month() ? text_id::formatDayAndMonth : text_id::formatDay;
}

} // namespace

QString relativeDatesText(const modDictation::Criterion& criterion, const platform::DateTime& now) {
    if (modDictation::fieldDefinition(criterion.Field).valueType != modDictation::ValueType::date)
        return {};
    const modDictation::NumberRange days =
        modDictation::relativeDays(criterion.Operator, now, platform::locale().firstWeekday);
    if (days.first > days.last)
        return {};
    const QDate last = dateOfSerial(days.last);
    const QString end = shown(last, text_id::formatWholeDate);
    if (days.first == days.last)
        return end;
    const QDate first = dateOfSerial(days.first);
    return text(text_id::dateRange,
                {widgets::toUtf8(shown(first, formatOfFirst(first, last))), widgets::toUtf8(end)});
}

} // namespace ov
