// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/ending_signals.h"

#include <QWidget>
#include <chrono>
#include <csignal>

namespace ov::host {

namespace {

constexpr std::chrono::milliseconds interval{250};

// NOLINTNEXTLINE(*-avoid-non-const-global-variables): a signal handler may touch nothing else
volatile std::sig_atomic_t received = 0;

extern "C" void onSignal(int signal) {
    received = signal;
    std::signal(signal, SIG_DFL);
}

// One that the program was started to ignore stays ignored.
void handle(int signal) {
    if (std::signal(signal, onSignal) == SIG_IGN)
        std::signal(signal, SIG_IGN);
}

} // namespace

EndingSignals::EndingSignals(QWidget& window) {
    for (const int signal : {SIGINT, SIGTERM})
        handle(signal);
#ifdef SIGHUP
    handle(SIGHUP);
#endif
    QObject::connect(&look_, &QTimer::timeout, &window, [this, &window] {
        if (received == 0)
            return;
        look_.stop();
        window.close();
    });
    look_.start(interval);
}

void EndingSignals::passOn() {
    if (received != 0)
        static_cast<void>(std::raise(received));
}

} // namespace ov::host
