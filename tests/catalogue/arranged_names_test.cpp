// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/arranged_names.h"
#include "catalogue/catalogue.h"

#include <gtest/gtest.h>

#include <tuple>

namespace ov::catalogue {

using Positions = std::vector<std::int64_t>;

TEST(ArrangedNames, KeepsWhatCanStay) {
    constexpr std::int64_t last = Catalogue::mostPositions - 1;
    // What was kept, the names that are there; their positions, which are new, what is removed.
    using Case = std::tuple<KeptNames, std::vector<std::string_view>, Positions, std::vector<bool>,
                            Positions>;
    const std::vector<Case> cases = {
        {{{"a", "c"}, {15, 31}}, {"a", "b", "c"}, {15, 23, 31}, {false, true, false}, {}},
        {{{"a", "b", "c"}, {0, 1, 2}}, {"a", "c", "d"}, {0, 2, 18}, {false, false, true}, {1}},
        {{{"b", "c"}, {0, 1}}, {"a", "b", "c"}, {15, 31, 47}, {true, true, true}, {0, 1}},
        {{{"a", "c"}, {4, 5}}, {"a", "b", "c"}, {4, 20, 36}, {false, true, true}, {5}},
        {{{"a"}, {last}}, {"a", "b"}, {15, 31}, {true, true}, {last}},
        {{{"a", "b"}, {1, 2}}, {"b", "a"}, {2, 18}, {false, true}, {1}},
        {{{"a"}, {1}}, {}, {}, {}, {1}}};
    for (const auto& [kept, names, positions, isNew, removed] : cases) {
        const ArrangedNames arranged(names, kept);
        EXPECT_EQ(arranged.positions, positions);
        EXPECT_EQ(arranged.isNew, isNew);
        EXPECT_EQ(arranged.removed, removed);
    }
}

} // namespace ov::catalogue
