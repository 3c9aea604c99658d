// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/output.h"

#include "cli/messages.h"
#include "cli/shown_text.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace ov::cli {

namespace {

int lastError() noexcept {
    return errno != 0 ? errno : EIO;
}

} // namespace

bool Output::write(std::string_view text) {
    if (error_ == 0 && std::fwrite(text.data(), 1, text.size(), stream_) != text.size())
        error_ = lastError();
    return error_ == 0;
}

void Output::flush() {
    // What others wrote to the stream, and could not, counts too.
    if (error_ == 0 && (std::fflush(stream_) != 0 || std::ferror(stream_) != 0))
        error_ = lastError();
}

ExitCode Output::finish(ExitCode result) {
    flush();
    if (!failed())
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
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::size_t width = columnCount(row[i]);
        line.append(row[i]).append(std::max(widths[i], width) - width + 2, ' ');
    }
    return line.erase(line.find_last_not_of(' ') + 1) + '\n';
}

} // namespace ov::cli
