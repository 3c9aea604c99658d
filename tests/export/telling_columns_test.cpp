// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/telling_columns.h"

#include <gtest/gtest.h>

namespace ov::exporting {
namespace {

// Rows of a letter for each column: 18, 19, 5 and the file name.
class Letters final : public RowSource {
public:
    explicit Letters(std::vector<std::string> rows) : rows_(std::move(rows)) {}
    std::int64_t count() const override { return static_cast<std::int64_t>(rows_.size()); }
    Dictation dictation(std::int64_t /*row*/) const override { return {}; }
    std::string text(const Column& column, std::int64_t row) const override {
        const char letter = rows_[static_cast<std::size_t>(row)][std::stoul(column.key)];
        return letter == ' ' ? std::string() : std::string(1, letter);
    }

private:
    std::vector<std::string> rows_;
};

TEST(TellingColumns, AreThoseWithATextInAnyRow) {
    const std::vector<Column> columns{
        {"0", 18, "", "", 0}, {"1", 19, "", "", 0}, {"2", 5, "", "", 0}, {"3", 26, "", "", 0}};
    struct Case {
        std::vector<std::string> rows;
        std::string left;
        std::int64_t looked; // the last row that was
    };
    for (const Case& c : std::vector<Case>{{{"a  n", "   n", " b n"}, "01", 2},
                                           {{"abcn", "   n", "   n"}, "012", 0},
                                           {{"  cn"}, "2", 0},
                                           {{"   n", "   n"}, "0123", 1}, // nothing else is left
                                           {{}, "0123", -1}}) {
        std::int64_t looked = -1;
        const auto left = tellingColumns(columns, Letters(c.rows), [&](std::int64_t row) {
            looked = row;
            return true;
        });
        std::string keys;
        for (const Column& column : left.value())
            keys += column.key;
        EXPECT_EQ(keys, c.left);
        EXPECT_EQ(looked, c.looked);
    }
    EXPECT_FALSE(tellingColumns(columns, Letters({"a  n", "   n", " b n"}),
                                [](std::int64_t row) { return row < 1; }));
}

} // namespace
} // namespace ov::exporting
