// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/results/column_layout.h"

#include <algorithm>

namespace ov {

namespace {

using Fields = std::vector<std::int32_t>;

// Adds the fields of `others` that are missing, each behind the one before it there.
void insertMissing(std::span<const std::int32_t> others, Fields& fields) {
    auto behind = fields.begin();
    for (const std::int32_t field : others) {
        auto place = std::find(fields.begin(), fields.end(), field);
        if (place == fields.end())
            place = fields.insert(behind, field);
        behind = place + 1;
    }
}

} // namespace

Fields ColumnLayout::arranged(std::span<const std::int32_t> fields) const {
    Fields all;
    for (const std::int32_t field : order_)
        if (std::ranges::find(fields, field) != fields.end() &&
            std::ranges::find(all, field) == all.end())
            all.push_back(field);
    insertMissing(fields, all);
    return all;
}

void ColumnLayout::arrange(Fields shown) {
    insertMissing(order_, shown);
    order_ = std::move(shown);
}

std::optional<std::int32_t> ColumnLayout::width(std::int32_t field) const {
    const auto found = std::ranges::find(widths_, field, &Width::first);
    return found == widths_.end() ? std::nullopt : std::optional(found->second);
}

void ColumnLayout::setWidth(std::int32_t field, std::int32_t twips) {
    std::erase_if(widths_, [field](const Width& width) { return width.first == field; });
    widths_.emplace_back(field, twips);
}

} // namespace ov
