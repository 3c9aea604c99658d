// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

namespace ov::cli {

// A complaint, and below it the text that it is about with the place marked: so many bytes from
// `offset` on.
void complainAt(std::string_view message, std::string_view text, std::size_t offset,
                std::size_t length);

} // namespace ov::cli
