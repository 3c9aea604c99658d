// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

// How a program ends when a signal says so. For programs, at their start; a plug-in leaves the
// signals of its host's process alone.

namespace ov::platform {

// From now on a signal that ends the program first removes what FileReplacement has written so
// far. Signals that the program was started to ignore stay ignored. A file that may not grow any
// more is an error of the write and not the end.
void endWithoutLeftovers();

// Removes unfinished files and ends as the signal does when nobody handles it, so that a shell
// learns of it. Also a handler, for any signal that has a default.
void endBySignal(int signal) noexcept;

} // namespace ov::platform
