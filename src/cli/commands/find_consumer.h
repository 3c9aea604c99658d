// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commands/find_command.h"
#include "cli/hits/hit_consumer.h"
#include "cli/output.h"

#include <memory>
#include <string>
#include <vector>

// What `find` is to do with hits.

namespace ov::cli {

// How hits are printed when nothing else becomes of them.
HitFormat formatOf(const FindOptions& options);

// Which options contradict each other, for a person; empty when none do.
std::string contradiction(const FindOptions& options);

// The limits of the searches are made what the consumer needs. nullptr for wrong usage, which has
// been told.
std::unique_ptr<HitConsumer> consumerFor(const FindOptions& options,
                                         std::vector<SearchRequest>& requests, Output& output,
                                         TerminalInterface& terminal);

} // namespace ov::cli
