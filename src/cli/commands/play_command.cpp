// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/play_command.h"

#include "cli/messages.h"
#include "cli/terminal_interface.h"
#include "platform/files.h"
#include "platform/terminal.h"
#include "playback/clsMixer.h"
#include "playback/modMultimedia.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace ov::cli {

namespace {

using namespace modMultimedia;
using platform::TerminalKeys;

constexpr const char* alias = "Player";
constexpr std::int32_t anyOutput = -1;
constexpr std::chrono::milliseconds refreshInterval(50);

// "0:01:23"; the device counts in milliseconds.
std::string timeText(std::int32_t milliseconds) {
    const int seconds = std::max(milliseconds, 0) / 1000;
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%d:%02d:%02d", seconds / 3600,
                                     seconds / 60 % 60, seconds % 60);
    return {text.data(), static_cast<std::size_t>(length)};
}

// Speech spans some 50 dB, so the bar grows with the logarithm.
std::string levelBar(std::int32_t level) {
    constexpr int width = 20;
    constexpr double range = 50; // dB
    const double loudness = 20 * std::log10(std::max(std::abs(level), 1) / 32768.0);
    const int full = std::clamp(static_cast<int>((1 + loudness / range) * width), 0, width);
    return "[" + std::string(static_cast<std::size_t>(full), '#') +
           std::string(static_cast<std::size_t>(width - full), ' ') + "]";
}

class LevelMeter {
public:
    LevelMeter() : ready_(mixer_.Init_MixerControl() && mixer_.Init_VUMeterControl()) {}
    std::int32_t level() { return ready_ ? mixer_.GetVUMeterValue() : 0; }

private:
    clsMixer mixer_;
    bool ready_;
};

void pauseOrResume() {
    if (MciGetMode(alias) == "paused")
        MciResume(alias);
    else
        MciPause(alias);
}

// False when the output vanished or the file could not be read on.
bool playToEnd(TerminalInterface& terminal) {
    TerminalKeys keys;
    LevelMeter meter;
    const std::string length = timeText(MciGetLength(alias));
    for (;;) {
        const std::string mode = MciGetMode(alias);
        if (mode != "playing" && mode != "paused")
            return mode == "stopped";
        terminal.showProgress(timeText(MciGetPosition(alias)) + " / " + length + "  " +
                              levelBar(meter.level()) + (mode == "paused" ? "  paused" : ""));
        const auto key = keys.wait(refreshInterval);
        if (TerminalInterface::interrupted() || key == 'q' || key == TerminalKeys::controlC)
            return true;
        if (key == ' ')
            pauseOrResume();
    }
}

ExitCode refuse(const std::string& file, const std::string& error) {
    complain(file + ": " + error);
    return ExitCode::unreadable;
}

} // namespace

ExitCode runPlay(const std::string& file, TerminalInterface& terminal) {
    if (platform::directoryExists(platform::fromNativePath(file)))
        return refuse(file, "is a folder; play takes one sound file");
    std::string error = MciOpen(alias, platform::fromNativePath(file), "waveaudio");
    if (error.empty())
        error = MciPlay(alias, anyOutput, 0, -1);
    if (error.empty() && !playToEnd(terminal))
        error = MciPause(alias); // repeats why it ended
    terminal.clearProgress();
    MciClose(alias);
    if (!error.empty())
        return refuse(file, error);
    return TerminalInterface::interrupted() ? ExitCode::interrupted : ExitCode::found;
}

} // namespace ov::cli
