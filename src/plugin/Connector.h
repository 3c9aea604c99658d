// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/host_interfaces.h"

#include <memory>
#include <string>

namespace ov {

// The object that the host creates when it loads the plug-in: tells who the plug-in is, and
// places, resizes and removes the search control as the host's main window comes and goes.
// Nothing is trapped here: what a host call throws goes back to the host.
class Connector final : public IPlugin, public IEventSink {
public:
    Connector() = default;
    ~Connector() override;
    Connector(const Connector&) = delete;
    Connector& operator=(const Connector&) = delete;

    void ApplicationStart(std::shared_ptr<IHostApplication> application) override;
    std::shared_ptr<IHostApplication> Application() const override { return application_; }
    void setPlugInDescription(std::string_view text) override { description_ = text; }
    std::string PlugInName() const override { return "OVSearch"; }
    std::string PlugInVersion() const override;
    std::string PlugInDescription() const override { return description_; }

    std::string PlugInControlName() const override { return controlName_; }
    void setPlugInControlName(std::string_view name) override { controlName_ = name; }
    std::string PlugInControlContainerName() const override { return containerName_; }
    void setPlugInControlContainerName(std::string_view name) override { containerName_ = name; }
    std::int32_t PlugInControlReferenceNumber() const override { return referenceNumber_; }
    void setPlugInControlReferenceNumber(std::int32_t number) override {
        referenceNumber_ = number;
    }
    std::int32_t PlugInControlTabNumber() const override { return tabNumber_; }
    void setPlugInControlTabNumber(std::int32_t number) override { tabNumber_ = number; }

    void EventSource_ActionEvent(std::int32_t action, std::int32_t second,
                                 std::string_view parameter) override;
    void EventSource_WindowEvent(std::int32_t event, std::int32_t windowId, std::int32_t third,
                                 std::int32_t fourth, IHostWindow& window) override;

private:
    void updateLanguage();
    void trace(std::string_view text);
    void addControl(IHostWindow& window);

    std::shared_ptr<IHostApplication> application_;
    std::shared_ptr<ov::EventSource> eventSource_;
    std::string description_;
    std::string controlName_;
    std::string containerName_;
    std::int32_t referenceNumber_ = 0;
    std::int32_t tabNumber_ = 0;
};

// "1.02.0015": the minor number with two digits, the revision with four.
std::string plugInVersionText(int major, int minor, int revision);

} // namespace ov
