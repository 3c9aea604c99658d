// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/host_interfaces.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace ov::tests {

// A host that does the least: it has a dictation tree and a language, keeps no settings, and
// takes note of progress as cheaply as a host should. For measurements and pictures.
class QuietHost final : public IHostApplication,
                        public IHostServices,
                        public IHostForm,
                        public EventSource,
                        public std::enable_shared_from_this<QuietHost> {
public:
    // `store` is a directory text, `language` a number as text.
    QuietHost(std::string store, std::string language)
        : store_(std::move(store)), language_(std::move(language)) {}

    std::shared_ptr<ov::EventSource> EventSource() override { return shared_from_this(); }
    std::shared_ptr<IHostServices> HostServices() override { return shared_from_this(); }
    void ReportPlugInFailure(std::string_view) override {}
    void CallPlugInFunction(IPlugin&, std::string_view function, std::span<HostArgument> arguments,
                            std::string& result) override {
        if (function == "PI_GetLanguage")
            result = language_;
        else if (function == "PI_GetDirectory" && std::get<std::int32_t>(arguments[0]) == 204)
            result = store_;
        else if (function == "PI_ProgressValue")
            lastValue = *std::get<std::int32_t*>(arguments[0]);
    }
    void WriteTrace(std::string_view, IPlugin&) override {}
    void ReportControlReady(IPlugin&) override {}
    void subscribe(IEventSink&) override {}
    void unsubscribe(IEventSink&) noexcept override {}

    std::int32_t lastValue = 0; // of the progress

private:
    std::string store_;
    std::string language_;
};

} // namespace ov::tests
