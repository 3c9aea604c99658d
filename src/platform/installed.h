// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace ov::platform {

// What a thread has put in the place of the system's own calls; nullptr for those.
template <typename Calls>
Calls*& installedOnThread() noexcept {
    thread_local Calls* installed = nullptr;
    return installed;
}

// Returns what was installed before.
template <typename Calls>
Calls* installOnThread(Calls* calls) noexcept {
    return std::exchange(installedOnThread<Calls>(), calls);
}

} // namespace ov::platform
