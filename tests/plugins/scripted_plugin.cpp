// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "scripted_plugin.h"

#include "plugin/host_error.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QTableWidget>
#include <QTimer>
#include <array>
#include <cstdio>
#include <functional>
#include <map>

namespace {

using namespace ov;
using namespace Qt::StringLiterals;

QStringList steps() {
    return qEnvironmentVariable("OV_TEST_STEPS").split(u',');
}

void print(const std::string& line) {
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

template <typename Widget>
Widget* hostWidget(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* found = window->findChild<Widget*>(name))
            return found;
    throw HostError(1, "the host has no " + name.toStdString());
}

// The test that runs the host ends it when this never comes.
void waitUntil(const std::function<bool()>& holds) {
    while (!holds())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

class ScriptedPlugIn final : public IPlugin {
public:
    ScriptedPlugIn() = default;
    ~ScriptedPlugIn() override {
        if (application_)
            application_->EventSource()->unsubscribe(sink_);
        print("plug-in gone");
    }
    ScriptedPlugIn(const ScriptedPlugIn&) = delete;
    ScriptedPlugIn& operator=(const ScriptedPlugIn&) = delete;

    void ApplicationStart(std::shared_ptr<IHostApplication> application) override {
        if (steps().contains(u"refuse-start"_s))
            throw HostError(7, "no licence");
        application_ = std::move(application);
        sink_.plugIn = this;
        application_->EventSource()->subscribe(sink_);
    }
    std::shared_ptr<IHostApplication> Application() const override { return application_; }
    void setPlugInDescription(std::string_view) override {}
    std::string PlugInName() const override { return "Scripted"; }
    std::string PlugInVersion() const override { return "1.00.0000"; }
    std::string PlugInDescription() const override { return "Runs steps"; }
    std::string PlugInControlName() const override { return {}; }
    void setPlugInControlName(std::string_view) override {}
    std::string PlugInControlContainerName() const override { return {}; }
    void setPlugInControlContainerName(std::string_view) override {}
    std::int32_t PlugInControlReferenceNumber() const override { return 0; }
    void setPlugInControlReferenceNumber(std::int32_t) override {}
    std::int32_t PlugInControlTabNumber() const override { return 0; }
    void setPlugInControlTabNumber(std::int32_t) override {}

private:
    struct Sink final : IEventSink {
        ScriptedPlugIn* plugIn = nullptr;

        void EventSource_ActionEvent(std::int32_t, std::int32_t, std::string_view) override {}
        void EventSource_WindowEvent(std::int32_t event, std::int32_t windowId, std::int32_t,
                                     std::int32_t, IHostWindow& window) override {
            if (event != window_event::resize)
                print("window event " + std::to_string(event) + " of " + std::to_string(windowId));
            if (event == window_event::load && !window.AddPlugInControl("Scripted.ctrl", *plugIn))
                plugIn->application_->ReportPlugInFailure("Scripted");
            if (event == window_event::queryUnload)
                window.RemovePlugInControl(*plugIn);
        }
    };

    Sink sink_;
    std::shared_ptr<IHostApplication> application_;
};

// Prints what it hears; takes others off the list or fails when told to.
struct PrintingSink final : IEventSink {
    explicit PrintingSink(std::string sinkName) : name(std::move(sinkName)) {}

    void EventSource_ActionEvent(std::int32_t action, std::int32_t,
                                 std::string_view parameter) override {
        print(name + " hears " + std::to_string(action) + " " + std::string(parameter));
        if (then)
            then();
    }
    void EventSource_WindowEvent(std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                                 IHostWindow&) override {}

    std::string name;
    std::function<void()> then;
};

class ScriptedControl final : public IFormExtension {
public:
    explicit ScriptedControl(WindowHandle parent)
        : window_(new QLabel(u"control"_s, static_cast<QWidget*>(parent))) {}
    ~ScriptedControl() override {
        delete window_;
        print("control gone");
    }
    ScriptedControl(const ScriptedControl&) = delete;
    ScriptedControl& operator=(const ScriptedControl&) = delete;

    void IFormExtension_Init(IPlugin& plugIn, IHostForm& form) override {
        plugIn_ = &plugIn;
        form_ = &form;
        const std::map<QString, void (ScriptedControl::*)()> known = {
            {u"answers"_s, &ScriptedControl::askAll},
            {u"events"_s, &ScriptedControl::hearEvents},
            {u"failing-sink"_s, &ScriptedControl::hearEvents},
            {u"window"_s, &ScriptedControl::showWindow},
            {u"search"_s, &ScriptedControl::startSearch}};
        for (const QString& step : steps())
            if (const auto found = known.find(step); found != known.end())
                (this->*found->second)();
        if (steps().contains(u"refuse-init"_s))
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
        for (const char* name :
             {"PI_GetLanguage", "PI_GetSubLanguage", "PI_GetLocalINIFile", "PI_NoSuchThing"})
            print(std::string(name) + "=" + call(name));
        for (const std::int32_t id : {204, 32, 7})
            print("PI_GetDirectory " + std::to_string(id) + "=" + call("PI_GetDirectory", {id}));
        print("PI_GetDirectory=" + call("PI_GetDirectory"));
    }

    // What a menu starts comes out of the event loop.
    static void choose(QAction& action) {
        action.trigger();
        QCoreApplication::processEvents();
    }

    void hearEvents() {
        const auto source = form_->EventSource();
        PrintingSink first("first");
        PrintingSink second("second");
        PrintingSink third("third");
        for (PrintingSink* sink : {&first, &second, &third, &first})
            source->subscribe(*sink);
        const bool fails = steps().contains(u"failing-sink"_s);
        first.then = [&] {
            source->unsubscribe(second);
            if (fails)
                throw HostError(5, "refused");
        };
        for (const auto& name : {u"actionGerman"_s, u"actionEnglish"_s}) {
            choose(*hostWidget<QAction>(name));
            if (fails)
                break;
            print(call("PI_GetLanguage") + ", " +
                  hostWidget<QMenu>(u"menuRecentFolders"_s)->title().toStdString());
        }
        // The last of the list, so that it has to move to the front.
        auto* recent = hostWidget<QMenu>(u"menuRecentFolders"_s);
        emit qobject_cast<QMenu*>(recent->parent())->aboutToShow();
        QList<QAction*> folders = recent->actions();
        folders.removeIf([](QAction* action) { return !action->text().startsWith(u'/'); });
        if (!folders.isEmpty())
            choose(*folders.constLast());
        source->unsubscribe(first);
        source->unsubscribe(third);
    }

    // How far it is, its log, and what the host has told in boxes.
    void showWindow() {
        const auto* panel = hostWidget<QWidget>(u"progressPanel"_s);
        const auto* caption = hostWidget<QLabel>(u"progressCaption"_s);
        const auto* bar = hostWidget<QProgressBar>(u"progressBar"_s);
        const auto shown = [&](const QString& what) {
            waitUntil([&] { return panel->isVisible() && caption->text() == what; });
            print(what.toStdString() + ": " + std::to_string(bar->value()) + " of " +
                  std::to_string(bar->maximum()));
        };
        std::string path = "\\store\\M\xFCller.WAV";
        std::string filling = "filling";
        call("PI_ProgressText", {&path}); // without init
        shown(u"Working…"_s);
        call("PI_ProgressInit", {0, 40, 0, &filling});
        call("PI_ProgressValue", {100}); // of 40
        shown(u"filling"_s);
        call("PI_ProgressInit"); // nothing that it needs
        shown(u"Working…"_s);
        call("PI_ProgressClear");
        waitUntil([&] { return !panel->isVisible(); });

        call("PI_LogView", {&path});
        const auto* facts = hostWidget<QTableWidget>(u"facts"_s);
        print((facts->item(0, 0)->text() + u'=' + facts->item(0, 1)->text()).toStdString());
        print(hostWidget<QPlainTextEdit>(u"logLines"_s)->toPlainText().toStdString());
        for (const QWidget* window : QApplication::topLevelWidgets())
            if (const auto* box = qobject_cast<const QMessageBox*>(window))
                print(box->text().section(u'\n', 0, 0).toStdString());
    }

    // A search that pumps messages; the window is closed below it.
    void startSearch() {
        QTimer::singleShot(0, qApp, [control = QPointer<QWidget>(window_)] {
            waitUntil([&] { return control.isNull(); });
            print("search unwound");
        });
    }

    QPointer<QWidget> window_;
    IPlugin* plugIn_ = nullptr;
    IHostForm* form_ = nullptr;
};

} // namespace

std::shared_ptr<IPlugin> ScriptedLibrary::createPlugIn(std::string_view /*progId*/) {
    if (steps().contains(u"no-plug-in"_s))
        return nullptr;
    return std::make_shared<ScriptedPlugIn>();
}

std::shared_ptr<IFormExtension> ScriptedLibrary::createControl(std::string_view /*progId*/,
                                                               WindowHandle parent) {
    if (steps().contains(u"no-control"_s))
        return nullptr;
    return std::make_shared<ScriptedControl>(parent);
}

std::vector<DictationFact> ScriptedLibrary::describeDictation(std::string_view path) const {
    return {{"latin-1", path.find('\xFC') != std::string_view::npos ? "kept" : "lost"}};
}

std::vector<std::string> ScriptedLibrary::recentLogLines() const {
    return {"line 1", "line 2"};
}
