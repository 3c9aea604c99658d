// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "plugin/modOVPlugIn.h"

#include "support/numbers.h"

#include <array>
#include <utility>

namespace ov::modOVPlugIn {

namespace {

struct State {
    IPlugin* const* caller = nullptr;
};

State& state() {
    thread_local State threadState;
    return threadState;
}

} // namespace

CallingPlugIn::CallingPlugIn(IPlugin* const& plugIn)
    : before_(std::exchange(state().caller, &plugIn)) {}

CallingPlugIn::~CallingPlugIn() {
    state().caller = before_;
}

IPlugin* callingPlugIn() {
    return state().caller != nullptr ? *state().caller : nullptr;
}

std::string callHost(IPlugin& caller, std::string_view function,
                     std::span<HostArgument> arguments) {
    std::string result;
    const auto application = caller.Application();
    if (!application)
        return result; // not started yet
    if (const auto services = application->HostServices())
        services->CallPlugInFunction(caller, function, arguments, result);
    return result;
}

std::string callHost(std::string_view function, std::span<HostArgument> arguments) {
    IPlugin* caller = callingPlugIn();
    return caller != nullptr ? callHost(*caller, function, arguments) : std::string();
}

std::int32_t GetLanguage(IPlugin& caller) {
    return leadingInt32(callHost(caller, "PI_GetLanguage"));
}

std::int32_t GetSubLanguage(IPlugin& caller) {
    return leadingInt32(callHost(caller, "PI_GetSubLanguage"));
}

std::string GetLocalINIFile() {
    return callHost("PI_GetLocalINIFile");
}

std::string GetHostDirectory(std::int32_t id) {
    std::array<HostArgument, 1> arguments{id};
    return callHost("PI_GetDirectory", arguments);
}

void ProgressInit(std::int32_t first, std::int32_t second, std::int32_t third, std::string text) {
    std::array<HostArgument, 4> arguments{&first, &second, &third, &text};
    callHost("PI_ProgressInit", arguments);
}

void ProgressText(std::string text) {
    std::array<HostArgument, 1> arguments{&text};
    callHost("PI_ProgressText", arguments);
}

void ProgressValue(std::int32_t value) {
    std::array<HostArgument, 1> arguments{&value};
    callHost("PI_ProgressValue", arguments);
}

void ProgressClear() {
    callHost("PI_ProgressClear");
}

void LogView(std::string path) {
    std::string empty;
    std::array<HostArgument, 2> arguments{&path, &empty};
    callHost("PI_LogView", arguments);
}

} // namespace ov::modOVPlugIn
