// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/plugin/host_events.h"

#include <algorithm>
#include <exception>

namespace ov::host {

void HostEvents::subscribe(IEventSink& sink) {
    if (!isSubscribed(&sink))
        sinks_.push_back(&sink);
}

void HostEvents::unsubscribe(IEventSink& sink) noexcept {
    std::erase(sinks_, &sink);
}

void HostEvents::action(std::int32_t action, std::string_view parameter) {
    send([&](IEventSink& sink) { sink.EventSource_ActionEvent(action, 0, parameter); });
}

void HostEvents::window(std::int32_t event, std::int32_t windowId, IHostWindow& window) {
    send([&](IEventSink& sink) { sink.EventSource_WindowEvent(event, windowId, 0, 0, window); });
}

// Works on a copy: sinks come and go while they are called, in events inside events too.
template <typename Event>
void HostEvents::send(const Event& event) {
    std::exception_ptr firstFailure;
    for (IEventSink* sink : std::vector<IEventSink*>(sinks_)) {
        if (!isSubscribed(sink))
            continue;
        try {
            event(*sink);
        } catch (...) {
            if (!firstFailure)
                firstFailure = std::current_exception();
        }
    }
    if (firstFailure)
        std::rethrow_exception(firstFailure);
}

bool HostEvents::isSubscribed(const IEventSink* sink) const {
    return std::find(sinks_.begin(), sinks_.end(), sink) != sinks_.end();
}

} // namespace ov::host
