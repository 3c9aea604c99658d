// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/kept_columns.h"
#include "platform/status.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ov::catalogue {

// What a catalogue keeps of one dictation.
struct KeptValues {
    // Of columns whose text is kept itself only whether there is one: kept::absent, empty or first.
    std::array<std::int64_t, columnCount> numbers{};
    std::string ownText; // of the only such column
};

// The values of names. Most are met again and again: what a text stands for is remembered. For one
// thread.
class ValueReader {
public:
    // The number, kept::first or above, of a text of a field; `upper` is it in upper case. Asked
    // for each text once, unless there are very many.
    using NumberOf = std::function<std::int64_t(std::int32_t field, std::string_view upper,
                                                std::string_view text)>;
    explicit ValueReader(NumberOf numberOf) : numberOf_(std::move(numberOf)) {}

    // `name` is a dictationName(). Valid until the next call.
    const KeptValues& read(std::string_view name);
    // What is met from now on has other numbers.
    void forget();

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept {
            return std::hash<std::string_view>()(text);
        }
    };
    using Known = std::unordered_map<std::string, std::int64_t, Hash, std::equal_to<>>;

    void findRaw(std::string_view name);
    std::int64_t numberOf(std::size_t column, std::string_view raw);
    std::int64_t work(std::size_t column, std::string_view raw);

    const NumberOf numberOf_;
    std::array<std::optional<std::string_view>, columnCount> raw_; // as in the name
    std::array<Known, columnCount> known_;                         // by that
    std::string text_;
    std::string upper_;
    KeptValues values_;
};

} // namespace ov::catalogue
