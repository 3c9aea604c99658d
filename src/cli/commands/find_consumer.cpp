// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/commands/find_consumer.h"

#include "cli/hits/counted_hits.h"
#include "cli/hits/executed_hits.h"
#include "cli/hits/limited_hits.h"
#include "cli/hits/newer_hits.h"
#include "cli/hits/silent_hits.h"
#include "cli/hits/sorted_hits.h"
#include "cli/hits/written_hits.h"
#include "cli/messages.h"
#include "platform/terminal/terminal.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdio>
#include <span>
#include <utility>

namespace ov::cli {

namespace {

using Consumer = std::unique_ptr<HitConsumer>;

bool counts(const FindOptions& options) {
    return options.count || options.countBy || options.sum;
}

bool executes(const FindOptions& options) {
    return !options.commands.empty() || !options.batchCommands.empty();
}

// One hit tells the exit code, unless it depends on what is met after it.
bool isOneEnough(const FindOptions& options) {
    return options.quiet && !options.search.telling.strict;
}

HitLimit limitOf(const FindOptions& options, const HitLimit& typed) {
    if (isOneEnough(options))
        return {1, true};
    return counts(options) && !typed.isNamed ? HitLimit{noLimit, true} : typed;
}

// What is found is then not yet what is taken.
bool choosesLater(const FindOptions& options) {
    return !options.search.sort.empty() || options.newer || options.watch;
}

Consumer writingConsumer(const FindOptions& options, const std::vector<SearchRequest>& requests,
                         Output& output) {
    WriterOptions how{
        formatOf(options), requests.front().columns,     options.separator.value_or(','),
        options.raw,       platform::isTerminal(stdout), options.zeroEnded};
    how.looks = looksOf(options.looks);
    if (how.format == HitFormat::table && !options.watch)
        output.setPager(pagerFor(options.looks.pager));
    for (const SearchRequest& request : requests)
        how.marks.add(request.search.criteria);
    return std::make_unique<WrittenHits>(makeHitWriter(how, output), output);
}

Consumer countingConsumer(const FindOptions& options, Output& output) {
    CountForm form{.counts = options.count,
                   .by = {},
                   .addsLengths = options.sum.has_value(),
                   .format = formatOf(options),
                   .separator = options.separator.value_or(','),
                   .raw = options.raw,
                   .escaped = platform::isTerminal(stdout),
                   .looks = looksOf(options.looks)};
    if (options.countBy) {
        const std::int32_t field = readField(*options.countBy, "count");
        if (field == modDictation::noField)
            return nullptr;
        form.by = exporting::columnOf(field);
        if (form.format == HitFormat::table)
            output.setPager(pagerFor(options.looks.pager));
    }
    return std::make_unique<CountedHits>(form, output);
}

// Where hits end; nullptr for wrong usage.
Consumer lastConsumer(const FindOptions& options, const std::vector<SearchRequest>& requests,
                      Output& output, TerminalInterface& terminal) {
    if (options.quiet)
        return std::make_unique<SilentHits>(isOneEnough(options));
    if (!options.commands.empty())
        return std::make_unique<ExecutedHits>(options.commands, terminal);
    if (!options.batchCommands.empty())
        return std::make_unique<ExecutedBatches>(options.batchCommands.front(), terminal);
    if (counts(options))
        return countingConsumer(options, output);
    return writingConsumer(options, requests, output);
}

// What does not go together, and what to say of it.
using Rule = std::pair<bool, const char*>;

std::string firstBroken(std::span<const Rule> rules) {
    const auto broken = std::ranges::find(rules, true, &Rule::first);
    return broken != rules.end() ? broken->second : "";
}

std::string contradictionOfForm(const FindOptions& options) {
    const HitFormat format = formatOf(options);
    const Rule rules[] = {
        {options.zeroEnded && format != HitFormat::paths, "-0 goes with --format paths"},
        {options.separator && format != HitFormat::csv, "--separator goes with --format csv"},
        {options.raw && format != HitFormat::csv, "--raw goes with --format csv"},
        {counts(options) && format == HitFormat::paths,
         "--count, --count-by and --sum have no paths to print"},
        {options.count && options.countBy, "--count-by counts already; leave --count out"},
        {int{counts(options)} + int{executes(options)} + int{options.quiet} > 1,
         "of --quiet, of --count, --count-by and --sum, and of --exec there can be one"},
        {options.countBy && platform::equalsIgnoringCase(*options.countBy, "path"),
         "each path is there once; --count-by folder counts what lies in each folder"},
        {counts(options) && !options.search.sort.empty(),
         "what is counted is sorted by its number; leave --sort out"}};
    return firstBroken(rules);
}

std::string contradictionOfWork(const FindOptions& options) {
    const bool printsOnly = !counts(options) && !executes(options) && !options.quiet;
    const Rule rules[] = {
        {executes(options) && (options.format || options.zeroEnded),
         "--exec prints nothing, so it takes no --format"},
        {!options.commands.empty() && !options.batchCommands.empty(),
         "--exec and --exec-batch do not go together"},
        {std::ranges::any_of(
             options.commands,
             [](const CommandTemplate& one) { return one.words().front().empty(); }),
         "the command of --exec is an empty text; say the name of a program"},
        {options.batchCommands.size() > 1, "--exec-batch can be given once"},
        {std::ranges::any_of(options.batchCommands,
                             [](const CommandTemplate& one) { return !one.namesProgram(); }),
         "the command of --exec-batch begins with the name of a program"},
        {options.watch && !options.search.sort.empty(),
         "--watch prints as dictations arrive, so it takes no --sort"},
        {options.watch && !printsOnly && !executes(options),
         "--watch goes on for ever: it takes no --count, --count-by, --sum or --quiet"},
        {options.watch && options.criteriaFiles.size() > 1, "--watch takes one criteria file"},
        {options.explains && (!printsOnly || options.format || options.zeroEnded || options.watch),
         "--explain tells of a search in place of its hits; leave out --format, --count, --exec, "
         "--quiet or --watch"},
        {options.catalogue && (options.watch || options.explains),
         "a catalogue knows only what was there at its last update: --catalogue takes no --watch "
         "and no --explain"}};
    return firstBroken(rules);
}

} // namespace

HitFormat formatOf(const FindOptions& options) {
    return options.format.value_or(options.zeroEnded ? HitFormat::paths : HitFormat::table);
}

std::string contradiction(const FindOptions& options) {
    const std::string found = contradictionOfForm(options);
    return found.empty() ? contradictionOfWork(options) : found;
}

Consumer consumerFor(const FindOptions& options, std::vector<SearchRequest>& requests,
                     Output& output, TerminalInterface& terminal) {
    const SearchRequest& request = requests.front();
    const HitLimit limit = limitOf(options, request.limit);
    Consumer consumer = lastConsumer(options, requests, output, terminal);
    if (consumer == nullptr)
        return nullptr;
    if (!request.sort.empty())
        consumer = std::make_unique<SortedHits>(
            request.sort, HitLimit{limit.count, limit.isNamed && !request.telling.strict},
            std::move(consumer));
    else if (choosesLater(options))
        consumer = std::make_unique<LimitedHits>(limit.count,
                                                 options.watch ? LimitedHits::Ends::withTheLast
                                                               : LimitedHits::Ends::withOneMore,
                                                 std::move(consumer));
    if (request.newerThan && !options.watch)
        consumer = std::make_unique<NewerHits>(*request.newerThan, std::move(consumer));
    for (SearchRequest& each : requests)
        each.search.limit = choosesLater(options) ? noLimit : limit.count;
    return consumer;
}

} // namespace ov::cli
