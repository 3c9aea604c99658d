// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hits/command_template.h"
#include "cli/hits/hit_consumer.h"
#include "cli/terminal_interface.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ov::cli {

// Runs commands, one after the other, and remembers whether each went well. Ctrl-C and a command
// that cannot be started end it.
class CommandRuns {
public:
    explicit CommandRuns(TerminalInterface& terminal) : terminal_(terminal) {}

    void run(const std::vector<std::string>& arguments);
    bool haveEnded() const noexcept { return ended_ || TerminalInterface::interrupted(); }
    ExitCode result(ExitCode ofSearches) const noexcept {
        return failed_ ? ExitCode::commandFailed : ofSearches;
    }

private:
    TerminalInterface& terminal_;
    bool ended_ = false;
    bool failed_ = false;
};

// Runs the commands for each hit, as it is found.
class ExecutedHits final : public HitConsumer {
public:
    ExecutedHits(std::vector<CommandTemplate> commands, TerminalInterface& terminal);

    void take(const modDictation::Dictation& hit) override;
    bool isFull() const override { return runs_.haveEnded(); }
    ExitCode result(ExitCode ofSearches) const override { return runs_.result(ofSearches); }

private:
    std::vector<CommandTemplate> commands_;
    CommandRuns runs_;
};

// Runs the command for as many hits at a time as the system lets arguments be.
class ExecutedBatches final : public HitConsumer {
public:
    ExecutedBatches(CommandTemplate command, TerminalInterface& terminal);

    void take(const modDictation::Dictation& hit) override;
    void catchUp() override { runBatch(); }
    void end() override { runBatch(); }
    bool isFull() const override { return runs_.haveEnded(); }
    ExitCode result(ExitCode ofSearches) const override { return runs_.result(ofSearches); }

private:
    void runBatch();

    CommandTemplate command_;
    CommandRuns runs_;
    std::vector<std::string> paths_;
    std::size_t room_; // for a batch
    std::size_t used_ = 0;
};

} // namespace ov::cli
