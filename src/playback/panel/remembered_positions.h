// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/status.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ov {

// Where the user left dictations, so that he can go on there. A dictation is known by the name of
// its file and its size: it may lie elsewhere tomorrow.
//
// Kept in one text file, a line each, the last one last: milliseconds, bytes of the sound file and
// its name, with blanks between. Each function reads it anew, since other windows write it too,
// and has its answer within a second.
class RememberedPositions {
public:
    static constexpr std::size_t most = 1000;

    struct Recording {
        std::string name; // without its directory
        std::int64_t bytes = 0;
        bool operator==(const Recording&) const = default;
    };

    RememberedPositions() = default;
    // `directory` ends in "\" and need not exist yet; empty: nothing is kept.
    explicit RememberedPositions(std::string directory) : directory_(std::move(directory)) {}

    // Milliseconds; nothing when it is not known.
    std::optional<std::int32_t> find(const Recording& recording) const;
    platform::Status keep(const Recording& recording, std::int32_t milliseconds) const;
    platform::Status forget(const Recording& recording) const;
    platform::Status forgetAll() const;

    std::string file() const { return directory_ + "Positions.txt"; }

private:
    struct Place {
        Recording recording;
        std::int32_t milliseconds = 0;
    };
    // On another thread, which may take its time.
    platform::Status read(std::vector<Place>& places) const;
    platform::Status write(const std::vector<Place>& places) const;
    template <typename Change>
    platform::Status change(Change change) const;
    static std::optional<Place> placeOf(std::string_view line);

    std::string directory_;
};

} // namespace ov
