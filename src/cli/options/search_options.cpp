// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/search_options.h"

#include <map>

namespace ov::cli {

namespace {

constexpr const char* criterionHelp =
    "A CRITERION is FIELD OPERATOR [VALUE], for example\n"
    "  'author contains müller'   'priority = HOCH'   'dictated this-week'\n"
    "  'due between 2026-11-01..2026-11-30'   'length >= 00:01:00'   'marker marked'\n"
    "`ovsearch fields` lists the fields and what each offers.\n"
    "Exit codes: 0 found, 1 nothing found, 2 wrong usage, 3 the store or a file cannot be read,\n"
    "130 interrupted.";

} // namespace

void addSearchOptions(CLI::App& command, SearchOptions& search) {
    command.footer(criterionHelp);
    command.add_option("ROOT", search.root, "Folder to search; else that of the settings")
        ->type_name("")
        ->check(notEmpty);
    command.add_option("-c,--criterion", search.criteria, "Criterion to match; may repeat")
        ->type_name("CRITERION")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false); // what follows is ROOT
    command.add_flag("--any", search.any, "One matching criterion is enough");
    command.add_option("--max-depth", search.maxDepth, "Levels of folders below ROOT; -1 for all")
        ->type_name("N")
        ->check(inRange(-1))
        ->capture_default_str();
    command.add_option("--limit", search.limit, "End after this many hits")
        ->type_name("N")
        ->check(inRange(1))
        ->capture_default_str();
    command.add_option("--columns", search.columns, "Columns to print, parted by commas")
        ->type_name("KEYS")
        ->delimiter(',')
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    command.add_option("--sort", search.sort, "Field to sort by")->type_name("KEY[:desc]");
}

void addSeparator(CLI::App& command, std::optional<char>& separator, const std::string& usual) {
    static const std::map<std::string, char> separators = {
        {",", ','}, {"comma", ','}, {";", ';'}, {"semicolon", ';'}, {"tab", '\t'}};
    command
        .add_option_function<std::string>(
            "--separator",
            [&separator](const std::string& name) { separator = separators.at(name); },
            "What parts the cells of CSV: comma, semicolon or tab; else " + usual)
        ->type_name("SEPARATOR")
        ->check(CLI::IsMember(separators).description(""));
}

} // namespace ov::cli
