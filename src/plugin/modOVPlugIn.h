// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/host_error.h"
#include "plugin/host_interfaces.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The host functions that the plug-in calls by name. Each is asked of the host services of the
// calling plug-in's application; what the host throws (HostError) passes through. Without a
// calling plug-in there is no host to ask: nothing is called and every answer is empty.

namespace ov::modOVPlugIn {

// While it lives, this thread calls in the name of that plug-in; then again as before. Each of two
// controls makes its own for as long as its code is on the stack, so that neither calls through
// the other's host.
class CallingPlugIn {
public:
    // `plugIn` is the maker's own variable and outlives this object. Once it is nullptr nothing is
    // called any more: the host has let go.
    explicit CallingPlugIn(IPlugin* const& plugIn);
    ~CallingPlugIn();
    CallingPlugIn(const CallingPlugIn&) = delete;
    CallingPlugIn& operator=(const CallingPlugIn&) = delete;

private:
    IPlugin* const* before_;
};

// The plug-in in whose name this thread calls; not owned, nullptr for none.
IPlugin* callingPlugIn();

// One call: `result` is the host's answer, empty when it knows no such function.
std::string callHost(IPlugin& caller, std::string_view function,
                     std::span<HostArgument> arguments = {});
std::string callHost(std::string_view function, std::span<HostArgument> arguments = {});

// The host's numbers are texts: what stands before the first other character, 0 without one.
std::int32_t GetLanguage(IPlugin& caller);
std::int32_t GetSubLanguage(IPlugin& caller);

// The path of the INI file that keeps the control's settings.
std::string GetLocalINIFile();

// A host directory by number, as the host writes it.
namespace host_directory {
constexpr std::int32_t settings = 32;
constexpr std::int32_t dictationTree = 204;
} // namespace host_directory
std::string GetHostDirectory(std::int32_t id);

// The host's progress display: `second` is the number of steps, `first` and `third` are 0.
void ProgressInit(std::int32_t first, std::int32_t second, std::int32_t third, std::string text);
void ProgressText(std::string text);
void ProgressValue(std::int32_t value); // counted from 1
void ProgressClear();

// Shows what the host knows of the dictation in that file.
void LogView(std::string path);

} // namespace ov::modOVPlugIn
