// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/Connector.h"
#include "plugin/modOVPlugIn.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

// A host for tests. It writes down every call as a line of text and answers from a table:
//
//   PI_GetDirectory(204)            a plain number
//   PI_ProgressText(&"\home\x\")    a reference to the caller's text, PI_ProgressValue(&3) to a
//                                   number
//   trace(Get wiMain:weResize.)     AddPlugInControl(...), RemovePlugInControl(), subscribe() ...

namespace ov::tests {

inline std::string argumentText(const HostArgument& argument) {
    if (const auto* number = std::get_if<std::int32_t>(&argument))
        return std::to_string(*number);
    if (const auto* reference = std::get_if<std::int32_t*>(&argument))
        return "&" + std::to_string(**reference);
    return "&\"" + *std::get<std::string*>(argument) + "\"";
}

// What was asked and what is to be answered; shared by the objects of one host.
struct HostRecord {
    std::vector<std::string> calls;
    // By call, "PI_GetDirectory(204)", or else by function, "PI_GetDirectory".
    std::map<std::string, std::string, std::less<>> answers;
    // Calls or functions that throw HostError(number 5, "refused").
    std::set<std::string, std::less<>> refused;
    const IPlugin* caller = nullptr; // of the last call that has one
    // Hears of every call before it is answered.
    std::function<void(const std::string&)> onCall;

    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    std::string add(const std::string& function, const std::string& arguments = {}) {
        const std::string call = function + "(" + arguments + ")";
        calls.push_back(call);
        if (onCall)
            onCall(call);
        if (refused.contains(call) || refused.contains(function))
            throw HostError(5, "refused");
        const auto byCall = answers.find(call);
        const auto found = byCall != answers.end() ? byCall : answers.find(function);
        return found != answers.end() ? found->second : std::string();
    }
};

class FakeEventSource final : public EventSource {
public:
    explicit FakeEventSource(HostRecord& record) : record_(record) {}

    void subscribe(IEventSink& sink) override {
        record_.add("subscribe");
        if (!isSubscribed(&sink))
            sinks_.push_back(&sink);
    }
    void unsubscribe(IEventSink& sink) noexcept override {
        record_.calls.emplace_back("unsubscribe()");
        std::erase(sinks_, &sink);
    }

    void action(std::int32_t code, std::string_view parameter) {
        forEachSink([&](IEventSink& sink) { sink.EventSource_ActionEvent(code, 0, parameter); });
    }
    void window(std::int32_t event, std::int32_t windowId, IHostWindow& window) {
        forEachSink(
            [&](IEventSink& sink) { sink.EventSource_WindowEvent(event, windowId, 0, 0, window); });
    }
    std::size_t sinkCount() const { return sinks_.size(); }

private:
    bool isSubscribed(IEventSink* sink) const {
        return std::find(sinks_.begin(), sinks_.end(), sink) != sinks_.end();
    }
    template <typename Event>
    void forEachSink(Event event) {
        for (IEventSink* sink : std::vector<IEventSink*>(sinks_))
            if (isSubscribed(sink))
                event(*sink);
    }

    HostRecord& record_;
    std::vector<IEventSink*> sinks_;
};

// Make it with std::make_shared. It is the application, its services, its window and its form.
class FakeHost final : public HostRecord,
                       public IHostApplication,
                       public IHostServices,
                       public IHostWindow,
                       public IHostForm,
                       public std::enable_shared_from_this<FakeHost> {
public:
    FakeEventSource events{*this};
    bool hasServices = true;                 // false: HostServices() gives nothing
    bool hasEvents = true;                   // false: EventSource() gives nothing
    std::shared_ptr<IFormExtension> control; // what AddPlugInControl gives

    // Belongs to this host, and keeps it alive.
    std::shared_ptr<ov::EventSource> EventSource() override {
        if (!hasEvents)
            return nullptr;
        return {shared_from_this(), &events};
    }
    std::shared_ptr<IHostServices> HostServices() override {
        return hasServices ? shared_from_this() : nullptr;
    }
    void ReportPlugInFailure(std::string_view plugInName) override {
        add("ReportPlugInFailure", std::string(plugInName));
    }

    void CallPlugInFunction(IPlugin& calling, std::string_view function,
                            std::span<HostArgument> arguments, std::string& result) override {
        std::string list;
        for (const HostArgument& argument : arguments)
            list.append(list.empty() ? "" : ", ").append(argumentText(argument));
        result = addFor(calling, function, list);
    }
    void WriteTrace(std::string_view text, IPlugin& calling) override {
        addFor(calling, "trace", text);
    }
    std::shared_ptr<IFormExtension> AddPlugInControl(std::string_view progId,
                                                     IPlugin& calling) override {
        addFor(calling, "AddPlugInControl", progId);
        return control;
    }
    void RemovePlugInControl(IPlugin& calling) override { addFor(calling, "RemovePlugInControl"); }
    void ResizePlugInControl(IPlugin& calling) override { addFor(calling, "ResizePlugInControl"); }
    void ReportControlReady(IPlugin& calling) override { addFor(calling, "ReportControlReady"); }

private:
    std::string addFor(IPlugin& calling, std::string_view function, std::string_view list = {}) {
        caller = &calling;
        return add(std::string(function), std::string(list));
    }
};

// A started plug-in in whose name this thread calls its host while it lives.
struct StartedPlugIn {
    std::shared_ptr<FakeHost> host = std::make_shared<FakeHost>();
    Connector connector;

    StartedPlugIn() {
        connector.ApplicationStart(host);
        host->calls.clear();
    }

    IPlugin* caller = &connector; // nullptr: nobody calls any more
    modOVPlugIn::CallingPlugIn calling{caller};
};

} // namespace ov::tests
