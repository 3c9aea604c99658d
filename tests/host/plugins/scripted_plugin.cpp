// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "plugin/host_error.h"
#include "plugin/plugin_library.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <cstdio>
#include <functional>

Q_DECLARE_INTERFACE(ov::IPlugInLibrary, OV_PLUGIN_LIBRARY_IID)

namespace {

using namespace ov;
using namespace Qt::StringLiterals;

bool isTold(const QString& step) {
    return qEnvironmentVariable("OV_TEST_STEPS").split(u',').contains(step);
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

struct Sink final : IEventSink {
    std::function<void(std::int32_t, std::string_view)> onAction;
    std::function<void(std::int32_t, std::int32_t, IHostWindow&)> onWindow;

    void EventSource_ActionEvent(std::int32_t action, std::int32_t,
                                 std::string_view parameter) override {
        if (onAction)
            onAction(action, parameter);
    }
    void EventSource_WindowEvent(std::int32_t event, std::int32_t windowId, std::int32_t,
                                 std::int32_t, IHostWindow& window) override {
        if (onWindow && event != window_event::resize)
            onWindow(event, windowId, window);
    }
};

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
        if (isTold(u"refuse-start"_s))
            throw HostError(7, "no licence");
        application_ = std::move(application);
        sink_.onWindow = [this](std::int32_t event, std::int32_t windowId, IHostWindow& window) {
            print("window event " + std::to_string(event) + " of " + std::to_string(windowId));
            if (event == window_event::load && !window.AddPlugInControl("Scripted.ctrl", *this))
                application_->ReportPlugInFailure("Scripted");
            if (event == window_event::queryUnload)
                window.RemovePlugInControl(*this);
        };
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
    Sink sink_;
    std::shared_ptr<IHostApplication> application_;
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
        if (isTold(u"answers"_s))
            askAll();
        if (isTold(u"events"_s) || isTold(u"failing-sink"_s))
            hearEvents();
        if (isTold(u"window"_s))
            showWindow();
        if (isTold(u"first-folder"_s))
            chooseFirstFolder();
        if (isTold(u"search"_s))
            startSearch();
        if (isTold(u"offer"_s))
            offerEntry();
        if (isTold(u"refuse-init"_s))
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
        Sink first;
        Sink second;
        Sink third;
        for (Sink* sink : {&first, &second, &third, &first})
            source->subscribe(*sink);
        const auto heard = [](const char* name, std::int32_t action, std::string_view parameter) {
            print(name + (" hears " + std::to_string(action) + " ").append(parameter));
        };
        const bool fails = isTold(u"failing-sink"_s);
        first.onAction = [&](auto... what) {
            heard("first", what...);
            source->unsubscribe(second);
            if (fails)
                throw HostError(5, "refused");
        };
        second.onAction = [&](auto... what) { heard("second", what...); };
        third.onAction = [&](auto... what) { heard("third", what...); };
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

    // As a new user does, who has nothing but the one button.
    void chooseFirstFolder() {
        auto* button = hostWidget<QPushButton>(u"chooseFolder"_s);
        print(button->isVisible() ? button->text().toStdString() : "no first page");
        button->click();
        QFileDialog* dialog = nullptr;
        waitUntil([&] {
            dialog = button->window()->findChild<QFileDialog*>();
            return dialog != nullptr && dialog->isVisible();
        });
        emit dialog->fileSelected(QDir::rootPath());
        dialog->close();
        waitUntil([&] { return !button->isVisible(); });
        print(call("PI_GetDirectory", {204}));
    }

    // The host looks for it when the control is there.
    void offerEntry() {
        auto* entry = new QAction(u"Entry"_s, window_);
        window_->addAction(entry);
        QTimer::singleShot(0, entry, [entry] {
            for (const QObject* shown : entry->associatedObjects())
                if (const auto* menu = qobject_cast<const QMenu*>(shown))
                    print("offered in " + menu->title().toStdString());
        });
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

// A plug-in that runs the steps named in the variable OV_TEST_STEPS, parted by commas, when its
// control is initialised, and prints what it sees of the host. OV_TEST_IID is the interface that
// its file claims to have.
class ScriptedLibrary final : public QObject, public IPlugInLibrary {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OV_TEST_IID FILE "scripted_plugin.json")
    Q_INTERFACES(ov::IPlugInLibrary)

public:
    std::shared_ptr<IPlugin> createPlugIn(std::string_view) override {
        return isTold(u"no-plug-in"_s) ? nullptr : std::make_shared<ScriptedPlugIn>();
    }
    std::shared_ptr<IFormExtension> createControl(std::string_view, WindowHandle parent) override {
        return isTold(u"no-control"_s) ? nullptr : std::make_shared<ScriptedControl>(parent);
    }
    std::vector<DictationFact> describeDictation(std::string_view path) const override {
        return {{"latin-1", path.find('\xFC') != std::string_view::npos ? "kept" : "lost"}};
    }
    std::vector<std::string> recentLogLines() const override { return {"line 1", "line 2"}; }
};

#include "scripted_plugin.moc"
