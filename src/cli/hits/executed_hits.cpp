// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/executed_hits.h"

#include "cli/messages.h"
#include "platform/terminal/child_process.h"

#include <algorithm>
#include <utility>

namespace ov::cli {

void CommandRuns::run(const std::vector<std::string>& arguments) {
    if (haveEnded())
        return;
    terminal_.makeRoomForOutput();
    int exitCode = 0;
    const platform::Status started = platform::runProgram(arguments, exitCode);
    if (!started.ok())
        complain("cannot run " + started.description());
    ended_ = !started.ok();
    failed_ = failed_ || ended_ || exitCode != 0;
}

ExecutedHits::ExecutedHits(std::vector<CommandTemplate> commands, TerminalInterface& terminal)
    : commands_(std::move(commands)), runs_(terminal) {}

void ExecutedHits::take(const modDictation::Dictation& hit) {
    const std::string path = nativePathOf(hit);
    for (const CommandTemplate& command : commands_)
        runs_.run(command.with(path));
}

ExecutedBatches::ExecutedBatches(CommandTemplate command, TerminalInterface& terminal)
    : command_(std::move(command)), runs_(terminal), room_(platform::roomForArguments()) {
    for (const std::string& word : command_.words())
        room_ -= std::min(room_, platform::roomOfArgument(word));
}

void ExecutedBatches::take(const modDictation::Dictation& hit) {
    std::string path = nativePathOf(hit);
    const std::size_t needed = command_.roomOf(path);
    if (used_ + needed > room_)
        runBatch();
    used_ += needed;
    paths_.push_back(std::move(path));
}

void ExecutedBatches::runBatch() {
    if (!paths_.empty())
        runs_.run(command_.withAll(paths_));
    paths_.clear();
    used_ = 0;
}

} // namespace ov::cli
