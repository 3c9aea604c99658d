// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/locale.h"
#include "platform/status.h"

#include <cstdint>
#include <functional>
#include <string>

// A store of made-up dictations that can be searched and played: departments of two hospitals
// and two law firms, with a folder per month or per author, folders of finished dictations
// ("ERL"), one folder that no search may enter ("_old") and one that is empty.

namespace ov::demo {

struct DemoOptions {
    std::string directory; // made with its parents; must be missing or empty
    int count = 500;       // dictations, not negative
    std::uint32_t seed = 1;
    platform::DateTime today; // dates lie around this day; its time does not matter
};

struct DemoResult {
    platform::Status status;
    int written = 0; // dictations; also after a failure
};

// Called after every dictation; false stops, which is no failure.
using DemoProgress = std::function<bool(int done, int total)>;

// Same count, seed and day, same store, byte for byte. After a failure (no rights, disk full)
// what was written stays, but no incomplete file.
DemoResult writeDemoStore(const DemoOptions& options, const DemoProgress& progress = {});

} // namespace ov::demo
