// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// Fills the places of a text; modLanguage.h tells what a text may hold.

namespace ov {

// A source that is not set gives the empty text.
struct TextSources {
    // Empty: there is no list, and its places stay as they are.
    std::optional<std::span<const std::string_view>> arguments;
    // The text that a "%#22%" stands for, empty when there is none.
    std::function<std::string(std::int32_t number)> text;
    // What a "%#VERSION%" stands for.
    std::function<std::string()> version;
};

// A place that cannot be filled (no such argument, a number out of the 32-bit range) and those
// behind it stay as they are; "#13#" becomes a line break everywhere.
std::string expandText(std::string_view text, const TextSources& sources);

} // namespace ov
