// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace ov::cli {

// A text that leads to the file of that native path, for terminals that know hyperlinks.
std::string fileLink(std::string_view text, std::string_view nativePath);

} // namespace ov::cli
