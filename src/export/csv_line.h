// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "export/row_writer.h"

#include <string>
#include <string_view>

namespace ov::exporting {

// A line of CSV, put together cell by cell. Cells are quoted wherever some reader might see a
// separator.
class CsvLine {
public:
    explicit CsvLine(char separator) : separator_(separator) {}

    void append(std::string_view cell);
    // With its end; the next one is empty again.
    void writeTo(Sink& sink);

private:
    char separator_;
    std::string line_; // every cell begins with its separator
};

} // namespace ov::exporting
