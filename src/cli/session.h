// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/Connector.h"
#include "plugin/host_interfaces.h"
#include "plugin/modOVPlugIn.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ov::cli {

// What a command wants of its surroundings.
struct SessionOptions {
    std::optional<std::string> settingsDirectory; // native; in place of the per-user folder
    std::optional<std::string> language;          // "de" or "en"; else that of the environment
};

// The host that the engine finds itself in when a terminal runs it: it answers the host functions
// from the program's own settings and shows progress on standard error.
class TerminalHost final : public IHostApplication,
                           public IHostServices,
                           public ov::EventSource,
                           public std::enable_shared_from_this<TerminalHost> {
public:
    explicit TerminalHost(std::int32_t language) : language_(language) {}

    std::shared_ptr<ov::EventSource> EventSource() override { return shared_from_this(); }
    std::shared_ptr<IHostServices> HostServices() override { return shared_from_this(); }
    void ReportPlugInFailure(std::string_view plugInName) override;

    void CallPlugInFunction(IPlugin& caller, std::string_view function,
                            std::span<HostArgument> arguments, std::string& result) override;
    void WriteTrace(std::string_view text, IPlugin& caller) override;

    // No events come from a terminal.
    void subscribe(IEventSink&) override {}
    void unsubscribe(IEventSink&) noexcept override {}

    // The folder that the search is in.
    const std::string& currentFolder() const noexcept { return currentFolder_; }

private:
    std::int32_t language_;
    std::string currentFolder_;
};

// Everything that has to stand before a command can use the engine: the host, the plug-in that
// calls it, the language, the field table with the user's columns. One at a time.
class Session {
public:
    explicit Session(const SessionOptions& options);
    ~Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const TerminalHost& host() const noexcept { return *host_; }

private:
    std::shared_ptr<TerminalHost> host_;
    Connector connector_;
    IPlugin* plugIn_ = &connector_;
    modOVPlugIn::CallingPlugIn calling_{plugIn_};
};

} // namespace ov::cli
