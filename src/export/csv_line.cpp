// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/csv_line.h"

namespace ov::exporting {

void CsvLine::append(std::string_view cell) {
    line_.push_back(separator_);
    if (cell.find_first_of("\",;\t\r\n") == std::string_view::npos) {
        line_.append(cell);
        return;
    }
    line_.push_back('"');
    for (const char c : cell)
        line_.append(c == '"' ? 2 : 1, c);
    line_.push_back('"');
}

void CsvLine::writeTo(Sink& sink) {
    if (line_.size() == 1) // an empty line is none, to most readers
        line_.append("\"\"");
    line_.append("\r\n");
    sink.write(std::string_view(line_).substr(1));
    line_.clear();
}

} // namespace ov::exporting
