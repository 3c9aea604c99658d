// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ov::modDictation {

// Finds a word in texts of many megabytes, some gigabytes a second. May be used from any thread.
class WordFinder {
public:
    // `word` is not empty.
    explicit WordFinder(std::string word);

    const std::string& word() const noexcept { return word_; }
    // Where it stands first from `at` on; std::string_view::npos when it does not.
    std::size_t find(std::string_view text, std::size_t at) const noexcept;

private:
    bool mayBeginInBlock(const char* at) const noexcept;

    std::string word_;
    std::size_t middle_;
    std::size_t last_;
};

} // namespace ov::modDictation
