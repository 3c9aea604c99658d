// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QPluginLoader>
#include <QWidget>
#include <algorithm>
#include <iostream>
#include <plugin/host_error.h>
#include <plugin/plugin_library.h>

// The smallest host that gets the plug-in's control to work: loads it, creates its control,
// prints who it is, and lets go of it.

Q_DECLARE_INTERFACE(ov::IPlugInLibrary, OV_PLUGIN_LIBRARY_IID)

namespace {

// Shared with the plug-in, but the life of what is in main() does not hang on it.
template <typename Object>
std::shared_ptr<Object> borrowed(Object& object) {
    return {std::shared_ptr<void>(), &object};
}

class Events final : public ov::EventSource {
public:
    void subscribe(ov::IEventSink& sink) override {
        unsubscribe(sink);
        sinks_.push_back(&sink);
    }
    void unsubscribe(ov::IEventSink& sink) noexcept override { std::erase(sinks_, &sink); }

    void window(std::int32_t event, ov::IHostWindow& window) {
        for (ov::IEventSink* sink : std::vector<ov::IEventSink*>(sinks_))
            if (std::find(sinks_.begin(), sinks_.end(), sink) != sinks_.end())
                sink->EventSource_WindowEvent(event, ov::mainWindowId, 0, 0, window);
    }

private:
    std::vector<ov::IEventSink*> sinks_;
};

// All that the plug-in asks for, in one object; its life is that of main().
class Host final : public ov::IHostApplication,
                   public ov::IHostServices,
                   public ov::IHostWindow,
                   public ov::IHostForm {
public:
    explicit Host(ov::IPlugInLibrary& library) : library_(library) {}

    Events events;
    QWidget window;
    std::shared_ptr<ov::IPlugin> plugIn;
    std::shared_ptr<ov::IFormExtension> control; // goes first
    bool ready = false;

    std::shared_ptr<ov::EventSource> EventSource() override { return borrowed(events); }
    std::shared_ptr<ov::IHostServices> HostServices() override { return borrowed(*this); }
    void ReportPlugInFailure(std::string_view name) override { std::cerr << name << " failed\n"; }

    void CallPlugInFunction(ov::IPlugin&, std::string_view function, std::span<ov::HostArgument>,
                            std::string& result) override {
        if (function == "PI_GetLanguage")
            result = std::to_string(9); // English
    }
    void WriteTrace(std::string_view, ov::IPlugin&) override {}

    std::shared_ptr<ov::IFormExtension> AddPlugInControl(std::string_view progId,
                                                         ov::IPlugin& caller) override {
        control = library_.createControl(progId, &window);
        if (control)
            control->IFormExtension_Init(caller, *this);
        return control;
    }
    void RemovePlugInControl(ov::IPlugin&) override { control.reset(); }
    void ResizePlugInControl(ov::IPlugin&) override {
        if (control)
            static_cast<QWidget*>(control->IFormExtension_Window())->setGeometry(window.rect());
    }
    void ReportControlReady(ov::IPlugin&) override { ready = true; }

private:
    ov::IPlugInLibrary& library_;
};

int run(const QString& file) {
    QPluginLoader loader(file);
    auto* library = qobject_cast<ov::IPlugInLibrary*>(loader.instance());
    if (library == nullptr) {
        std::cerr << qPrintable(loader.errorString()) << '\n';
        return 1;
    }
    Host host(*library);
    host.plugIn = library->createPlugIn("OVSearch.Connector");
    if (!host.plugIn)
        return 1;
    host.plugIn->ApplicationStart(borrowed(host));
    host.events.window(ov::window_event::load, host);
    host.window.show();
    host.events.window(ov::window_event::resize, host);
    QApplication::processEvents();
    std::cout << host.plugIn->PlugInName() << ' ' << host.plugIn->PlugInVersion() << '\n'
              << host.plugIn->PlugInDescription() << '\n';
    host.events.window(ov::window_event::queryUnload, host);
    return host.ready && !host.control ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    try {
        return run(QStringLiteral(PLUGIN_FILE));
    } catch (const ov::HostError& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
