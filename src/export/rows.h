// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/dictation_list.h"
#include "export/document.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

// The rows of a list that is written or printed.

namespace ov::exporting {

using modDictation::Dictation;

// Asked for one row after the other, and by a preview for any, some of them again. Rows are
// counted from 0. Nothing may change while somebody writes or prints.
class RowSource {
public:
    virtual ~RowSource() = default;
    virtual std::int64_t count() const = 0;
    virtual Dictation dictation(std::int64_t row) const = 0;
    // The cell as the result list shows it. Virtual, since codes read in the language of whoever
    // made the source; a module with pages knows none.
    virtual std::string text(const Column& column, std::int64_t row) const = 0;
};

// The hits of a search. Both are borrowed.
class HitRows final : public RowSource {
public:
    // All hits in the order found.
    explicit HitRows(const modDictation::DictationList& hits) : hits_(hits), all_(true) {}
    // Those of these indexes, counted from 1, in that order.
    HitRows(const modDictation::DictationList& hits, std::span<const std::int32_t> indexes)
        : hits_(hits), indexes_(indexes) {}

    std::int64_t count() const override {
        return all_ ? hits_.size() : static_cast<std::int64_t>(indexes_.size());
    }
    Dictation dictation(std::int64_t row) const override {
        const std::int32_t index =
            all_ ? static_cast<std::int32_t>(row + 1) : indexes_[static_cast<std::size_t>(row)];
        return hits_[index];
    }
    std::string text(const Column& column, std::int64_t row) const override;

private:
    const modDictation::DictationList& hits_;
    std::span<const std::int32_t> indexes_;
    bool all_ = false;
};

// Told how many rows are done, often; false stops the work. May let window messages be handled.
using GoOn = std::function<bool(std::int64_t rowsDone)>;

} // namespace ov::exporting
