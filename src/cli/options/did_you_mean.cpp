// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/did_you_mean.h"

#include "dictation/typed/similar_word.h"

namespace ov::cli {

std::string didYouMean(std::string_view typed, std::span<const std::string> known,
                       const std::string& otherwise) {
    const std::string similar = modDictation::similarWord(typed, known);
    return similar.empty() ? otherwise : "; did you mean \"" + similar + "\"?";
}

} // namespace ov::cli
