// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/language/modLanguage.h"
#include "tests/fake_host.h"

#include <gtest/gtest.h>

namespace ov {
namespace {

using Lines = std::vector<std::string>;
using tests::FakeHost;
using tests::StartedPlugIn;

class NoControl final : public IFormExtension {
public:
    void IFormExtension_Init(IPlugin& /*plugIn*/, IHostForm& /*form*/) override {}
    WindowHandle IFormExtension_Window() noexcept override { return nullptr; }
};

class Plugin : public ::testing::Test {
public:
    Plugin() { host().control = std::make_shared<NoControl>(); }
    ~Plugin() override { modLanguage::reset(); }

protected:
    FakeHost& host() { return *started_.host; }
    Connector& connector() { return started_.connector; }
    // What the host was asked because of one event.
    Lines atWindowEvent(std::int32_t event, std::int32_t windowId = mainWindowId) {
        host().events.window(event, windowId, host());
        return host().takeCalls();
    }
    Lines atAction(std::int32_t code, std::string_view parameter) {
        host().events.action(code, parameter);
        return host().takeCalls();
    }

    StartedPlugIn started_;
};

TEST_F(Plugin, WindowEvents) {
    const Lines load = {"trace(Get wiMain:weLoad. Add Control to Window.)",
                        "AddPlugInControl(OVSearch.ctrlOVSearch)"};
    const Lines unload = {"trace(Get wiMain:weQueryUnload.)", "RemovePlugInControl()"};
    const Lines resize = {"trace(Get wiMain:weResize. Resize Control.)", "ResizePlugInControl()"};
    const Lines expected[] = {{}, load, {}, {}, unload, unload, resize, {}};
    for (std::int32_t event = 0; event < std::ssize(expected); ++event) {
        EXPECT_EQ(atWindowEvent(event), expected[event]) << event;
        EXPECT_EQ(atWindowEvent(event, mainWindowId + 1), Lines{}) << event;
        for (const std::string& call : expected[event]) {
            host().refused = {call};
            EXPECT_THROW(atWindowEvent(event), HostError) << call;
            EXPECT_EQ(host().takeCalls().back(), call) << "nothing is done after it";
        }
        host().refused.clear();
    }
    EXPECT_EQ(host().caller, &connector());
    host().control.reset();
    EXPECT_EQ(atWindowEvent(window_event::load).back(), "ReportPlugInFailure(OVSearch)");
}

TEST_F(Plugin, LanguageChanges) {
    host().answers = {{"PI_GetLanguage", "7abc"}, {"PI_GetSubLanguage", " 2"}};
    EXPECT_EQ(atAction(action_event::changed, "language"),
              (Lines{"PI_GetLanguage()", "PI_GetSubLanguage()"}));
    EXPECT_EQ(modLanguage::Language() * 10 + modLanguage::SubLanguage(), 72);
    for (const char* parameter : {"", "LANGUAGES", "UPDATE"})
        EXPECT_EQ(atAction(action_event::changed, parameter), Lines{}) << parameter;
    for (const std::int32_t code : {0, 1, 3})
        EXPECT_EQ(atAction(code, "LANGUAGE"), Lines{}) << code;
    host().refused = {"PI_GetSubLanguage"};
    host().answers = {{"PI_GetLanguage", "9"}};
    EXPECT_THROW(atAction(action_event::changed, "LANGUAGE"), HostError);
    EXPECT_EQ(modLanguage::Language(), 7) << "as it was";
}

TEST_F(Plugin, ListensToOneHostUntilItsEnd) {
    const auto other = std::make_shared<FakeHost>();
    {
        Connector plugIn;
        plugIn.ApplicationStart(started_.host);
        plugIn.ApplicationStart(started_.host);
        EXPECT_EQ(host().events.sinkCount(), 2U);
        plugIn.ApplicationStart(other);
        EXPECT_EQ(host().events.sinkCount(), 1U);
        EXPECT_EQ(other->events.sinkCount(), 1U);
    }
    EXPECT_EQ(other->takeCalls().back(), "unsubscribe()");
    EXPECT_EQ(other.use_count(), 1) << "nothing is kept";
    other->refused = {"subscribe"};
    Connector refused;
    EXPECT_THROW(refused.ApplicationStart(other), HostError);
}

TEST_F(Plugin, HostWithMissingPieces) {
    host().hasServices = false;
    EXPECT_EQ(atWindowEvent(window_event::resize), Lines{"ResizePlugInControl()"});
    EXPECT_EQ(modOVPlugIn::GetLocalINIFile(), "");
    host().hasEvents = false;
    connector().ApplicationStart(started_.host);
    connector().ApplicationStart(nullptr);
    EXPECT_EQ(modOVPlugIn::GetLocalINIFile(), "");
    connector().EventSource_WindowEvent(window_event::load, mainWindowId, 0, 0, host());
    started_.caller = nullptr;
    modOVPlugIn::ProgressValue(2);
    EXPECT_EQ(host().takeCalls(), Lines{"unsubscribe()"});
}

} // namespace
} // namespace ov
