// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/postgres/text_numbers.h"

#include "catalogue/kept_columns.h"

#include <algorithm>
#include <cerrno>

namespace ov::catalogue::loaded {

std::int64_t TextNumbers::add(std::int64_t ward, std::int32_t field, std::string_view upper,
                              std::string_view text) {
    unknown_.push_back({numbers_.size(), static_cast<std::int32_t>(ward), field, std::string(upper),
                        std::string(text)});
    numbers_.push_back(0);
    return kept::first + first_ + static_cast<std::int64_t>(numbers_.size()) - 1;
}

std::int64_t TextNumbers::of(std::int64_t own) const noexcept {
    const std::int64_t at = own - kept::first - first_;
    return at < 0 || at >= static_cast<std::int64_t>(numbers_.size())
               ? 0
               : numbers_[static_cast<std::size_t>(at)];
}

void TextNumbers::forget() {
    first_ += static_cast<std::int64_t>(numbers_.size());
    numbers_.clear();
    unknown_.clear();
}

Parameters TextNumbers::parameters() const {
    ArrayOf wards(type::int32);
    ArrayOf fields(type::int32);
    ArrayOf uppers(type::text);
    ArrayOf texts(type::text);
    for (const Unknown& one : unknown_) {
        wards.add(one.ward);
        fields.add(one.field);
        uppers.add(one.upper);
        texts.add(one.text);
    }
    return Parameters().add(wards).add(fields).add(uppers).add(texts);
}

// Each by the index, however many there are.
void TextNumbers::find(Connection& connection) {
    Answer answer = connection.ask(
        "SELECT a.place, t.number FROM unnest(?, ?, ?, ?)"
        " WITH ORDINALITY AS a (ward, field, upper, text, place)"
        " CROSS JOIN LATERAL (SELECT k.number FROM texts k WHERE k.ward = a.ward AND"
        " k.field = a.field AND k.upper = a.upper COLLATE \"C\" AND k.text = a.text COLLATE \"C\""
        " LIMIT 1) t",
        parameters());
    while (answer.step())
        numbers_[unknown_[static_cast<std::size_t>(answer.number(0) - 1)].at] =
            static_cast<std::int32_t>(answer.number(1));
    std::erase_if(unknown_, [this](const Unknown& one) { return numbers_[one.at] != 0; });
}

// Two names may have written the same text in two ways.
void TextNumbers::insert(Connection& connection) {
    connection.ask("INSERT INTO texts (ward, field, upper, text, number)"
                   " SELECT a.ward, a.field, a.upper, a.text, nextval('ovsearch.text_numbers')"
                   " FROM unnest(?, ?, ?, ?) AS a (ward, field, upper, text)"
                   " ON CONFLICT DO NOTHING",
                   parameters());
}

void TextNumbers::resolve(Connection& connection) {
    find(connection);
    if (unknown_.empty() || connection.failed())
        return;
    insert(connection);
    find(connection);
    if (!unknown_.empty() && !connection.failed())
        connection.fail(EIO, "the catalogue lost a text that was just added");
}

} // namespace ov::catalogue::loaded
