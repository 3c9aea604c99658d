// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/export_command.h"

#include "cli/messages.h"
#include "cli/options/typed_words.h"
#include "cli/terminal_interface.h"
#include "cli/told_report.h"
#include "dictation/search/result_order.h"
#include "export/file_export.h"
#include "export/pdf_module.h"
#include "platform/directories.h"
#include "platform/files.h"
#include "platform/loaded_module.h"
#include "platform/text.h"
#include "platform/threads/coarse_clock.h"

#include <algorithm>

namespace ov::cli {

namespace {

using exporting::Format;
using modDictation::DictationList;

std::optional<Format> readFormat(const std::string& file) {
    const auto format = exporting::formatOfFile(file);
    if (!format && !platform::directoryExists(platform::fromNativePath(file)))
        complain("FILE: \"" + file +
                 "\" has none of the endings .pdf, .xlsx, .csv, .html (.htm), .json, "
                 ".txt (.tsv)");
    else if (!format)
        complain(file + ": is a folder; name the FILE to write first, then the folder to search");
    return format;
}

// Before the search, which may take long.
bool mayWrite(const std::string& path, bool force) {
    const std::string native = platform::toNativePath(path);
    if (const platform::Status folder =
            platform::DirectoryReader().open(path.substr(0, path.find_last_of('\\') + 1));
        !folder.ok())
        complain(native + ": " + folder.text());
    else if (platform::directoryExists(path))
        complain(native + ": is a folder; name a file to write");
    else if (!force && platform::fileExists(path))
        complain(native + ": already exists; --force replaces it");
    else
        return true;
    return false;
}

exporting::Document documentOf(const ExportOptions& options, const SearchRequest& request) {
    exporting::Document document = exporting::describe(request.search);
    if (options.title)
        document.title = platform::textFromBytes(*options.title);
    document.listSeparator = options.separator.value_or(document.listSeparator);
    document.columns = request.columns;
    return document;
}

std::vector<std::int32_t> orderOf(const SearchRequest& request, const DictationList& hits) {
    std::vector<std::int32_t> order = modDictation::sortedOrder(hits, request.sort);
    order.resize(std::min(order.size(), static_cast<std::size_t>(request.limit.count)));
    return order;
}

exporting::GoOn progressOf(std::int64_t count, TerminalInterface& terminal) {
    constexpr std::int64_t intervalMs = 100;
    return [=, &terminal, next = platform::coarseMilliseconds()](std::int64_t done) mutable {
        if (platform::coarseMilliseconds() >= next) {
            next = platform::coarseMilliseconds() + intervalMs;
            terminal.showProgress(std::to_string(done) + " of " + std::to_string(count) + " rows");
        }
        return !TerminalInterface::interrupted();
    };
}

ExitCode tellStopped(const std::string& path) {
    complain("stopped; " + platform::toNativePath(path) + " was not written");
    return ExitCode::interrupted;
}

ExitCode write(const exporting::Document& document, const exporting::RowSource& rows, Format format,
               const std::string& path, TerminalInterface& terminal) {
    platform::Status loaded;
    const auto* pdf =
        format == Format::pdf ? platform::loadModule<exporting::PdfModule>(loaded) : nullptr;
    if (!loaded.ok()) {
        complain("PDF needs the module for it, which cannot be loaded: " + loaded.description());
        return ExitCode::unreadable;
    }
    const auto result =
        exporting::exportFile(document, rows, format, path, progressOf(rows.count(), terminal),
                              pdf != nullptr ? pdf->write : nullptr);
    terminal.clearProgress();
    if (result.stopped)
        return tellStopped(path);
    if (!result.status.ok())
        complain(result.status.description());
    return result.ok() ? ExitCode::found : ExitCode::unreadable;
}

} // namespace

ExitCode runExport(const ExportOptions& options, const Session& session,
                   TerminalInterface& terminal) {
    const auto format = readFormat(options.file);
    if (options.separator && format && format != Format::csv) {
        complain("--separator goes with a FILE that ends in .csv");
        return ExitCode::usage;
    }
    SearchRequest request;
    const ExitCode read =
        format ? readSearch(options.search, chosenColumns(), request) : ExitCode::usage;
    if (read != ExitCode::found)
        return read;
    const std::string path = platform::fromNativePath(options.file);
    if (!mayWrite(path, options.force))
        return ExitCode::unreadable;

    DictationList hits;
    auto report = search(request.search, session, terminal, hits, [] { return true; });
    if (TerminalInterface::interrupted())
        return tellStopped(path);
    const bool mindsLimit = !request.limit.isNamed || options.search.telling.strict;
    report.limitReached = report.limitReached || (mindsLimit && hits.size() > request.limit.count);
    tellReport(report, std::min(hits.size(), request.limit.count), options.search.telling);
    const ExitCode found = searchResult(report, hits.size(), options.search.telling);
    if (found == ExitCode::unreadable)
        complain(options.file + " was not written");
    if (found == ExitCode::nothingFound)
        tellFoldersAsTexts(request.foldersAsTexts);
    if (found != ExitCode::found)
        return found;
    const std::vector<std::int32_t> order = orderOf(request, hits);
    return write(documentOf(options, request), exporting::HitRows(hits, order), *format, path,
                 terminal);
}

} // namespace ov::cli
