// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/control_settings.h"

#include "dictation/field_table.h"
#include "support/numbers.h"

#include <cstdlib>
#include <limits>

namespace ov {

namespace {

// Stored: never rename.
namespace key {
constexpr std::string_view listSortKey = "ListSortKey";
constexpr std::string_view listSortOrder = "ListSortOrder";
constexpr std::string_view secondSort = "ListSortSecond"; // field, negative: descending; 0: none
constexpr std::string_view searchCompareAnd = "SearchCompareAnd";
constexpr std::string_view followsCriteria = "FollowCriteria";
constexpr std::string_view settingsCopied = "SettingsCopied";
constexpr std::string_view columnOrder = "ColumnOrder";   // "1,2,9"
constexpr std::string_view columnWidths = "ColumnWidths"; // "1:1400,9:1800", twips
constexpr std::string_view criteriaShare = "CriteriaShare";
constexpr std::string_view backUpSeconds = "PlayerBackUpSeconds";
constexpr std::string_view speedPercent = "PlayerSpeed";
constexpr std::string_view timeStampForm = "PlayerTimeStamp";
constexpr std::string_view remembersPositions = "PlayerRemembersPositions";
constexpr std::string_view rememberedMiB = "RememberedMiB";
constexpr std::string_view trustFolderTimes = "TrustFolderTimes";
} // namespace key

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

// Calls `visit` for each part of a text that commas part.
template <typename Visit>
void forEachPart(std::string_view text, Visit visit) {
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        visit(text.substr(0, comma));
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
}

bool isField(std::int32_t id) {
    return id > modDictation::noField && id < modDictation::searchFieldCount;
}

} // namespace

void ControlSettings::markAsCopied() const {
    if (!settings_.boolean(key::settingsCopied, false))
        settings_.setBoolean(key::settingsCopied, true);
}

std::int32_t ControlSettings::listSortKey() const {
    return settings_.number(key::listSortKey, 1, lowest, highest);
}

std::int32_t ControlSettings::listSortOrder() const {
    return settings_.number(key::listSortOrder, 0, 0, 1);
}

void ControlSettings::setListSort(std::int32_t sortKey, std::int32_t order) const {
    settings_.setNumber(key::listSortKey, sortKey);
    settings_.setNumber(key::listSortOrder, order);
}

modDictation::SortKey ControlSettings::secondSort() const {
    constexpr std::int32_t last = modDictation::searchFieldCount - 1;
    const std::int32_t field = settings_.number(key::secondSort, 0, -last, last);
    return {std::abs(field), field < 0};
}

void ControlSettings::setSecondSort(modDictation::SortKey sortKey) const {
    settings_.setNumber(key::secondSort, sortKey.descending ? -sortKey.field : sortKey.field);
}

bool ControlSettings::searchCompareAnd() const {
    return settings_.boolean(key::searchCompareAnd, true);
}

void ControlSettings::setSearchCompareAnd(bool compareAnd) const {
    settings_.setBoolean(key::searchCompareAnd, compareAnd);
}

bool ControlSettings::followsCriteria() const {
    return settings_.boolean(key::followsCriteria, true);
}

void ControlSettings::setFollowsCriteria(bool follows) const {
    settings_.setBoolean(key::followsCriteria, follows);
}

ColumnLayout ControlSettings::columnLayout() const {
    std::vector<std::int32_t> order;
    std::vector<ColumnLayout::Width> widths;
    forEachPart(settings_.text(key::columnOrder), [&](std::string_view part) {
        if (const std::int32_t id = leadingInt32(part); isField(id))
            order.push_back(id);
    });
    forEachPart(settings_.text(key::columnWidths), [&](std::string_view part) {
        const std::size_t colon = part.find(':');
        const std::int32_t id = leadingInt32(part);
        if (colon == std::string_view::npos || !isField(id))
            return;
        if (const std::int32_t width = leadingInt32(part.substr(colon + 1)); width > 0)
            widths.emplace_back(id, width);
    });
    return {std::move(order), std::move(widths)};
}

void ControlSettings::setColumnLayout(const ColumnLayout& layout) const {
    std::string order;
    for (const std::int32_t id : layout.order())
        order.append(order.empty() ? "" : ",").append(std::to_string(id));
    std::string widths;
    for (const auto& [id, width] : layout.widths())
        widths.append(widths.empty() ? "" : ",")
            .append(std::to_string(id))
            .append(":")
            .append(std::to_string(width));
    settings_.setText(key::columnOrder, order);
    settings_.setText(key::columnWidths, widths);
}

std::int32_t ControlSettings::backUpSeconds() const {
    return settings_.number(key::backUpSeconds, 0, 0, 10);
}

void ControlSettings::setBackUpSeconds(std::int32_t seconds) const {
    settings_.setNumber(key::backUpSeconds, seconds);
}

std::int32_t ControlSettings::speedPercent() const {
    return settings_.number(key::speedPercent, 100, 50, 200);
}

void ControlSettings::setSpeedPercent(std::int32_t percent) const {
    settings_.setNumber(key::speedPercent, percent);
}

std::string ControlSettings::timeStampForm() const {
    return settings_.text(key::timeStampForm);
}

void ControlSettings::setTimeStampForm(const std::string& form) const {
    settings_.setText(key::timeStampForm, form);
}

bool ControlSettings::remembersPositions() const {
    return settings_.boolean(key::remembersPositions, true);
}

void ControlSettings::setRemembersPositions(bool remembers) const {
    settings_.setBoolean(key::remembersPositions, remembers);
}

std::optional<std::int32_t> ControlSettings::criteriaShare() const {
    constexpr std::int32_t none = -1;
    const std::int32_t share = settings_.number(key::criteriaShare, none, 0, 1000);
    return share == none ? std::nullopt : std::optional(share);
}

void ControlSettings::setCriteriaShare(std::int32_t thousandths) const {
    settings_.setNumber(key::criteriaShare, thousandths);
}

std::int32_t ControlSettings::rememberedMiB() const {
    return settings_.number(key::rememberedMiB, 512, 0, 1 << 20);
}

bool ControlSettings::trustsFolderTimes() const {
    return settings_.boolean(key::trustFolderTimes, false);
}

} // namespace ov
