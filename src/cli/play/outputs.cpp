// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/play/outputs.h"

#include "cli/messages.h"
#include "cli/terminal_interface.h"
#include "platform/text.h"
#include "sound/output/output_names.h"

#include <algorithm>
#include <chrono>

namespace ov::cli {

ExitCode readOutputs(std::vector<std::string>& names) {
    constexpr std::chrono::milliseconds interval(50); // Ctrl-C is looked for
    platform::Status loaded;
    if (sound::soundLibraries(loaded) == nullptr) {
        complain(loaded.description());
        return ExitCode::unreadable;
    }
    auto errand = sound::askForOutputNames();
    while (!errand.wait(interval))
        if (TerminalInterface::interrupted())
            return ExitCode::interrupted;
    names = errand.take();
    return ExitCode::found;
}

std::optional<std::string> meantOutput(std::span<const std::string> names, std::string_view typed) {
    const auto only = [&](const auto& isMeant) -> std::optional<std::string> {
        if (std::ranges::count_if(names, isMeant) != 1)
            return std::nullopt;
        return *std::ranges::find_if(names, isMeant);
    };
    if (std::ranges::find(names, typed) != names.end())
        return std::string(typed);
    for (std::size_t i = 0; i < names.size(); ++i)
        if (std::to_string(i + 1) == typed)
            return names[i];
    if (const auto same = only(
            [&](const std::string& name) { return platform::equalsIgnoringCase(name, typed); }))
        return same;
    return only([part = platform::upperCase(typed)](const std::string& name) {
        return platform::upperCase(name).find(part) != std::string::npos;
    });
}

} // namespace ov::cli
