// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/search_options.h"

#include "cli/options/search_words.h"

namespace ov::cli {

namespace {

constexpr const char* criterionHelp =
    "WORDs say what to look for, for example\n"
    "  author:müller   prio:high   dictated:this-week   due:2026-11-01..   'length:>5m'\n"
    "  status:ROH,MAI   -folder:test   '\"two words\"'   '(' author:zeh typist:zeh ')'\n"
    "The first that is a folder, or holds a \"/\", is the folder to search.\n"
    "A CRITERION is FIELD OPERATOR [VALUE], as 'author is Müller' or 'due this-month'.\n"
    "`ovsearch fields` lists the fields and what each offers.\n"
    "Exit codes: 0 found, 1 nothing found, 2 wrong usage, 3 the store or a file cannot be read,\n"
    "4 a command failed, 130 interrupted.";

void addTelling(CLI::App& command, Telling& telling) {
    command.add_flag("--strict", telling.strict, "Exit code 3 when anything was left out");
    command.add_flag_callback(
        "--no-messages", [&telling] { telling.messages = false; }, "Only count what was left out");
}

} // namespace

void addSearchScope(CLI::App& command, SearchOptions& search, const char* rootHelp) {
    command.add_option("--root", search.root, rootHelp)->type_name("DIR")->check(notEmpty);
    command.add_flag("--any", search.any, "One matching criterion is enough");
    command.add_option("--max-depth", search.maxDepth, "Levels of folders below ROOT; -1 for all")
        ->type_name("N")
        ->check(inRange(-1))
        ->capture_default_str();
    command.add_option("--limit", search.limit, "End after this many hits, or sorted ones")
        ->type_name("N")
        ->check(inRange(1))
        ->default_str(std::to_string(modDictation::usualLimit));
    addTelling(command, search.telling);
    command.add_option("--sort", search.sort, "Fields to sort by, parted by commas, or path")
        ->type_name("KEY[:desc]")
        ->delimiter(',')
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
}

void addSearchOptions(CLI::App& command, SearchOptions& search) {
    command.footer(criterionHelp);
    addSearchWords(command);
    addSearchScope(command, search);
    command.add_option("--columns", search.columns, "Columns to print, parted by commas")
        ->type_name("KEYS")
        ->delimiter(',')
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
}

void addSeparator(CLI::App& command, std::optional<char>& separator, const std::string& usual) {
    addChoice<char>(command, "--separator", separator,
                    {{"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}, {",", ','}, {";", ';'}},
                    "What parts the cells of CSV: comma, semicolon or tab; else " + usual)
        ->type_name("SEPARATOR");
}

} // namespace ov::cli
