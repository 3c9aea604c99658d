// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Being told what happens in folders, so that nobody has to look again and again.

namespace ov::platform {

struct FolderEvent {
    enum class Kind : std::uint8_t {
        begun,   // a file that is going to arrive
        arrived, // one that was closed after writing or moved in, or a link to one
        gone,    // it was removed, or moved away
        folder,  // there is another one
        lost,    // something: too much at a time, or a directory went; the rest is empty
    };
    Kind kind = Kind::lost;
    std::string directory; // as it was given to add()
    std::string name;
};

class FolderWatch {
public:
    enum class Wanted : std::uint8_t {
        files, // what arrives, and when it is complete
        // Only which names come and go: `begun` and `arrived` are the same. File systems are
        // watched as wholes where that is allowed; else some of the system's watches are left to
        // others. What is mounted in the first directory counts as lost, too.
        names,
    };
    explicit FolderWatch(Wanted wanted = Wanted::files);
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    enum class Added : std::uint8_t {
        now,
        before,
        elsewhere, // but what other machines change there is not told: a server's, mostly
        gone,      // there is no such directory
        refused,   // the system lets no more folders be watched, or this one cannot be
    };
    // From now on tells of what happens in that directory, not of what is in its folders. `why` is
    // set where it is refused.
    Added add(const std::string& directory, Status& why);

    // What has happened; waits for the first. Nothing when none comes in time, or a signal does, or
    // what happened was somewhere else.
    std::vector<FolderEvent> wait(std::chrono::milliseconds longest);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace ov::platform
