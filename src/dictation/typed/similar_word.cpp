// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/similar_word.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace ov::modDictation {

namespace {

constexpr std::size_t longest = 40; // nobody's word is; a typed text may be

// How many letters have to be changed, put in, left out or swapped with the next.
std::size_t changesBetween(std::string_view a, std::string_view b) {
    std::array<std::vector<std::size_t>, 3> rows; // of this letter of `a`, and the two before
    rows.fill(std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= b.size(); ++i)
        rows[0][i] = i;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::rotate(rows.begin(), rows.begin() + 2, rows.end());
        auto& [now, last, before] = rows;
        now[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = a[i - 1] == b[j - 1];
            now[j] = std::min({last[j] + 1, now[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped)
                now[j] = std::min(now[j], before[j - 2] + 1);
        }
    }
    return rows[0][b.size()];
}

} // namespace

std::string similarWord(std::string_view typed, std::span<const std::string> words) {
    if (typed.empty() || typed.size() > longest)
        return {};
    const std::string wanted = platform::upperCase(typed);
    std::string best;
    std::size_t fewest = std::max<std::size_t>(typed.size() / 3, 1) + 1;
    for (const std::string& word : words) {
        if (word.size() > longest)
            continue;
        const std::size_t changes = changesBetween(wanted, platform::upperCase(word));
        if (changes < std::min(fewest, word.size()))
            best = word;
        fewest = std::min(fewest, changes);
    }
    return best;
}

} // namespace ov::modDictation
