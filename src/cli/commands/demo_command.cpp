// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/demo_command.h"

#include "cli/messages.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "cli/terminal_interface.h"
#include "demo/demo_store.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "support/modFilePath.h"

#include <cstdio>

namespace ov::cli {

ExitCode runDemo(const std::string& directory, int count, std::uint32_t seed,
                 TerminalInterface& terminal) {
    demo::DemoOptions options;
    options.directory = modFilePath::AddBackslash(platform::fromNativePath(directory));
    options.count = count;
    options.seed = seed;
    options.today = platform::now();
    const demo::DemoResult result = demo::writeDemoStore(options, [&terminal](int done, int total) {
        terminal.showProgress(std::to_string(done) + " of " + std::to_string(total) +
                              " dictations");
        return !TerminalInterface::interrupted();
    });
    terminal.clearProgress();
    if (!result.status.ok()) {
        complain(result.status.description());
        return ExitCode::unreadable;
    }
    if (TerminalInterface::interrupted())
        complain("stopped");
    Output output(stdout);
    output.write(std::to_string(result.written) + " dictations in " +
                 shownText(platform::toNativePath(options.directory)) + "\n");
    return output.finish(TerminalInterface::interrupted() ? ExitCode::interrupted
                                                          : ExitCode::found);
}

} // namespace ov::cli
