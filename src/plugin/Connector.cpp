// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "plugin/Connector.h"

#include "platform/text.h"
#include "plugin/modOVPlugIn.h"
#include "support/language/modLanguage.h"
#include "support/version.h"

#include <array>
#include <cstdio>

namespace ov {

Connector::~Connector() {
    if (eventSource_)
        eventSource_->unsubscribe(*this);
}

void Connector::ApplicationStart(std::shared_ptr<IHostApplication> application) {
    if (eventSource_)
        eventSource_->unsubscribe(*this);
    application_ = std::move(application);
    eventSource_ = application_ ? application_->EventSource() : nullptr;
    if (eventSource_)
        eventSource_->subscribe(*this);
}

std::string Connector::PlugInVersion() const {
    return plugInVersionText(version::major, version::minor, version::revision);
}

void Connector::EventSource_ActionEvent(std::int32_t action, std::int32_t /*second*/,
                                        std::string_view parameter) {
    switch (action) {
    case action_event::update:
        // The control hears "UPDATE" itself; nothing is to be done here.
        break;
    case action_event::changed:
        if (platform::upperCase(parameter) == "LANGUAGE")
            updateLanguage();
        break;
    default:
        break;
    }
}

void Connector::updateLanguage() {
    const std::int32_t language = modOVPlugIn::GetLanguage(*this);
    const std::int32_t subLanguage = modOVPlugIn::GetSubLanguage(*this);
    modLanguage::SetLanguage(language, subLanguage);
}

void Connector::EventSource_WindowEvent(std::int32_t event, std::int32_t windowId,
                                        std::int32_t /*third*/, std::int32_t /*fourth*/,
                                        IHostWindow& window) {
    if (windowId != mainWindowId || !application_)
        return;
    switch (event) {
    case window_event::load:
        trace("Get wiMain:weLoad. Add Control to Window.");
        addControl(window);
        break;
    case window_event::queryUnload:
    case window_event::queryUnloadByHost:
        trace("Get wiMain:weQueryUnload.");
        window.RemovePlugInControl(*this);
        break;
    case window_event::resize:
        trace("Get wiMain:weResize. Resize Control.");
        window.ResizePlugInControl(*this);
        break;
    default:
        break;
    }
}

void Connector::trace(std::string_view text) {
    if (const auto services = application_->HostServices())
        services->WriteTrace(text, *this);
}

void Connector::addControl(IHostWindow& window) {
    if (!window.AddPlugInControl("OVSearch.ctrlOVSearch", *this))
        application_->ReportPlugInFailure(PlugInName());
}

std::string plugInVersionText(int major, int minor, int revision) {
    std::array<char, 40> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%d.%02d.%04d", major, minor, revision);
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace ov
