// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/options/catalogue_options.h"

namespace ov::cli {

namespace {

constexpr const char* footer =
    "update   brings the catalogue up to date with the store in DIR, or adds that store\n"
    "status   lists the stores of the catalogue\n"
    "check    compares some of the folders with those of the disk\n"
    "forget   removes the store in DIR from the catalogue; its files stay\n"
    "`ovsearch help find` tells how to search it.";

} // namespace

CLI::App* addCatalogue(CLI::App& app, CatalogueOptions& options) {
    using A = CatalogueAction;
    CLI::App* command =
        app.add_subcommand("catalogue", "Keep a database of stores that are too large to walk");
    command->footer(footer);
    addChoice<A>(
        *command, "ACTION", options.action,
        {{"update", A::update}, {"status", A::status}, {"check", A::check}, {"forget", A::forget}},
        "What to do: update, status, check or forget")
        ->type_name("")
        ->required();
    command->add_option("DIR", options.directory, "The store, in which all of it lies")
        ->type_name("")
        ->check(notEmpty);
    command
        ->add_option("--to", options.file,
                     "The catalogue: a file, postgresql://HOST/DATABASE, or own among your data")
        ->type_name("FILE")
        ->check(notEmpty)
        ->capture_default_str();
    command->add_flag("--trust-folder-times", options.trustsFolderTimes,
                      "List unchanged folders once, on unknown file systems too");
    command->add_flag("--watch", options.watches,
                      "After an update stay and follow what changes in the store");
    command
        ->add_option("--interval", options.interval,
                     "With --watch: all of the store is looked at again after so many seconds")
        ->type_name("N")
        ->check(inRange(1))
        ->capture_default_str();
    return command;
}

} // namespace ov::cli
