// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace ov {

// A time as it is typed: "83", "1:23" and "0:01:23" are places; "+30" and "-1:00" lead on and back
// from where one is.
struct TypedTime {
    std::int32_t seconds = 0;
    bool isRelative = false;
    bool operator==(const TypedTime&) const = default;
};

// Nothing for what is none.
std::optional<TypedTime> readTypedTime(std::string_view text);

} // namespace ov
