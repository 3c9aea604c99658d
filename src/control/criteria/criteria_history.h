// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/criteria/criteria_entry.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace ov {

// What the criteria were before each change, so that changes can be taken back and made again.
class CriteriaHistory {
public:
    static constexpr std::size_t mostKept = 200;

    void forget() { past_ = future_ = {}; }

    // Before a change of the user.
    void keep(AskedCriteria before) {
        future_.clear();
        past_.push_back(std::move(before));
        if (past_.size() > mostKept)
            past_.erase(past_.begin());
    }

    // What was there before the last change, or is there again after one that was taken back;
    // nothing when there is no such. `present` is what is there now.
    std::optional<AskedCriteria> undo(AskedCriteria present) {
        return move(past_, future_, std::move(present));
    }
    std::optional<AskedCriteria> redo(AskedCriteria present) {
        return move(future_, past_, std::move(present));
    }
    bool canUndo() const { return !past_.empty(); }
    bool canRedo() const { return !future_.empty(); }

private:
    using States = std::vector<AskedCriteria>;

    static std::optional<AskedCriteria> move(States& from, States& to, AskedCriteria present) {
        if (from.empty())
            return std::nullopt;
        AskedCriteria asked = std::move(from.back());
        from.pop_back();
        to.push_back(std::move(present));
        return asked;
    }

    States past_;
    States future_;
};

} // namespace ov
