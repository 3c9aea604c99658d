// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "export/row_writer.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// What every command prints with.

namespace ov::cli {

// A stream that remembers whether anything could not be written.
class Output final : public exporting::Sink {
public:
    explicit Output(std::FILE* stream) : stream_(stream) {}
    bool write(std::string_view text) override;
    void flush();
    bool failed() const noexcept { return error_ != 0; }
    // Flushes. When anything could not be written complains with the reason and answers
    // `unreadable`, otherwise `result`.
    ExitCode finish(ExitCode result);

private:
    std::FILE* stream_;
    int error_ = 0;
};

// A line of a table; its cells are fit to be shown.
using Row = std::vector<std::string>;

// The columns that the widest cell of each column takes. Rows are as long as the first.
std::vector<std::size_t> columnWidths(const std::vector<Row>& rows);

// The cells, two blanks apart, with a line end. A cell wider than its column takes the room it
// needs.
std::string tableLine(const Row& row, const std::vector<std::size_t>& widths);

} // namespace ov::cli
