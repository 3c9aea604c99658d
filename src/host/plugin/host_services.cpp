// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/plugin/host_services.h"

#include "host/paths.h"
#include "host/settings.h"
#include "host/window/progress_notes.h"

#include <array>
#include <cstddef>

namespace ov::host {

namespace {

constexpr std::int32_t dictationTree = 204;
constexpr std::int32_t plugInData = 32;

// The argument at `index`, by value or by reference; 0 or nothing when it is missing or another.
std::int32_t numberAt(std::span<const HostArgument> arguments, std::size_t index) {
    if (index >= arguments.size())
        return 0;
    if (const auto* number = std::get_if<std::int32_t>(&arguments[index]))
        return *number;
    auto* const* reference = std::get_if<std::int32_t*>(&arguments[index]);
    return reference != nullptr && *reference != nullptr ? **reference : 0;
}

std::string_view textAt(std::span<const HostArgument> arguments, std::size_t index) {
    if (index >= arguments.size())
        return {};
    auto* const* reference = std::get_if<std::string*>(&arguments[index]);
    return reference != nullptr && *reference != nullptr ? std::string_view(**reference)
                                                         : std::string_view();
}

} // namespace

struct HostServices::Named {
    std::string_view name;
    Function function;
};

HostServices::HostServices(const HostSettings& settings, ProgressNotes& progress)
    : settings_(settings), progress_(progress) {}

void HostServices::CallPlugInFunction(IPlugin& /*caller*/, std::string_view function,
                                      std::span<HostArgument> arguments, std::string& result) {
    // Those that come by the hundred thousand stand first.
    static constexpr std::array<Named, 9> functions{{
        {"PI_ProgressText", &HostServices::progressText},
        {"PI_ProgressValue", &HostServices::progressValue},
        {"PI_ProgressInit", &HostServices::progressInit},
        {"PI_ProgressClear", &HostServices::progressClear},
        {"PI_GetLanguage", &HostServices::getLanguage},
        {"PI_GetSubLanguage", &HostServices::getSubLanguage},
        {"PI_GetLocalINIFile", &HostServices::getLocalIniFile},
        {"PI_GetDirectory", &HostServices::getDirectory},
        {"PI_LogView", &HostServices::logView},
    }};
    for (const Named& known : functions)
        if (known.name == function)
            return (this->*known.function)(arguments, result);
}

void HostServices::WriteTrace(std::string_view text, IPlugin& /*caller*/) {
    emit traced(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

void HostServices::getLanguage(Arguments /*arguments*/, std::string& result) {
    result = std::to_string(static_cast<std::int32_t>(settings_.language()));
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): one of a table of members
void HostServices::getSubLanguage(Arguments /*arguments*/, std::string& result) {
    result = std::to_string(0);
}

void HostServices::getLocalIniFile(Arguments /*arguments*/, std::string& result) {
    result = settings_.localIniFile();
}

void HostServices::getDirectory(Arguments arguments, std::string& result) {
    switch (numberAt(arguments, 0)) {
    case dictationTree:
        result = boundaryDirectory(settings_.dictationFolder());
        break;
    case plugInData:
        result = settings_.dataFolder();
        break;
    default:
        break;
    }
}

void HostServices::progressInit(Arguments arguments, std::string& /*result*/) {
    progress_.init(numberAt(arguments, 1), textAt(arguments, 3));
}

void HostServices::progressText(Arguments arguments, std::string& /*result*/) {
    progress_.directory(textAt(arguments, 0));
}

void HostServices::progressValue(Arguments arguments, std::string& /*result*/) {
    progress_.value(numberAt(arguments, 0));
}

void HostServices::progressClear(Arguments /*arguments*/, std::string& /*result*/) {
    progress_.clear();
}

void HostServices::logView(Arguments arguments, std::string& /*result*/) {
    const std::string_view path = textAt(arguments, 0);
    emit logViewRequested(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}

} // namespace ov::host
