// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/exit_code.h"
#include "cli/looks/pager.h"
#include "export/row_writer.h"
#include "platform/terminal/terminal.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What every command prints with.

namespace ov::cli {

// A stream that remembers whether anything could not be written. With a pager a text is held back
// until it is longer than the screen, and goes to the pager then, or until its end.
class Output final : public exporting::Sink {
public:
    explicit Output(std::FILE* stream) : stream_(stream) {}
    // What both of them are for is done before anything is written, so that it finds the terminal
    // as it is to be.
    void setPager(std::optional<Pager> pager) { pager_ = std::move(pager); }
    void setBefore(std::function<void()> before) { before_ = std::move(before); }

    bool write(std::string_view text) override;
    void flush();
    bool failed() const noexcept { return error_ != 0; }
    // Flushes, and waits until a pager has been left. When anything could not be written complains
    // with the reason and answers `unreadable`, otherwise `result`; nobody is told that the reader
    // went away.
    ExitCode finish(ExitCode result);

private:
    bool put(std::string_view text);
    void makeReady();
    void startPager();
    void release();

    std::FILE* stream_;
    int error_ = 0;
    std::function<void()> before_;
    std::optional<Pager> pager_; // while `held_` is held back
    std::string held_;
    platform::FedProgram program_;
};

// A line of a table; its cells are fit to be shown.
using Row = std::vector<std::string>;

// The columns that the widest cell of each column takes. Rows are as long as the first.
std::vector<std::size_t> columnWidths(const std::vector<Row>& rows);

// The cells, two blanks apart, with a line end. A cell wider than its column takes the room it
// needs.
std::string tableLine(const Row& row, const std::vector<std::size_t>& widths);
// `adorned` are the same cells with what a terminal obeys, which takes no room.
std::string tableLine(const Row& row, const std::vector<std::size_t>& widths, const Row& adorned);

} // namespace ov::cli
