// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QTableView;

namespace ov {

class ResultModel;

// The selected rows of the result list, of which there may be a million.
class ResultSelection {
public:
    ResultSelection(QTableView& view, const ResultModel& model) : view_(view), model_(model) {}

    // In the order of the rows. `visit` is called with each row and returns false to end.
    void forEachRow(const std::function<bool(int)>& visit) const;
    int count() const;
    std::vector<std::int32_t> hits() const;
    // The path of the current row when it is selected, else of the first selected one; empty
    // without a selection.
    std::string path() const;

    // What is kept while the rows change their order.
    struct Kept {
        bool all = false;
        std::int32_t current = 0;       // hit; 0 for none
        std::vector<std::int32_t> hits; // sorted
    };
    Kept keep() const;
    // Selects it again, with the keyboard in that column.
    void restore(const Kept& kept, int column) const;

private:
    void restoreCurrent(std::int32_t hit, int column) const;

    QTableView& view_;
    const ResultModel& model_;
};

} // namespace ov
