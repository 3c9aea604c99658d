// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/machine/base64.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace ov::exporting {

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t group = 3; // bytes that make four digits
    std::string out;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(group, bytes.size()))) {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < group; ++i)
            bits = bits << 8U | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
        for (std::size_t i = 0; i <= group; ++i)
            out.push_back(i <= bytes.size() ? digits[bits >> (6U * (group - i)) & 63U] : '=');
    }
    return out;
}

} // namespace ov::exporting
