// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/output.h"

#include "cli/messages.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace ov::cli {

namespace {

int lastError() noexcept {
    return errno != 0 ? errno : EIO;
}

} // namespace

bool Output::write(std::string_view text) {
    if (!pager_)
        return put(text);
    held_.append(text);
    if (pager_->isNeededFor(held_))
        startPager();
    return error_ == 0;
}

void Output::makeReady() {
    if (before_)
        std::exchange(before_, nullptr)();
}

bool Output::put(std::string_view text) {
    makeReady();
    if (error_ == 0 && std::fwrite(text.data(), 1, text.size(), stream_) != text.size())
        error_ = lastError();
    return error_ == 0;
}

void Output::startPager() {
    makeReady(); // a line of progress would stay on the pager's screen
    const std::string command = std::exchange(pager_, std::nullopt)->command;
    const platform::Status started = program_.start(command, "LESS=FRX");
    if (started.ok()) {
        stream_ = program_.input();
        TerminalInterface::outliveInterrupts(true);
    } else {
        complain("cannot start the pager: " + started.description());
    }
    put(std::exchange(held_, {}));
}

void Output::release() {
    pager_.reset();
    if (!held_.empty())
        put(std::exchange(held_, {}));
}

void Output::flush() {
    // What others wrote to the stream, and could not, counts too.
    if (!pager_ && error_ == 0 && (std::fflush(stream_) != 0 || std::ferror(stream_) != 0))
        error_ = lastError();
}

ExitCode Output::finish(ExitCode result) {
    release();
    flush();
    if (program_.input() != nullptr) {
        const bool wasRun = program_.finish();
        TerminalInterface::outliveInterrupts(false);
        if (!wasRun) {
            complain("the pager cannot be run; OVSEARCH_PAGER names another one, --pager never "
                     "goes without");
            return ExitCode::unreadable;
        }
    }
    if (!failed() || error_ == EPIPE)
        return result;
    complain("cannot write: " + std::generic_category().message(error_));
    return ExitCode::unreadable;
}

std::vector<std::size_t> columnWidths(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], columnCount(row[i]));
    return widths;
}

std::string tableLine(const Row& row, const std::vector<std::size_t>& widths) {
    return tableLine(row, widths, row);
}

std::string tableLine(const Row& row, const std::vector<std::size_t>& widths, const Row& adorned) {
    std::string line;
    std::size_t blanks = 0; // none at the end
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::size_t width = columnCount(row[i]);
        if (width > 0)
            line.append(std::exchange(blanks, 0), ' ').append(adorned[i]);
        blanks += std::max(widths[i], width) - width + 2;
    }
    return line.erase(line.find_last_not_of(' ') + 1) + '\n';
}

} // namespace ov::cli
