// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ov::cli {

enum class PlayKey : std::uint8_t {
    pause,
    stop,
    back,
    on,
    again,
    previous,
    next,
    slower,
    faster,
    mark, // the beginning and the end of what is played again and again
    goTo,
    timeStamp,
    quit,
    interrupt
};

// What keys mean while something plays. Some come as several characters.
class PlayKeys {
public:
    // Once a key is whole, and is one of those.
    std::optional<PlayKey> take(char typed);

private:
    std::optional<PlayKey> takeSequence(char typed);

    std::string sequence_; // since an escape
};

} // namespace ov::cli
