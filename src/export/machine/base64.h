// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace ov::exporting {

// The bytes as RFC 4648 has them, padded, on one line.
std::string base64(std::string_view bytes);

} // namespace ov::exporting
