// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/tally.h"

#include "dictation/field_values.h"
#include "platform/locale.h"
#include "platform/text.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>

namespace ov::cli {

using exporting::MachineValue;
using modDictation::Dictation;
using modDictation::ExportType;

namespace {

template <typename Value>
std::optional<Value> typedAs(std::int32_t field, const Dictation& dictation) {
    const auto typed = modDictation::typedValue(field, dictation);
    const auto* value = typed ? std::get_if<Value>(&*typed) : nullptr;
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

// Folders are other ones where their bytes are others.
bool isFolder(const modDictation::FieldDefinition& field) {
    return field.id == modDictation::field_id::folder;
}

MachineValue valueOf(const modDictation::FieldDefinition& field, const Dictation& dictation) {
    constexpr std::size_t dayLength = 10; // of "2026-11-21T10:00:00"
    // As criteria compare texts, but for letter case, which stays part of the value.
    MachineValue value = exporting::machineValue(field.id, dictation);
    auto* const text = std::get_if<std::string>(&value);
    if (text != nullptr && field.exportType == ExportType::date)
        text->resize(std::min(text->size(), dayLength));
    else if (text != nullptr && !isFolder(field))
        *text = platform::composed(*text);
    return value;
}

std::string shownOf(const modDictation::FieldDefinition& field, const Dictation& dictation) {
    if (const auto date = typedAs<modDictation::DateSerial>(field.id, dictation))
        return platform::formatShortDate(modDictation::dateOf(*date));
    if (isFolder(field)) // which others end like
        return exporting::machineText(exporting::machineValue(field.id, dictation));
    return platform::composed(modDictation::shownValue(field.id, dictation));
}

} // namespace

Tally::Tally(std::int32_t by, bool addsLengths)
    : by_(modDictation::fieldDefinition(by)), addsLengths_(addsLengths) {
    if (by == modDictation::noField)
        groups_.try_emplace(MachineValue());
}

void Tally::add(const Dictation& dictation, std::int64_t count) {
    TallyGroup& group = groupOf(dictation);
    group.count += count;
    if (!addsLengths_)
        return;
    if (const auto length =
            typedAs<modDictation::Seconds>(modDictation::field_id::length, dictation))
        group.seconds += std::max(length->count, 0);
}

TallyGroup& Tally::groupOf(const Dictation& dictation) {
    if (by_.id == modDictation::noField)
        return groups_.begin()->second;
    if (by_.exportType == ExportType::text)
        return groupOfText(dictation);
    return groupOfValue(valueOf(by_, dictation), dictation);
}

TallyGroup& Tally::groupOfText(const Dictation& dictation) {
    if (isFolder(by_))
        text_ = dictation.directory;
    else
        modDictation::readField(by_.dictationField, dictation, text_);
    const auto [known, isNew] = byText_.try_emplace(text_, nullptr);
    if (isNew)
        known->second = &groupOfValue(valueOf(by_, dictation), dictation);
    return *known->second;
}

TallyGroup& Tally::groupOfValue(MachineValue value, const Dictation& dictation) {
    const auto [group, isNew] = groups_.try_emplace(std::move(value));
    if (isNew) {
        group->second.value = group->first;
        if (!std::holds_alternative<std::monostate>(group->first))
            group->second.shown = shownOf(by_, dictation);
    }
    return group->second;
}

std::vector<TallyGroup> Tally::groups() const {
    std::vector<TallyGroup> sorted;
    for (const auto& [value, group] : groups_)
        sorted.push_back(group);
    std::ranges::stable_sort(sorted, std::greater(), &TallyGroup::count);
    return sorted;
}

} // namespace ov::cli
