// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/host_interfaces.h"

#include <vector>

namespace ov::host {

// The host's events. One sink that fails does not keep an event from the others.
class HostEvents final : public EventSource {
public:
    void subscribe(IEventSink& sink) override;
    void unsubscribe(IEventSink& sink) noexcept override;

    // Hands the event to every sink, then throws the first HostError that one of them threw.
    void action(std::int32_t action, std::string_view parameter);
    void window(std::int32_t event, std::int32_t windowId, IHostWindow& window);

private:
    template <typename Event>
    void send(const Event& event);
    bool isSubscribed(const IEventSink* sink) const;

    std::vector<IEventSink*> sinks_;
};

} // namespace ov::host
