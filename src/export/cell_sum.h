// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string_view>
#include <zlib.h>

namespace ov::exporting {

// What the cells of a sheet hold, in their order, without keeping them.
class CellSum {
public:
    void addText(std::string_view text) noexcept {
        ++cells_;
        sum_ = crc32_z(sum_, reinterpret_cast<const Bytef*>(text.data()), text.size());
    }
    void addNumber() noexcept { addText("#"); }
    bool operator==(const CellSum&) const = default;

private:
    std::uint64_t cells_ = 0;
    unsigned long sum_ = 0;
};

} // namespace ov::exporting
