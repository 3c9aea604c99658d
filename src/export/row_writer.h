// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/document.h"
#include "export/rows.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Lists as text, in forms that other programs read. Exports and `ovsearch find` share them.

namespace ov::exporting {

// Takes the bytes. Once a write has failed, so does every further one.
class Sink {
public:
    virtual ~Sink() = default;
    virtual bool write(std::string_view bytes) = 0;
};

// begin() first, then any number of rows, then end().
class RowWriter {
public:
    virtual ~RowWriter() = default;
    virtual void begin() {}
    virtual void write(const Dictation& dictation) = 0;
    virtual void end() {}
};

// Makes text fit for a terminal.
using TextFilter = std::string (*)(std::string_view text);

// RFC 4180 in UTF-8, with another separator if need be. For spreadsheets there are a byte-order
// mark, captions in place of keys, no control as in makeTextWriter(), and no cell
// that would be run as a formula, whatever separator the reader believes in: an apostrophe stands
// before each part of a text that begins like one. Raw cells are what programs read
// (machine/machine_value.h), and beside a column of paths there is "path_bytes".
struct CsvOptions {
    bool forSpreadsheets = false;
    bool raw = false;
    char separator = ',';
    TextFilter filter = nullptr; // for cells
};
std::unique_ptr<RowWriter> makeCsvWriter(const std::vector<Column>& columns,
                                         const CsvOptions& options, Sink& sink);

// An array of objects, or one on each line: "path", the cells as shown by their columns' keys, and
// in "values" by the same keys what they are for programs (machine/machine_value.h). "path_bytes"
// is there when the path is no UTF-8; "path" is then read as Windows-1252.
struct JsonOptions {
    bool lines = false;
    bool raw = false;            // also "raw": each field as it stands in the name
    TextFilter filter = nullptr; // for whole objects; knows the escapes of JSON
};
std::unique_ptr<RowWriter> makeJsonWriter(const std::vector<Column>& columns,
                                          const JsonOptions& options, Sink& sink);

// A page that stands by itself, with a table that screen readers and printers understand.
std::unique_ptr<RowWriter> makeHtmlWriter(const Document& document, Sink& sink);

// Cells with tabs between them, captions first. Tabs and line ends in a cell become blanks, other
// controls and marks that turn the writing direction "\u202E".
std::unique_ptr<RowWriter> makeTextWriter(const std::vector<Column>& columns, Sink& sink);

} // namespace ov::exporting
