// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

// What a host and a plug-in are to each other. A host implements IHostApplication,
// IHostServices, EventSource, IHostWindow and IHostForm; the plug-in implements IPlugin and, for
// its control, IFormExtension. plugin_library.h tells how the host gets at them.
//
// Threads: every call, in both directions, is made on the host's user-interface thread.
// Text: UTF-8. A string_view lives as long as the call. Paths part their names with "\" on every
// system and keep the bytes of file names that are no UTF-8; a directory ends in "\".
// Lifetime: objects are shared; a side that keeps one holds a reference. An IPlugin& is the
// caller itself and outlives the call.
// Errors: every operation may throw HostError and nothing else; the caller then regards the
// operation as not done.

namespace ov {

class IFormExtension;
class IHostApplication;
class IHostWindow;
class IPlugin;

// A window of the user interface, owned by neither side of the call: a QWidget* of Qt 6.
using WindowHandle = void*;

// One argument of a host function: a number, or the caller's own variable, which the host may
// write to during the call.
using HostArgument = std::variant<std::int32_t, std::int32_t*, std::string*>;

// The host's generic entry for functions that are known by name.
//
// The functions that the plug-in calls, all from the control unless said otherwise. A result
// that is a number is a text that begins with it.
//
//   function             arguments                      result
//   PI_GetLanguage       none                           language: 7 German, 9 English, 0 German
//   PI_GetSubLanguage    none                           its number, 0 for none
//   PI_GetLocalINIFile   none                           path of the user's settings file
//   PI_GetDirectory      204                            the dictation tree
//                        32                             where the plug-in keeps the user's data
//   PI_ProgressInit      0, &steps, &0, &caption        -
//   PI_ProgressText      &text: the directory that is   -
//                        being searched, ending in "\";
//                        nothing else
//   PI_ProgressValue     &value: the step reached,      -
//                        counted from 1; also without
//                        PI_ProgressInit
//   PI_ProgressClear     none; also without             -
//                        PI_ProgressInit
//   PI_LogView           &path of a dictation, &""      -
//
// The progress functions come at the pace of the disk, some hundred thousand a second: a host
// takes note and repaints later. It need not handle window messages inside the call, the plug-in
// lets them be handled.
class IHostServices {
public:
    virtual ~IHostServices() = default;

    // Calls `function` ("PI_...") with zero-based `arguments` and writes its answer to `result`,
    // which is empty before. A function the host does not know leaves it empty.
    virtual void CallPlugInFunction(IPlugin& caller, std::string_view function,
                                    std::span<HostArgument> arguments, std::string& result) = 0;

    // A line for the host's trace.
    virtual void WriteTrace(std::string_view text, IPlugin& caller) = 0;
};

// Codes of the events. They travel between programs that are built apart: never renumber.
namespace action_event {
constexpr std::int32_t update = 1;  // parameter "UPDATE"
constexpr std::int32_t changed = 2; // parameter "LANGUAGE" or "DIR_NETDICTATIONTREE"
} // namespace action_event

namespace window_event {
constexpr std::int32_t load = 1;
constexpr std::int32_t queryUnload = 4;
constexpr std::int32_t queryUnloadByHost = 5;
constexpr std::int32_t resize = 6;
} // namespace window_event

constexpr std::int32_t mainWindowId = 1;

// Who listens to an EventSource.
class IEventSink {
public:
    virtual ~IEventSink() = default;

    // `second` carries nothing today. Letter case of `parameter` does not matter.
    virtual void EventSource_ActionEvent(std::int32_t action, std::int32_t second,
                                         std::string_view parameter) = 0;
    // `third` and `fourth` carry nothing today.
    virtual void EventSource_WindowEvent(std::int32_t event, std::int32_t windowId,
                                         std::int32_t third, std::int32_t fourth,
                                         IHostWindow& window) = 0;
};

class EventSource {
public:
    virtual ~EventSource() = default;

    // Each event goes to the sinks in the order of their subscription. A sink may unsubscribe
    // any sink during an event; one that is gone gets no further call. Subscribing twice and
    // unsubscribing what is not subscribed change nothing. Sinks are not owned: unsubscribe
    // before the end of life.
    virtual void subscribe(IEventSink& sink) = 0;
    virtual void unsubscribe(IEventSink& sink) noexcept = 0;
};

class IHostApplication {
public:
    virtual ~IHostApplication() = default;

    virtual std::shared_ptr<ov::EventSource> EventSource() = 0;
    virtual std::shared_ptr<IHostServices> HostServices() = 0;
    // Tells the host that the plug-in of that name could not do its work.
    virtual void ReportPlugInFailure(std::string_view plugInName) = 0;
};

// A window of the host that can carry a plug-in's control.
class IHostWindow {
public:
    virtual ~IHostWindow() = default;

    // Creates the control of that ProgID, calls its IFormExtension_Init and shows it; nothing
    // when it cannot be created.
    virtual std::shared_ptr<IFormExtension> AddPlugInControl(std::string_view progId,
                                                             IPlugin& caller) = 0;
    virtual void RemovePlugInControl(IPlugin& caller) = 0;
    virtual void ResizePlugInControl(IPlugin& caller) = 0;
};

// The host's form around a control.
class IHostForm {
public:
    virtual ~IHostForm() = default;

    virtual std::shared_ptr<ov::EventSource> EventSource() = 0;
    // The control is built and may be shown.
    virtual void ReportControlReady(IPlugin& caller) = 0;
};

// What the host drives a control with.
class IFormExtension {
public:
    virtual ~IFormExtension() = default;

    // Called once, before anything else. `plugIn` and `form` outlive the control.
    virtual void IFormExtension_Init(IPlugin& plugIn, IHostForm& form) = 0;

    // The control's own window, for the host to place, size and show. It belongs to the control.
    // Its actions() are what a host may offer in a menu of its own.
    virtual WindowHandle IFormExtension_Window() noexcept = 0;
};

// The plug-in as the host sees it. The order of the members is part of the interface.
class IPlugin {
public:
    virtual ~IPlugin() = default;

    // First call. The plug-in keeps the application and listens to its events from now on.
    virtual void ApplicationStart(std::shared_ptr<IHostApplication> application) = 0;
    virtual std::shared_ptr<IHostApplication> Application() const = 0;
    virtual void setPlugInDescription(std::string_view text) = 0;
    virtual std::string PlugInName() const = 0;    // "OVSearch"
    virtual std::string PlugInVersion() const = 0; // "1.00.0000"
    virtual std::string PlugInDescription() const = 0;

    // Kept for the host; the plug-in never reads them.
    virtual std::string PlugInControlName() const = 0;
    virtual void setPlugInControlName(std::string_view name) = 0;
    virtual std::string PlugInControlContainerName() const = 0;
    virtual void setPlugInControlContainerName(std::string_view name) = 0;
    virtual std::int32_t PlugInControlReferenceNumber() const = 0;
    virtual void setPlugInControlReferenceNumber(std::int32_t number) = 0;
    virtual std::int32_t PlugInControlTabNumber() const = 0;
    virtual void setPlugInControlTabNumber(std::int32_t number) = 0;
};

} // namespace ov
