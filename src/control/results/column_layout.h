// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace ov {

// How the user left the columns of the result list: by field, whichever columns are shown.
class ColumnLayout {
public:
    using Width = std::pair<std::int32_t, std::int32_t>; // field, twips

    ColumnLayout() = default;
    ColumnLayout(std::vector<std::int32_t> order, std::vector<Width> widths)
        : order_(std::move(order)), widths_(std::move(widths)) {}

    // Fields from left to right, those that are not shown now among them.
    const std::vector<std::int32_t>& order() const { return order_; }
    // Of the columns that the user widened or narrowed.
    const std::vector<Width>& widths() const { return widths_; }

    // The fields of a list in the user's order. Those that were never moved stand behind the one
    // that they follow in `fields`.
    std::vector<std::int32_t> arranged(std::span<const std::int32_t> fields) const;
    // Takes the order of the fields that are shown; the others keep their place behind the one
    // before them.
    void arrange(std::vector<std::int32_t> shown);

    std::optional<std::int32_t> width(std::int32_t field) const;
    void setWidth(std::int32_t field, std::int32_t twips);

    bool operator==(const ColumnLayout&) const = default;

private:
    std::vector<std::int32_t> order_;
    std::vector<Width> widths_;
};

} // namespace ov
