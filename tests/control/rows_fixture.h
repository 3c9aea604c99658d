// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/results/result_model.h"
#include "support/modINI.h"
#include "tests/window/window_fixture.h"

namespace ov::tests {

// A control whose list of hits is looked at.
class RowsTest : public WindowTest {
public:
    const ResultModel& model() { return dynamic_cast<const ResultModel&>(*results().model()); }
    int column(int field) { return model().columnOf(field); }
    // "*Anna; Berta; ": what the column of that field shows, with a star at the selected rows.
    std::string rows(int field = 5) {
        std::string all;
        for (int row = 0; row < model().rowCount(); ++row)
            all += (results().selectionModel()->isRowSelected(row) ? "*" : "") +
                   model().text(row, column(field)).toStdString() + "; ";
        return all;
    }
    std::string text(const char* label) { return widget<QLabel>(label).text().toStdString(); }
    std::string setting(const char* key) {
        return modINI::ReadIniValueDirect("OVSearch.ctrlOVSearch", key, "", path("local.ini"));
    }
    void waitFor(const std::function<bool()>& seen) { EXPECT_TRUE(QTest::qWaitFor(seen)); }
};

} // namespace ov::tests
