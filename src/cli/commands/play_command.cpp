// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/play_command.h"

#include "cli/messages.h"
#include "cli/options/did_you_mean.h"
#include "cli/options/typed_words.h"
#include "cli/play/outputs.h"
#include "cli/terminal_interface.h"
#include "dictation/search/dictation_list.h"
#include "dictation/search/result_order.h"
#include "sound/output/output_choice.h"

#include <algorithm>
#include <utility>

namespace ov::cli {

namespace {

bool searches(const SearchOptions& search) {
    return !search.words.empty() || search.root || search.criteriaFile;
}

// `found` when there is something to play; else it has been told why not.
ExitCode addFound(const SearchOptions& options, const Session& session, TerminalInterface& terminal,
                  std::vector<std::string>& files) {
    SearchRequest request;
    if (const ExitCode read = readSearch(options, {}, request); read != ExitCode::found)
        return read;
    modDictation::DictationList hits;
    const auto report = search(request.search, session, terminal, hits, [] { return true; });
    if (TerminalInterface::interrupted())
        return ExitCode::interrupted;
    const std::int32_t wanted = std::min(hits.size(), request.limit.count);
    tellReport(report, wanted, options.telling);
    std::vector<std::int32_t> order = modDictation::sortedOrder(hits, request.sort);
    order.resize(static_cast<std::size_t>(wanted));
    for (const std::int32_t index : order)
        files.push_back(nativePathOf(hits[index]));
    const ExitCode result = searchResult(report, wanted, options.telling);
    return result == ExitCode::nothingFound && !files.empty() ? ExitCode::found : result;
}

ExitCode chooseOutput(const std::string& typed) {
    std::vector<std::string> names;
    if (const ExitCode read = readOutputs(names); read != ExitCode::found)
        return read;
    const auto name = meantOutput(names, typed);
    if (name)
        sound::OutputChoice::instance().choose(*name);
    else
        complain("there is no output \"" + typed + '"' +
                 didYouMean(typed, names, "; \"ovsearch devices\" lists them"));
    return name ? ExitCode::found : ExitCode::unreadable;
}

} // namespace

ExitCode runPlay(const PlayOptions& options, const Session& session, TerminalInterface& terminal) {
    std::vector<std::string> files = options.files;
    ExitCode ready = ExitCode::found;
    if (searches(options.search))
        ready = addFound(options.search, session, terminal, files);
    else if (files.empty()) {
        complain(
            "play: FILE or a criterion is missing; \"ovsearch help play\" tells what there is");
        ready = ExitCode::usage;
    }
    if (ready == ExitCode::found && options.device)
        ready = chooseOutput(*options.device);
    if (ready != ExitCode::found)
        return ready;
    return ListPlayer(std::move(files), options.list, terminal).play();
}

} // namespace ov::cli
