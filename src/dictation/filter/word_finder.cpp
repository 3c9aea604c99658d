// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/filter/word_finder.h"

#include <utility>

namespace ov::modDictation {

namespace {

constexpr std::size_t blockSize = 32;

} // namespace

WordFinder::WordFinder(std::string word)
    : word_(std::move(word)), middle_(word_.size() / 2), last_(word_.size() - 1) {}

// Written without a way out of the loop, so that the compiler compares all places at once. Three
// characters, as two are met too often in texts that are full of digits.
bool WordFinder::mayBeginInBlock(const char* at) const noexcept {
    const char first = word_[0];
    const char middle = word_[middle_];
    const char last = word_[last_];
    const char* const atMiddle = at + middle_;
    const char* const atLast = at + last_;
    unsigned char found = 0;
    for (std::size_t i = 0; i < blockSize; ++i) {
        const bool here = (at[i] == first) & (atMiddle[i] == middle) & (atLast[i] == last);
        found |= static_cast<unsigned char>(here);
    }
    return found != 0;
}

std::size_t WordFinder::find(std::string_view text, std::size_t at) const noexcept {
    for (; at + blockSize + last_ <= text.size(); at += blockSize) {
        if (!mayBeginInBlock(text.data() + at))
            continue;
        for (std::size_t i = at; i < at + blockSize; ++i)
            if (text[i] == word_[0] && text.compare(i, word_.size(), word_) == 0)
                return i;
    }
    return text.find(word_, at);
}

} // namespace ov::modDictation
