// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace ov::platform {

// Runs `work` on a thread of its own that nobody waits for. The host's signals stay with its own
// threads. False, and nothing runs, when no thread can be had.
//
// `work` may end long after its starter, and in the end of the program: it holds what it uses. The
// modules of ours are never unloaded, so that it always comes back to code that is there.
bool startDetached(std::function<void()> work);

} // namespace ov::platform
