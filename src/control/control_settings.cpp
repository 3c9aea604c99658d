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
constexpr std::string_view pedals = "PlayerPedals";
constexpr std::string_view remembersPositions = "PlayerRemembersPositions";
constexpr std::string_view boost = "PlayerBoost";
constexpr std::string_view evensOut = "PlayerEvensOut";
constexpr std::string_view cutsRumble = "PlayerCutsRumble";
constexpr std::string_view skipsSilence = "PlayerSkipsSilence";
constexpr std::string_view output = "PlayerOutput";
constexpr std::string_view volume = "PlayerVolume";
constexpr std::string_view rememberedMiB = "RememberedMiB";
constexpr std::string_view trustFolderTimes = "TrustFolderTimes";
constexpr std::string_view catalogue = "Catalogue";
constexpr std::string_view searchCatalogue = "SearchCatalogue";
constexpr std::string_view playerOnBus = "PlayerOnBus";
constexpr std::string_view playerShortcuts = "PlayerShortcuts";
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

// From 0 on.
std::optional<std::int32_t> numberIfThere(const IniSection& settings, std::string_view name,
                                          std::int32_t largest) {
    constexpr std::int32_t none = -1;
    const std::int32_t number = settings.number(name, none, 0, largest);
    return number == none ? std::nullopt : std::optional(number);
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

std::string ControlSettings::pedals() const {
    return settings_.text(key::pedals);
}

void ControlSettings::setPedals(const std::string& assignments) const {
    settings_.setText(key::pedals, assignments);
}

PlayerChoices ControlSettings::playerChoices() const {
    PlayerChoices choices;
    choices.backUpSeconds =
        settings_.number(key::backUpSeconds, 0, 0, PlayerChoices::mostBackUpSeconds);
    choices.speedPercent = settings_.number(key::speedPercent, PlayerChoices::usualSpeed,
                                            PlayerChoices::slowest, PlayerChoices::fastest);
    choices.timeStampForm = settings_.text(key::timeStampForm);
    choices.remembersPositions = settings_.boolean(key::remembersPositions, true);
    choices.shape.boost =
        settings_.number(key::boost, sound::SoundShape::usualBoost, sound::SoundShape::usualBoost,
                         sound::SoundShape::largestBoost);
    choices.shape.evensOut = settings_.boolean(key::evensOut, false);
    choices.shape.cutsRumble = settings_.boolean(key::cutsRumble, false);
    choices.shape.skipsSilence = settings_.boolean(key::skipsSilence, false);
    return choices;
}

void ControlSettings::setPlayerChoices(const PlayerChoices& choices,
                                       const PlayerChoices& before) const {
    if (choices.backUpSeconds != before.backUpSeconds)
        settings_.setNumber(key::backUpSeconds, choices.backUpSeconds);
    if (choices.speedPercent != before.speedPercent)
        settings_.setNumber(key::speedPercent, choices.speedPercent);
    if (choices.timeStampForm != before.timeStampForm)
        settings_.setText(key::timeStampForm, choices.timeStampForm);
    if (choices.shape.boost != before.shape.boost)
        settings_.setNumber(key::boost, choices.shape.boost);
    const auto keep = [this](std::string_view name, bool value, bool earlier) {
        if (value != earlier)
            settings_.setBoolean(name, value);
    };
    keep(key::remembersPositions, choices.remembersPositions, before.remembersPositions);
    keep(key::evensOut, choices.shape.evensOut, before.shape.evensOut);
    keep(key::cutsRumble, choices.shape.cutsRumble, before.shape.cutsRumble);
    keep(key::skipsSilence, choices.shape.skipsSilence, before.shape.skipsSilence);
}

std::string ControlSettings::output() const {
    return settings_.text(key::output);
}

void ControlSettings::setOutput(const std::string& name) const {
    settings_.setText(key::output, name);
}

std::optional<std::int32_t> ControlSettings::volume() const {
    constexpr std::int32_t loudest = 65535;
    return numberIfThere(settings_, key::volume, loudest);
}

void ControlSettings::setVolume(std::int32_t volume) const {
    settings_.setNumber(key::volume, volume);
}

std::optional<std::int32_t> ControlSettings::criteriaShare() const {
    constexpr std::int32_t whole = 1000;
    return numberIfThere(settings_, key::criteriaShare, whole);
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

std::string ControlSettings::catalogue() const {
    return settings_.text(key::catalogue);
}

bool ControlSettings::searchesCatalogue() const {
    const bool isNamed = !catalogue().empty();
    return isNamed && settings_.boolean(key::searchCatalogue, true);
}

void ControlSettings::setSearchesCatalogue(bool searches) const {
    if (searches && catalogue().empty())
        settings_.setText(key::catalogue, "own");
    settings_.setBoolean(key::searchCatalogue, searches);
}

bool ControlSettings::isPlayerOnBus() const {
    return settings_.boolean(key::playerOnBus, true);
}

bool ControlSettings::offersPlayerShortcuts() const {
    return settings_.boolean(key::playerShortcuts, true);
}

void ControlSettings::declinePlayerShortcuts() const {
    settings_.setBoolean(key::playerShortcuts, false);
}

} // namespace ov
