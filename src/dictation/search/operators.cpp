// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/search/operators.h"

#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

#include <array>

namespace ov::modDictation {

namespace {

namespace id = operator_id;

// The orders are what users are used to, not numeric.
constexpr std::array textOperators = {id::contains, id::is, id::containsNot, id::isEmpty,
                                      id::isNotEmpty};
constexpr std::array dateOperators = {
    id::yesterday, id::today,      id::tomorrow,     id::last7Days, id::next7Days, id::lastWeek,
    id::thisWeek,  id::nextWeek,   id::lastMonth,    id::thisMonth, id::nextMonth, id::onDate,
    id::onOrAfter, id::onOrBefore, id::betweenDates, id::isEmpty,   id::isNotEmpty};
constexpr std::array timeOperators = {id::equal,        id::atMost,  id::atLeast,   id::notEqual,
                                      id::betweenTimes, id::isEmpty, id::isNotEmpty};
constexpr std::array numberOperators = {id::equal,          id::atMost,   id::atLeast,
                                        id::notEqual,       id::moreThan, id::lessThan,
                                        id::betweenNumbers, id::isEmpty,  id::isNotEmpty};
constexpr std::array codeOperators = {id::equal, id::notEqual, id::isEmpty, id::isNotEmpty};
constexpr std::array markerOperators = {id::marked, id::notMarked};

} // namespace

std::span<const std::int32_t> offeredOperators(ValueType type) noexcept {
    switch (type) {
    case ValueType::text:
        return textOperators;
    case ValueType::date:
        return dateOperators;
    case ValueType::time:
        return timeOperators;
    case ValueType::number:
        return numberOperators;
    case ValueType::code:
    case ValueType::status:
    case ValueType::priority:
    case ValueType::flag:
        return codeOperators;
    case ValueType::marker:
        return markerOperators;
    case ValueType::none:
        break;
    }
    return {};
}

int operatorValueCount(std::int32_t operatorId) noexcept {
    switch (operatorId) {
    case operator_id::betweenDates:
    case operator_id::betweenNumbers:
    case operator_id::betweenTimes:
        return 2;
    case operator_id::isEmpty:
    case operator_id::isNotEmpty:
        return 0;
    default:
        return operatorId >= operator_id::onDate && operatorId <= operator_id::lessThan ? 1 : 0;
    }
}

std::string GetOperatorText(std::int32_t operatorId) {
    if (operatorId < operator_id::any || operatorId > operator_id::notMarked)
        return {};
    return modLanguage::GetText(text_id::operatorBase + operatorId);
}

} // namespace ov::modDictation
