// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "plugin/Connector.h"
#include "plugin/host_error.h"
#include "plugin/plugin_library.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>

Q_DECLARE_INTERFACE(ov::IPlugInLibrary, OV_PLUGIN_LIBRARY_IID)

namespace {

using namespace ov;
using namespace Qt::StringLiterals;

bool isTold(std::string_view step) {
    const char* told = std::getenv("OV_TEST_STEP");
    return told != nullptr && step == told;
}

void print(const std::string& line) {
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

struct Listener final : IEventSink {
    std::function<void(std::string_view)> hears;

    void EventSource_ActionEvent(std::int32_t, std::int32_t, std::string_view parameter) override {
        hears(parameter);
    }
    void EventSource_WindowEvent(std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                                 IHostWindow&) override {}
};

class ScriptedControl final : public IFormExtension {
public:
    explicit ScriptedControl(WindowHandle parent)
        : window_(new QLabel(u"control"_s, static_cast<QWidget*>(parent))) {
        print("control made");
    }
    ~ScriptedControl() override {
        delete window_;
        print("control gone");
    }
    ScriptedControl(ScriptedControl&&) = delete; // nor copied

    void IFormExtension_Init(IPlugin& plugIn, IHostForm& form) override {
        plugIn_ = &plugIn;
        if (isTold("answers"))
            askAll();
        if (isTold("events") || isTold("failing-listener"))
            hearEvents(*form.EventSource());
        if (isTold("search"))
            startSearch();
        if (isTold("refuse-init"))
            throw HostError(9, "no sound");
        form.ReportControlReady(plugIn);
    }
    WindowHandle IFormExtension_Window() noexcept override { return window_.data(); }

private:
    std::string call(std::string_view function, std::vector<HostArgument> arguments = {}) {
        std::string result;
        plugIn_->Application()->HostServices()->CallPlugInFunction(*plugIn_, function, arguments,
                                                                   result);
        return result;
    }

    void askAll() {
        for (const std::int32_t id : {204, 32, 7})
            print("PI_GetDirectory " + std::to_string(id) + "=" + call("PI_GetDirectory", {id}));
        // Some need arguments, and get none.
        for (const char* name : {"PI_GetLanguage", "PI_GetLocalINIFile", "PI_GetDirectory",
                                 "PI_ProgressInit", "PI_NoSuchThing"})
            print(std::string(name) + "=" + call(name));
    }

    // Of what is chosen in a menu; one of those that listen goes while others hear of it.
    void hearEvents(EventSource& source) {
        std::array<Listener, 3> listeners;
        for (Listener& listener : listeners)
            listener.hears = [&](std::string_view parameter) {
                print("listener " + std::to_string(&listener - listeners.data()) + " hears " +
                      std::string(parameter));
                source.unsubscribe(listeners[1]);
                if (isTold("failing-listener"))
                    throw HostError(5, "refused");
            };
        for (const std::size_t index : {0U, 1U, 2U, 0U})
            source.subscribe(listeners.at(index));
        for (const QString& language : {u"actionGerman"_s, u"actionEnglish"_s}) {
            window_->window()->findChild<QAction*>(language)->trigger();
            print("speaks " + call("PI_GetLanguage"));
        }
        for (Listener& listener : listeners)
            source.unsubscribe(listener);
        for (const QWidget* window : QApplication::topLevelWidgets())
            if (const auto* box = qobject_cast<const QMessageBox*>(window))
                print(box->text().section(u'\n', 0, 0).toStdString());
    }

    // A search that pumps messages; the window is closed below it.
    void startSearch() {
        QTimer::singleShot(0, qApp, [control = QPointer<QWidget>(window_)] {
            while (control)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            print("search unwound");
        });
    }

    QPointer<QWidget> window_;
    IPlugin* plugIn_ = nullptr;
};

} // namespace

// The real plug-in with another control, which does what the variable OV_TEST_STEP names when it is
// initialised, and prints what it sees of the host. OV_TEST_IID is the interface that its file
// claims to have.
class ScriptedLibrary final : public QObject, public IPlugInLibrary {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OV_TEST_IID FILE "scripted_plugin.json")
    Q_INTERFACES(ov::IPlugInLibrary)

public:
    std::shared_ptr<IPlugin> createPlugIn(std::string_view) override {
        if (isTold("no-plug-in"))
            return nullptr;
        if (isTold("refuse-start"))
            throw HostError(7, "no licence");
        return {new Connector, [](const Connector* connector) {
                    delete connector;
                    print("plug-in gone");
                }};
    }
    std::shared_ptr<IFormExtension> createControl(std::string_view, WindowHandle parent) override {
        return isTold("no-control") ? nullptr : std::make_shared<ScriptedControl>(parent);
    }
    std::vector<DictationFact> describeDictation(std::string_view) const override { return {}; }
    std::vector<std::string> recentLogLines() const override { return {}; }
};

#include "scripted_plugin.moc"
