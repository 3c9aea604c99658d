// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/program_end.h"

#include "platform/posix/unfinished_file.h"

#include <csignal>

namespace ov::platform {

namespace {

extern "C" void onEndingSignal(int signal) {
    endBySignal(signal);
}

} // namespace

void endWithoutLeftovers() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
        if (std::signal(signal, onEndingSignal) == SIG_IGN)
            std::signal(signal, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void endBySignal(int signal) noexcept {
    removeUnfinishedFiles();
    std::signal(signal, SIG_DFL);
    static_cast<void>(std::raise(signal));
}

} // namespace ov::platform
