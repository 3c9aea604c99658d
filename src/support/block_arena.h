// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace ov {

// Keeps texts in large blocks: nothing is moved while they grow, which would stall the window, and
// nothing is freed before all is.
class BlockArena {
public:
    explicit BlockArena(std::size_t blockSize) : blockSize_(blockSize) {}

    const char* keep(std::string_view text) {
        if (text.size() > free_) {
            free_ = std::max(blockSize_, text.size());
            blocks_.push_back(std::make_unique_for_overwrite<char[]>(free_));
            end_ = blocks_.back().get() + free_;
        }
        char* place = end_ - free_;
        std::copy(text.begin(), text.end(), place);
        free_ -= text.size();
        return place;
    }

    void clear() noexcept {
        blocks_.clear();
        free_ = 0;
    }

private:
    std::size_t blockSize_;
    std::vector<std::unique_ptr<char[]>> blocks_;
    char* end_ = nullptr; // of the last block
    std::size_t free_ = 0;
};

} // namespace ov
