// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/arranged_names.h"

#include "catalogue/catalogue.h"

#include <algorithm>
#include <unordered_map>

namespace ov::catalogue {

namespace {

constexpr std::int64_t none = -1;

} // namespace

ArrangedNames::ArrangedNames(const std::vector<std::string_view>& names, const KeptNames& kept)
    : positions(names.size(), none), isNew(names.size(), false) {
    std::unordered_map<std::string_view, std::size_t> known;
    for (std::size_t i = 0; i < kept.names.size(); ++i)
        known.emplace(kept.names[i], i);
    std::size_t next = 0; // the order may have changed
    for (std::size_t i = 0; i < names.size(); ++i)
        if (const auto found = known.find(names[i]);
            found != known.end() && found->second >= next) {
            positions[i] = kept.positions[found->second];
            next = found->second + 1;
        }
    for (std::size_t i = 0; i < names.size();) {
        std::size_t end = i;
        while (end < names.size() && positions[end] == none)
            ++end;
        i = end > i ? place(i, end, i > 0 ? positions[i - 1] : none) : end + 1;
    }
    std::size_t at = 0;
    for (const std::int64_t position : kept.positions) {
        while (at < names.size() && (isNew[at] || positions[at] < position))
            ++at;
        if (at == names.size() || positions[at] != position)
            removed.push_back(position);
    }
}

// The new ones from `begin` to `end`; where to go on.
std::size_t ArrangedNames::place(std::size_t begin, std::size_t end, std::int64_t before) {
    constexpr std::int64_t widest = 16; // room for later ones
    const bool isLast = end == positions.size();
    const std::int64_t behind = isLast ? Catalogue::mostPositions : positions[end];
    const auto count = static_cast<std::int64_t>(end - begin);
    const bool hasRoom = behind - before > count;
    if (!hasRoom && (!isLast || begin > 0)) {
        const auto from = isLast ? 0 : static_cast<std::ptrdiff_t>(begin);
        std::fill(positions.begin() + from, positions.end(), none);
        std::fill(isNew.begin() + from, isNew.end(), false);
        return static_cast<std::size_t>(from);
    }
    const std::int64_t step = std::clamp<std::int64_t>((behind - before) / (count + 1), 1, widest);
    for (std::size_t i = begin; i < end; ++i) {
        positions[i] = before += step;
        isNew[i] = true;
    }
    return end;
}

} // namespace ov::catalogue
