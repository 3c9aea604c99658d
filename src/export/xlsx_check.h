// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Whether a workbook holds what was written into it. The library that writes it does not notice
// when the parts, which it gathers in temporary files, find no room on the disk: the file is then
// a sound archive of cut texts.

namespace ov::exporting {

// What the cells of a sheet hold, in their order, without keeping them.
class CellSum {
public:
    void addText(std::string_view text) noexcept;
    void addNumber() noexcept { addText("#"); }
    bool operator==(const CellSum&) const = default;

private:
    std::uint64_t cells_ = 0;
    unsigned long sum_ = 0;
};

// True when every part of the archive `native` can be read, with the size and the checksum that
// the archive says, is well-formed, and the one sheet has these cells.
bool isWholeWorkbook(const std::string& native, const CellSum& cells);

} // namespace ov::exporting
