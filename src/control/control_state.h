// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// What the control does at the moment, and what follows from that: the one place that says so.

namespace ov {

enum class ControlState : std::uint8_t {
    notBuilt,  // without a host, or without texts
    idle,      // waits for the user
    working,   // a command that is short, or none of the others
    asking,    // a question or a dialog that a command consists of is open
    searching, // the walk through the tree
    following, // a search goes on as the criteria changed; all else may be asked for
    filling,   // its hits come into the list
    copying,
    sorting,
    exporting, // to a file, to paper, to the preview
    ending,    // the host has let go; nothing comes after this
};

struct StateRules {
    bool takesCommands; // buttons, keys, menus and headers
    bool stopButton;    // is lit
    bool stops;         // by Escape or that button
    bool tellsHost;     // something stands in the host's progress display
    bool hasContents;   // criteria that are worth saving, texts to translate
};

inline constexpr std::array<StateRules, 11> stateRules{{
    //               commands button stops  host   contents
    /* notBuilt  */ {false, false, false, false, false},
    /* idle      */ {true, false, false, false, true},
    /* working   */ {false, false, false, false, true},
    /* asking    */ {false, false, false, false, true},
    /* searching */ {false, true, true, true, true},
    /* following */ {true, false, true, true, true},
    /* filling   */ {false, false, false, true, true},
    /* copying   */ {false, false, true, false, true},
    /* sorting   */ {false, false, true, false, true},
    /* exporting */ {false, false, false, false, true},
    /* ending    */ {false, false, false, false, false},
}};

constexpr const StateRules& rulesOf(ControlState state) noexcept {
    return stateRules[static_cast<std::size_t>(state)];
}

} // namespace ov
