// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/pedal/pedal_assignments.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>

namespace ov {

// Somebody may take the keyboard that he types on for a pedal and want it for the player alone:
// then he could type nothing more. One on which several keys are pressed that have nothing to do is
// such a keyboard.
class GrabGuard {
public:
    static constexpr std::size_t mostStrange = 3;

    // True when it is to be let go of from now on.
    bool note(const platform::InputPress& press, const PedalAssignments& assignments) {
        if (!press.down || !assignments.isGrabbed(press.kind) ||
            assignments.actionOf({press.kind, press.control}))
            return false;
        std::set<std::uint32_t>& strange = strange_[press.kind];
        return strange.insert(press.control).second && strange.size() == mostStrange;
    }
    bool isLetGo(platform::InputKind kind) const {
        const auto found = strange_.find(kind);
        return found != strange_.end() && found->second.size() >= mostStrange;
    }

private:
    std::map<platform::InputKind, std::set<std::uint32_t>> strange_; // pressed without an action
};

} // namespace ov
