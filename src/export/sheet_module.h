// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/cell_sum.h"

#include <cstdint>
#include <memory>
#include <string>

// Spreadsheets are written and read back by other people's libraries, which stand behind a module,
// src/export/module, that is loaded for the first one.

namespace ov::exporting {

enum class CellStyle : std::uint8_t { plain, caption, text, date, dateTime, length };

struct SheetSetup {
    std::string native;         // is overwritten
    std::string directory;      // for temporary files: a full disk shall be the one of the file
    std::string name;           // of the sheet; empty: the library's
    std::string dateFormat;     // as spreadsheets write formats
    std::string dateTimeFormat; // likewise
};

// A workbook with one sheet, written row by row. Rows and columns count from 0, row 0 has the
// captions. What cannot be written is noted, and told by failed() and close().
class SheetFile {
public:
    virtual ~SheetFile() = default; // leaves an unfinished file behind, unless closed

    // Characters.
    virtual void setWidth(std::size_t column, double width) = 0;
    // Captions that stay in sight, are repeated on each page and filter `rows` rows of `columns`.
    virtual void fixCaptions(std::int64_t rows, std::size_t columns) = 0;
    virtual void writeText(std::int64_t row, std::size_t column, const std::string& text,
                           CellStyle style) = 0;
    virtual void writeNumber(std::int64_t row, std::size_t column, double number,
                             CellStyle style) = 0;
    // Rows are noticed when their buffer goes to the disk.
    virtual bool failed() = 0;
    // Nothing comes after it. False when not all was written; errno may tell why.
    virtual bool close() = 0;
};

struct SheetModule {
    static constexpr const char* moduleName = "OVSearchSheet";

    std::unique_ptr<SheetFile> (*create)(const SheetSetup& setup);
    // True when every part of the archive `native` can be read, with the size and the checksum
    // that the archive says, is well-formed, and the one sheet has these cells. The library that
    // writes it does not notice when the parts, which it gathers in temporary files, find no room
    // on the disk: the file is then a sound archive of cut texts.
    bool (*isWhole)(const std::string& native, const CellSum& cells);
};

} // namespace ov::exporting
