// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/row_texts.h"

#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/search/parallel_sort.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace ov::modDictation {

namespace {

constexpr char cellEnd = '\n';

// A value that stands in the name as it is shown: "$" before it is all that could join it there.
bool isPieceOfName(const FieldDefinition& field) noexcept {
    const bool isText = field.valueType == ValueType::text || field.valueType == ValueType::marker;
    return isText && field.dictationField != dictation_field::directory &&
           field.dictationField != dictation_field::freeText;
}
constexpr std::string_view joins = "$#";

} // namespace

RowTexts::RowTexts(Source source, std::size_t mostBytes)
    : source_(std::move(source)),
      showsName_(std::ranges::find(source_.fields, field_id::name) != source_.fields.end()),
      slots_(partsOf(hits())),
      bytesLeft_(static_cast<std::int64_t>(mostBytes)) {}

std::shared_ptr<const RowTexts::Part> RowTexts::part(std::size_t index) {
    Slot& slot = slots_.at(index);
    const std::lock_guard<std::mutex> lock(slot.making);
    if (slot.part)
        return slot.part;
    const std::shared_ptr<Part> made = make(index);
    const auto bytes = static_cast<std::int64_t>(made->text.size());
    if (bytesLeft_.fetch_sub(bytes) >= bytes) {
        made->text.shrink_to_fit();
        slot.part = made;
    } else {
        bytesLeft_ += bytes;
    }
    return made;
}

std::pair<std::size_t, std::size_t> RowTexts::hitsOfPart(std::size_t index) const noexcept {
    const std::size_t first = index * entriesPerPart;
    return {first, std::min(first + entriesPerPart, hits())};
}

std::shared_ptr<RowTexts::Part> RowTexts::make(std::size_t index) const {
    platform::setLocale(source_.locale);
    auto part = std::make_shared<Part>();
    const auto [first, end] = hitsOfPart(index);
    part->first = first;
    constexpr std::size_t usualRow = 256;
    part->text.reserve((end - part->first) * usualRow);
    part->ends.reserve(end - part->first);
    for (std::size_t hit = part->first; hit < end; ++hit) {
        appendRow((*source_.hits)[static_cast<std::int32_t>(hit) + 1], part->text);
        part->ends.push_back(static_cast<std::uint32_t>(part->text.size()));
    }
    return part;
}

void RowTexts::appendRow(const Dictation& dictation, std::string& text) const {
    const bool nameHoldsPieces = showsName_ && dictation.name.find(joins) == std::string_view::npos;
    for (const std::int32_t field : source_.fields) {
        if (nameHoldsPieces && field != field_id::name && isPieceOfName(fieldDefinition(field)))
            continue;
        platform::appendUpperCase(shownValue(field, dictation, source_.codes), text);
        text.push_back(cellEnd);
    }
}

} // namespace ov::modDictation
