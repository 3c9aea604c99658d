// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/options/find_options.h"

#include "cli/options/hit_options.h"
#include "cli/options/look_options.h"
#include "cli/options/search_options.h"

namespace ov::cli {

namespace {

void addFormat(CLI::App& command, std::optional<HitFormat>& format) {
    addChoice<HitFormat>(command, "--format", format,
                         {{"table", HitFormat::table},
                          {"csv", HitFormat::csv},
                          {"json", HitFormat::json},
                          {"jsonl", HitFormat::jsonl},
                          {"paths", HitFormat::paths}},
                         "table, csv, json, jsonl or paths")
        ->type_name("FORMAT");
}

} // namespace

CLI::App* addFind(CLI::App& app, FindOptions& options) {
    CLI::App* command = app.add_subcommand("find", "Search a store of dictations");
    addSearchOptions(*command, options.search);
    addCriteriaFile(*command, options.criteriaFiles,
                    "Also the criteria of this file; a further file is a search of its own")
        ->take_all()
        ->allow_extra_args(false);
    addFormat(*command, options.format);
    addSeparator(*command, options.separator, "a comma");
    command->add_flag("--raw", options.raw, "Fill CSV with values for programs");
    command->add_flag("-0,--null", options.zeroEnded, "Print paths, each ended by a zero byte");
    addColorAndPager(*command, options.looks);
    addHyperlinks(*command, options.looks);
    command->add_flag("--quiet", options.quiet, "Print nothing; the exit code tells");
    addHitOptions(*command, options);
    command->add_flag("--trust-folder-times", options.trustsFolderTimes,
                      "List unchanged folders once, on unknown file systems too");
    command
        ->add_option("--catalogue", options.catalogue,
                     "Search this catalogue, file or server, or own, in place of the store")
        ->type_name("FILE")
        ->check(notEmpty);
    command->add_flag("--explain", options.explains,
                      "Print how it is understood and how many meet each criterion");
    return command;
}

CLI::App* addExport(CLI::App& app, ExportOptions& options) {
    CLI::App* command =
        app.add_subcommand("export", "Search, and write a list for other programs or for paper");
    addPath(*command, "FILE", options.file,
            "File to write; its ending is .pdf, .xlsx, .csv, .html (.htm), .json or .txt (.tsv)");
    addSearchOptions(*command, options.search);
    addCriteriaFile(*command, options.search.criteriaFile, "Also the criteria of this file");
    command->add_option("--title", options.title, "Title of the list")->type_name("TEXT");
    addSeparator(*command, options.separator, "as the locale has it");
    command->add_flag("--force", options.force, "Replace FILE when it exists");
    return command;
}

} // namespace ov::cli
