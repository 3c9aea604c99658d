// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/catalogue_command.h"

#include "catalogue/catalogue_check.h"
#include "cli/commands/catalogue_update.h"
#include "cli/hits/asked_catalogue.h"
#include "cli/messages.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "platform/files.h"
#include "support/modFilePath.h"

#include <cerrno>
#include <cstdio>

namespace ov::cli {

using catalogue::Catalogue;
using catalogue::Store;
using platform::Status;

namespace {

// Once it is interrupted a catalogue answers no more, which says nothing about the store: what
// follows looks for that before it tells anything.

// 1 when there is no store.
ExitCode tellStores(Catalogue& catalogue, const std::string& place) {
    std::vector<Store> stores;
    if (const Status read = catalogue.stores(stores); !read.ok())
        return refuse(read);
    Output output(stdout);
    for (Store& store : stores) {
        if (const Status read = catalogue.count(store); !read.ok())
            return refuse(read);
        if (TerminalInterface::interrupted())
            return ExitCode::interrupted;
        output.write(shownPath(store.root) + ": " + dictationsText(store.dictations) + " in " +
                     foldersText(store.folders) +
                     (store.unreadable > 0
                          ? ", " + std::to_string(store.unreadable) + " of them unreadable"
                          : "") +
                     ", " + asOfText(store) + "\n");
    }
    std::int64_t bytes = 0;
    if (const Status read = catalogue.size(bytes); !read.ok())
        return refuse(read);
    if (TerminalInterface::interrupted())
        return ExitCode::interrupted;
    output.write(shownText(catalogue::shownPlace(place)) + ": " + std::to_string(bytes) +
                 " bytes\n");
    return output.finish(stores.empty() ? ExitCode::nothingFound : ExitCode::found);
}

ExitCode forget(Catalogue& catalogue, const Store& store) {
    Status status = catalogue.lockForUpdate();
    if (status.ok())
        status = catalogue.removeStore(store.id);
    if (status.ok())
        status = catalogue.commit();
    if (status.ok())
        status = catalogue.tidy(false);
    return status.ok() ? ExitCode::found : refuse(status);
}

// 1 when the disk has something else, 3 when that cannot be told of some.
ExitCode check(Catalogue& catalogue, const Store& store) {
    catalogue::CheckReport report;
    if (const Status checked = catalogue::checkStore(catalogue, store, report); !checked.ok())
        return refuse(checked);
    if (TerminalInterface::interrupted())
        return ExitCode::interrupted;
    for (const std::string& path : report.differing)
        complain(platform::toNativePath(path) +
                 ": holds other dictations or folders than the catalogue, or has gone");
    for (const Status& problem : report.problems)
        complain(problem.description());
    Output output(stdout);
    output.write(dictationsText(report.dictations) + " in " + foldersText(report.folders) +
                 " looked at, " + foldersText(static_cast<std::int64_t>(report.differing.size())) +
                 " differ\n");
    return output.finish(!report.problems.empty()    ? ExitCode::unreadable
                         : !report.differing.empty() ? ExitCode::nothingFound
                                                     : ExitCode::found);
}

ExitCode runOnStore(Catalogue& catalogue, const std::string& directory,
                    const CatalogueOptions& options) {
    Status status;
    const auto store = catalogue::storeOf(catalogue, directory, status);
    if (!store)
        return TerminalInterface::interrupted() ? ExitCode::interrupted : refuse(status);
    if (options.action == CatalogueAction::forget && store->root != directory)
        return refuse(
            {EINVAL, platform::toNativePath(directory),
             "is a part of the store " + platform::toNativePath(store->root) + "; name that one"});
    return options.action == CatalogueAction::forget ? forget(catalogue, *store)
                                                     : check(catalogue, *store);
}

} // namespace

ExitCode runCatalogue(const CatalogueOptions& options, TerminalInterface& terminal) {
    const bool isStatus = options.action == CatalogueAction::status;
    const bool isUpdate = options.action == CatalogueAction::update;
    const std::string place = cataloguePlace(options.file);
    if (isStatus != options.directory.empty()) {
        complain(isStatus ? "catalogue status tells of all stores; leave out \"" +
                                options.directory + '"'
                          : "say which store: the folder that all of it lies in");
        return ExitCode::usage;
    }
    if (options.watches && !isUpdate) {
        complain("--watch goes with catalogue update");
        return ExitCode::usage;
    }
    const std::string directory =
        modFilePath::AddBackslash(platform::fromNativePath(options.directory));
    if (isUpdate)
        return updateCatalogue(place, directory, options, terminal);
    if (!catalogue::isServer(place) &&
        !platform::fileExists(place)) // none is made only to be looked at
        return refuse({ENOENT, platform::toNativePath(place), "there is no catalogue"});
    const bool writes = options.action == CatalogueAction::forget;
    Status status;
    const auto catalogue = openUnlessInterrupted(
        place, writes ? catalogue::Access::update : catalogue::Access::ask, status);
    if (catalogue == nullptr)
        return refuse(status);
    const catalogue::Stoppable stoppable(*catalogue,
                                         [] { return TerminalInterface::interrupted(); });
    const ExitCode result =
        isStatus ? tellStores(*catalogue, place) : runOnStore(*catalogue, directory, options);
    return TerminalInterface::interrupted() ? ExitCode::interrupted : result;
}

} // namespace ov::cli
