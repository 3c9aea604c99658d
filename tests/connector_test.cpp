// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "fake_host.h"
#include "support/modLanguage.h"

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

TEST_F(Plugin, SaysWhoItIs) {
    EXPECT_EQ(connector().PlugInName(), "OVSearch");
    EXPECT_EQ(connector().PlugInVersion(), "1.00.0000");
    EXPECT_EQ(plugInVersionText(1, 2, 15), "1.02.0015");
    EXPECT_EQ(plugInVersionText(10, 0, 0), "10.00.0000");
    EXPECT_EQ(plugInVersionText(1, 123, 45678), "1.123.45678");
    EXPECT_EQ(connector().Application(), started_.host);
}

TEST_F(Plugin, KeepsWhatTheHostStores) {
    Connector& plugIn = connector();
    plugIn.setPlugInDescription("description");
    plugIn.setPlugInControlName("name");
    plugIn.setPlugInControlContainerName("container");
    plugIn.setPlugInControlReferenceNumber(-1);
    plugIn.setPlugInControlTabNumber(2);
    EXPECT_EQ(plugIn.PlugInDescription(), "description");
    EXPECT_EQ(plugIn.PlugInControlName(), "name");
    EXPECT_EQ(plugIn.PlugInControlContainerName(), "container");
    EXPECT_EQ(plugIn.PlugInControlReferenceNumber(), -1);
    EXPECT_EQ(plugIn.PlugInControlTabNumber(), 2);
}

TEST_F(Plugin, WindowEvents) {
    const Lines load = {"trace(Get wiMain:weLoad. Add Control to Window.)",
                        "AddPlugInControl(OVSearch.ctrlOVSearch)"};
    const Lines unload = {"trace(Get wiMain:weQueryUnload.)", "RemovePlugInControl()"};
    const Lines resize = {"trace(Get wiMain:weResize. Resize Control.)", "ResizePlugInControl()"};
    const Lines expected[] = {
        {}, load, {}, {}, unload, unload, resize, {},
    };
    for (std::int32_t event = 0; event < std::ssize(expected); ++event) {
        EXPECT_EQ(atWindowEvent(event), expected[event]) << event;
        EXPECT_EQ(atWindowEvent(event, 2), Lines{}) << event;
        EXPECT_EQ(atWindowEvent(event, 0), Lines{}) << event;
    }
    EXPECT_EQ(host().caller, &connector());
    host().control.reset();
    EXPECT_EQ(atWindowEvent(window_event::load).back(), "ReportPlugInFailure(OVSearch)");
}

TEST_F(Plugin, LanguageChanges) {
    const Lines asked = {"PI_GetLanguage()", "PI_GetSubLanguage()"};
    const struct {
        const char* language;
        const char* subLanguage;
        std::int32_t expected;
        std::int32_t expectedSub;
    } cases[] = {
        {"9", "2", 9, 2},
        {"7abc", " 1", 7, 1},
        {"", "", 0, 0},
        {"x", "99999999999", 0, 2147483647},
    };
    for (const auto& tested : cases) {
        host().answers["PI_GetLanguage"] = tested.language;
        host().answers["PI_GetSubLanguage"] = tested.subLanguage;
        EXPECT_EQ(atAction(action_event::changed, "language"), asked);
        EXPECT_EQ(modLanguage::Language(), tested.expected) << tested.language;
        EXPECT_EQ(modLanguage::SubLanguage(), tested.expectedSub) << tested.subLanguage;
    }
    for (const char* parameter : {"", "LANGUAGES", "DIR_NETDICTATIONTREE", "UPDATE"})
        EXPECT_EQ(atAction(action_event::changed, parameter), Lines{}) << parameter;
    for (const std::int32_t code : {0, 1, 3})
        for (const char* parameter : {"update", "LANGUAGE"})
            EXPECT_EQ(atAction(code, parameter), Lines{}) << code;
    modLanguage::SetLanguage(9, 1);
    host().refused = {"PI_GetSubLanguage"};
    EXPECT_THROW(atAction(action_event::changed, "LANGUAGE"), HostError);
    EXPECT_EQ(modLanguage::Language(), 9) << "as it was";
}

TEST_F(Plugin, FailuresGoBackToTheHost) {
    const std::pair<const char*, std::int32_t> cases[] = {
        {"trace", window_event::load},
        {"AddPlugInControl", window_event::load},
        {"ReportPlugInFailure", window_event::load},
        {"RemovePlugInControl", window_event::queryUnload},
        {"ResizePlugInControl", window_event::resize}};
    host().control.reset();
    for (const auto& [function, event] : cases) {
        host().refused = {function};
        EXPECT_THROW(atWindowEvent(event), HostError) << function;
        const Lines calls = host().takeCalls();
        EXPECT_TRUE(calls.back().starts_with(function)) << "nothing is done after it";
    }
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
    EXPECT_EQ(other->takeCalls(), (Lines{"subscribe()", "unsubscribe()"}));
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
    EXPECT_EQ(connector().Application(), nullptr);
    EXPECT_EQ(modOVPlugIn::GetLocalINIFile(), "");
    connector().EventSource_WindowEvent(window_event::load, mainWindowId, 0, 0, host());
    EXPECT_EQ(host().takeCalls(), Lines{"unsubscribe()"});
}

TEST_F(Plugin, HostFunctions) {
    host().answers = {{"PI_GetDirectory(204)", "/tree"},
                      {"PI_GetDirectory", "/other"},
                      {"PI_GetLocalINIFile", "/x.ini"}};
    EXPECT_EQ(modOVPlugIn::GetHostDirectory(modOVPlugIn::host_directory::dictationTree), "/tree");
    EXPECT_EQ(modOVPlugIn::GetHostDirectory(modOVPlugIn::host_directory::settings), "/other");
    EXPECT_EQ(modOVPlugIn::GetLocalINIFile(), "/x.ini");
    EXPECT_EQ(modOVPlugIn::GetLanguage(connector()), 0) << "not known to the host";
    modOVPlugIn::ProgressInit(0, 26, 0, "Filling");
    modOVPlugIn::ProgressText(R"(\home\x\)");
    modOVPlugIn::ProgressValue(3);
    modOVPlugIn::ProgressClear();
    modOVPlugIn::LogView("\\home\\x.WAV");
    EXPECT_EQ(host().caller, &connector());
    EXPECT_EQ(host().takeCalls(),
              (Lines{"PI_GetDirectory(204)", "PI_GetDirectory(32)", "PI_GetLocalINIFile()",
                     "PI_GetLanguage()", "PI_ProgressInit(&0, &26, &0, &\"Filling\")",
                     "PI_ProgressText(&\"\\home\\x\\\")", "PI_ProgressValue(&3)",
                     "PI_ProgressClear()", "PI_LogView(&\"\\home\\x.WAV\", &\"\")"}));
    host().refused = {"PI_ProgressValue"};
    EXPECT_THROW(modOVPlugIn::ProgressValue(1), HostError);
    started_.caller = nullptr;
    modOVPlugIn::ProgressValue(2);
    EXPECT_EQ(modOVPlugIn::GetLocalINIFile(), "");
    EXPECT_EQ(host().takeCalls(), Lines{"PI_ProgressValue(&1)"});
}

} // namespace
} // namespace ov
