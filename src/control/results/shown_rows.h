// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/results/result_model.h"
#include "export/cell.h"
#include "export/rows.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ov {

// Hits as the list shows them, in that order. Both are borrowed.
class ShownRows final : public exporting::RowSource {
public:
    ShownRows(const ResultModel& list, const std::vector<std::int32_t>& hits)
        : list_(list), hits_(hits) {}

    std::int64_t count() const override { return static_cast<std::int64_t>(hits_.size()); }
    modDictation::Dictation dictation(std::int64_t row) const override {
        return list_.dictationOfHit(hits_[static_cast<std::size_t>(row)]);
    }
    std::string text(const exporting::Column& column, std::int64_t row) const override {
        return exporting::cellText(column, dictation(row));
    }

private:
    const ResultModel& list_;
    const std::vector<std::int32_t>& hits_;
};

} // namespace ov
