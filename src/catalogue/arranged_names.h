// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ov::catalogue {

// The names of a folder as a catalogue has them, each with its position.
struct KeptNames {
    std::vector<std::string> names;
    std::vector<std::int64_t> positions;
};

// Where the names of a folder are to be by now, in their order. Those that are kept stay where they
// are: one that is new goes between its neighbours, and only where there is no room any more those
// behind it move.
struct ArrangedNames {
    ArrangedNames(const std::vector<std::string_view>& names, const KeptNames& kept);

    std::vector<std::int64_t> positions; // of all
    std::vector<bool> isNew;             // at its position
    std::vector<std::int64_t> removed;   // positions that were

private:
    std::size_t place(std::size_t begin, std::size_t end, std::int64_t before);
};

} // namespace ov::catalogue
