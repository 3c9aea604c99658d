// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/result_model.h"
#include "tests/window/window_fixture.h"

#include <QAbstractItemModelTester>

namespace ov {
namespace {

class Results : public tests::WindowTest {};

TEST_F(Results, AreATableThatGrowsAndIsSorted) {
    ResultModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setColumns();
    auto hits = std::make_unique<modDictation::DictationList>();
    for (const char* author : {"c", "a", "b"})
        hits->add("\\store\\", std::string("2$WAV@@14$") + author + ".WAV");
    model.setHits(std::move(hits));
    EXPECT_EQ(model.rowCount(), 0);
    model.showFirst(1);
    model.showFirst(3);
    const int author = model.columnOf(5);
    const auto authors = [&] {
        std::string all;
        for (int row = 0; row < model.rowCount(); ++row)
            all += model.text(row, author).toStdString();
        return all;
    };
    EXPECT_EQ(authors(), "cab");
    model.setOrder({2, 3, 1});
    EXPECT_EQ(authors(), "abc");
    EXPECT_EQ(model.rowOf(1), 2);
    EXPECT_EQ(model.path(0), "\\store\\2$WAV@@14$a.WAV");
    EXPECT_EQ(model.headerData(author, Qt::Horizontal, ResultModel::keyRole).toString(),
              QStringLiteral("_5"));
    model.clear();
    EXPECT_EQ(model.rowCount(), 0);
}

} // namespace
} // namespace ov
