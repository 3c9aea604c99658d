// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/option_kinds.h"

#include <limits>

namespace ov::cli {

const CLI::Validator notEmpty(
    [](const std::string& text) { return std::string(text.empty() ? "must not be empty" : ""); },
    "");

CLI::Validator inRange(std::int32_t lowest) {
    return CLI::Range(lowest, std::numeric_limits<std::int32_t>::max()).description("");
}

CLI::Option* addPath(CLI::App& command, const std::string& name, std::string& path,
                     const std::string& help) {
    return command.add_option(name, path, help)->type_name("")->required()->check(notEmpty);
}

} // namespace ov::cli
