// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/exit_code.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The sound outputs of the desktop, as a person names them.

namespace ov::cli {

// `found`, or why they cannot be told has been told. Ctrl-C ends the wait for a sound service that
// does not answer.
ExitCode readOutputs(std::vector<std::string>& names);

// The name that is meant: by itself, by its number, the first being 1, or by a part that no other
// has, without regard to case.
std::optional<std::string> meantOutput(std::span<const std::string> names, std::string_view typed);

} // namespace ov::cli
