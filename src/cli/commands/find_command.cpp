// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/find_command.h"

#include "cli/messages.h"
#include "cli/terminal_interface.h"
#include "dictation/search/result_order.h"
#include "platform/terminal.h"

#include <cstdio>

namespace ov::cli {

namespace {

using modDictation::DictationList;

// A table has to fit a terminal; the others take all that the user has chosen to see.
std::vector<std::string> usualColumns(HitFormat format) {
    if (format == HitFormat::table)
        return {"folder", "status", "priority", "author", "dictated", "length", "subject"};
    std::vector<std::string> keys = chosenColumns();
    keys.insert(keys.begin(), "path");
    return keys;
}

// Writes hits as they come, or sorted once all are there.
class HitPrinter {
public:
    HitPrinter(const DictationList& hits, HitWriter& writer, Output& output)
        : hits_(hits), writer_(writer), output_(output) {}

    bool hasNew() const noexcept { return printed_ < hits_.size(); }

    void printNew() {
        while (hasNew())
            print(++printed_);
        output_.flush();
    }

    void printSorted(const SortOrder& sort) {
        for (const std::int32_t index :
             modDictation::sortedOrder(hits_, sort.field, sort.descending))
            print(index);
    }

private:
    void print(std::int32_t index) { writer_.write(hits_[index]); }

    const DictationList& hits_;
    HitWriter& writer_;
    Output& output_;
    std::int32_t printed_ = 0;
};

} // namespace

ExitCode runFind(const FindOptions& options, const Session& session, TerminalInterface& terminal) {
    if (options.zeroEnded && options.format != HitFormat::paths) {
        complain("-0 goes with --format paths");
        return ExitCode::usage;
    }
    if (options.separator && options.format != HitFormat::csv) {
        complain("--separator goes with --format csv");
        return ExitCode::usage;
    }
    SearchRequest request;
    const ExitCode read = readSearch(options.search, usualColumns(options.format), request);
    if (read != ExitCode::found)
        return read;

    Output output(stdout);
    const auto writer =
        makeHitWriter({options.format, request.columns, options.separator.value_or(','),
                       platform::isTerminal(stdout), options.zeroEnded},
                      output);
    DictationList hits;
    HitPrinter printer(hits, *writer, output);
    writer->begin();
    const auto report = search(request.search, session, terminal, hits, [&] {
        if (!request.sort && printer.hasNew()) {
            terminal.makeRoomForOutput();
            printer.printNew();
        }
        return !output.failed();
    });
    if (request.sort)
        printer.printSorted(*request.sort);
    else
        printer.printNew();
    writer->end();
    output.flush();
    tellReport(report, hits.size());
    return output.finish(TerminalInterface::interrupted() ? ExitCode::interrupted
                                                          : searchResult(report, hits.size()));
}

} // namespace ov::cli
