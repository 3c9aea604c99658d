// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/matching.h"

#include "dictation/dictation_record.h"
#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "platform/text.h"
#include "platform/user_interface.h"
#include "support/numbers.h"

#include <algorithm>

namespace ov::modDictation {

namespace {

bool isEqualOperator(std::int32_t operatorId) noexcept {
    return operatorId == operator_id::is || operatorId == operator_id::equal;
}

// Upper-cased once here; the value comes upper-cased from its slot.
bool matchText(std::string_view value, const PreparedCriterion& criterion) {
    switch (criterion.operatorId) {
    case operator_id::contains:
        return value.find(criterion.text) != std::string_view::npos;
    case operator_id::containsNot:
        return value.find(criterion.text) == std::string_view::npos;
    case operator_id::is:
    case operator_id::equal:
        return value == criterion.text;
    default:
        return false;
    }
}

bool matchRange(std::optional<std::int64_t> value, const PreparedCriterion& criterion) noexcept {
    if (!value)
        return false;
    if (criterion.operatorId == operator_id::notEqual)
        // The range is the value itself, empty where the criterion has none to differ from.
        return criterion.range.first <= criterion.range.last && !criterion.range.contains(*value);
    return criterion.range.contains(*value);
}

bool matchDate(std::string_view value, const PreparedCriterion& criterion) {
    const auto date = readDateOrSerial(value);
    return date && criterion.range.contains(date->day);
}

bool matchTime(std::string_view value, const PreparedCriterion& criterion) {
    const auto seconds = readSeconds(value);
    return matchRange(seconds ? std::optional<std::int64_t>(*seconds) : std::nullopt, criterion);
}

bool matchCode(std::int32_t code, const PreparedCriterion& criterion) noexcept {
    if (isEqualOperator(criterion.operatorId))
        return code == criterion.code;
    return criterion.operatorId == operator_id::notEqual && code != criterion.code;
}

bool matchMarker(std::string_view value, const PreparedCriterion& criterion) {
    const bool marked = isMarked(value);
    if (criterion.operatorId == operator_id::marked)
        return marked;
    return criterion.operatorId == operator_id::notMarked && !marked;
}

bool matchFlag(std::string_view value, const PreparedCriterion& criterion) noexcept {
    const bool known = criterion.code >= firstFlagCode && criterion.code <= lastFlagCode;
    const auto bits = static_cast<std::uint32_t>(leadingInt32(value));
    const bool set =
        known && (bits >> static_cast<unsigned>(criterion.code - firstFlagCode) & 1U) != 0;
    if (isEqualOperator(criterion.operatorId))
        return set;
    return criterion.operatorId == operator_id::notEqual && !set;
}

// The single results of operators that ask about the value itself.
std::optional<bool> matchPresence(std::string_view value, std::int32_t operatorId) noexcept {
    if (value.empty())
        return EmptyValueMatch(operatorId);
    switch (operatorId) {
    case operator_id::any:
    case operator_id::isNotEmpty:
        return true;
    case operator_id::isEmpty:
        return false;
    default:
        return std::nullopt;
    }
}

} // namespace

bool EmptyValueMatch(std::int32_t operatorId) noexcept {
    switch (operatorId) {
    case operator_id::any:
    case operator_id::containsNot:
    case operator_id::isEmpty:
    case operator_id::notEqual:
        return true;
    default:
        return false;
    }
}

bool missingFieldMatch(const PreparedCriterion& criterion) noexcept {
    switch (criterion.operatorId) {
    case operator_id::containsNot:
    case operator_id::isEmpty:
    case operator_id::notEqual:
    case operator_id::notMarked:
        return true;
    case operator_id::any:
        return criterion.field == noField;
    default:
        return false;
    }
}

bool matchValue(std::string_view value, const PreparedCriterion& criterion) {
    if (criterion.valueType == ValueType::none)
        return false;
    if (const auto presence = matchPresence(value, criterion.operatorId))
        return *presence;
    switch (criterion.valueType) {
    case ValueType::text:
        return matchText(value, criterion);
    case ValueType::date:
        return matchDate(value, criterion);
    case ValueType::time:
        return matchTime(value, criterion);
    case ValueType::number:
        return matchRange(leadingInt32(value), criterion);
    case ValueType::code:
        return matchCode(leadingInt32(value), criterion);
    case ValueType::status:
        return matchCode(GetFieldCode(dictation_field::status, value), criterion);
    case ValueType::priority:
        return matchCode(GetFieldCode(dictation_field::priority, value), criterion);
    case ValueType::marker:
        return matchMarker(value, criterion);
    case ValueType::flag:
        return matchFlag(value, criterion);
    case ValueType::none:
        break;
    }
    return false;
}

PreparedCriteria::PreparedCriteria(std::span<const Criterion> criteria,
                                   const platform::DateTime& now)
    : matched_(criteria.size()) {
    criteria_.reserve(criteria.size());
    for (const Criterion& criterion : criteria) {
        PreparedCriterion prepared = prepareCriterion(criterion, now);
        prepared.slot = slotFor(fieldDefinition(criterion.Field).dictationField,
                                prepared.valueType == ValueType::text);
        prepared.joinsAbove = criterion.indented && !criteria_.empty();
        hasGroups_ = hasGroups_ || prepared.joinsAbove;
        criteria_.push_back(std::move(prepared));
    }
}

std::size_t PreparedCriteria::slotFor(std::int32_t dictationField, bool upperCase) {
    const auto same = [&](const Slot& slot) {
        return slot.field.fieldNumber() == dictationField && slot.upperCase == upperCase;
    };
    const auto found = std::find_if(slots_.begin(), slots_.end(), same);
    const auto index = static_cast<std::size_t>(found - slots_.begin());
    if (found == slots_.end())
        slots_.emplace_back(dictationField, upperCase);
    return index;
}

void PreparedCriteria::start(std::string_view path, std::string_view name) noexcept {
    path_ = path;
    name_ = name;
    for (Slot& slot : slots_)
        slot.isRead = false;
}

const PreparedCriteria::Slot& PreparedCriteria::read(std::size_t index) {
    Slot& slot = slots_[index];
    if (slot.isRead)
        return slot;
    slot.isRead = true;
    std::string& target = slot.upperCase ? slot.raw : slot.value;
    slot.present = slot.field.read(path_, name_, target);
    if (slot.upperCase) {
        slot.value.clear();
        platform::appendUpperCase(slot.raw, slot.value);
    }
    return slot;
}

bool PreparedCriteria::matches(std::size_t index) {
    const PreparedCriterion& criterion = criteria_[index];
    const Slot& slot = read(criterion.slot);
    const bool isMatch =
        slot.present ? matchValue(slot.value, criterion) : missingFieldMatch(criterion);
    matched_[index] += isMatch ? 1 : 0;
    return isMatch;
}

namespace {

// The group that begins at `index`, which becomes the index of the next one. Where all of it must
// match, the first that does not settles it.
bool matchGroup(PreparedCriteria& criteria, bool compareAnd, std::size_t& index) {
    bool isMatch = !compareAnd;
    do {
        if (compareAnd || isMatch) {
            platform::processMessagesNowAndThen();
            const bool one = criteria.matches(index);
            isMatch = one || (compareAnd && isMatch);
        }
        ++index;
    } while (index < criteria.size() && criteria.joinsAbove(index));
    return isMatch;
}

bool matchGroups(PreparedCriteria& criteria, bool compareAnd) {
    bool isMatch = compareAnd;
    for (std::size_t i = 0; i < criteria.size();) {
        const bool group = matchGroup(criteria, compareAnd, i);
        if (group && !compareAnd)
            return true;
        isMatch = isMatch && group;
    }
    return isMatch;
}

} // namespace

bool MatchDictation(std::string_view path, std::string_view name, PreparedCriteria& criteria,
                    bool compareAnd) {
    criteria.start(path, name);
    if (criteria.hasGroups())
        return matchGroups(criteria, compareAnd);
    std::size_t hits = 0;
    for (std::size_t i = 0; i < criteria.size(); ++i) {
        platform::processMessagesNowAndThen();
        if (!criteria.matches(i))
            continue;
        if (!compareAnd)
            return true;
        ++hits;
    }
    return compareAnd && hits == criteria.size();
}

} // namespace ov::modDictation
