// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/hit_writer.h"
#include "cli/looks/looks.h"
#include "cli/looks/text_marks.h"

#include <memory>
#include <vector>

namespace ov::cli {

// Hits as a table with a line of titles, for a person.
std::unique_ptr<HitWriter> makeTableWriter(std::vector<Column> columns, const Looks& looks,
                                           TextMarks marks, Output& output);

} // namespace ov::cli
