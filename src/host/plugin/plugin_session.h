// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/plugin/failure.h"
#include "host/plugin/host_events.h"
#include "host/plugin/host_services.h"
#include "host/plugin/plugin_file.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ov::host {

// How the plug-in calls itself.
struct Identity {
    QString name;
    QString version;
    QString description;
};

// What the log view shows of a dictation.
struct LogNotes {
    std::vector<DictationFact> facts;
    std::vector<std::string> lines;
};

// The plug-in, from its file to its start, and every call into it that the host makes. Whatever
// it throws ends here and becomes `failed`. Outlives the windows that carry its control.
class PluginSession final : public QObject {
    Q_OBJECT

public:
    // All of them outlive the session.
    PluginSession(const HostSettings& settings, const Texts& texts, ProgressNotes& progress);
    ~PluginSession() override;
    PluginSession(const PluginSession&) = delete;
    PluginSession& operator=(const PluginSession&) = delete;

    // Loads the file (empty: the usual one), creates the plug-in and starts it. Once.
    std::optional<Failure> start(const QString& file);
    bool isStarted() const { return plugIn_ != nullptr; }

    HostServices& services() { return *services_; }
    std::shared_ptr<EventSource> events() const { return events_; }

    void sendAction(std::int32_t action, std::string_view parameter);
    void sendWindowEvent(std::int32_t event, IHostWindow& window);

    // Nothing when it cannot be created. It is not initialised yet. May throw, being called for
    // the plug-in.
    std::shared_ptr<IFormExtension> createControl(std::string_view progId, WindowHandle parent);

    Identity identity();
    QString file() const { return file_.path(); }
    LogNotes logNotes(const QByteArray& path);

    // For whoever calls a plug-in's object on its own account.
    void report(const std::exception_ptr& thrown);

signals:
    // In the host's language, for a person.
    void failed(const QString& what);

private:
    class Application;

    std::optional<Failure> startPlugIn();
    bool call(const std::function<void()>& function);

    const Texts& texts_;
    PluginFile file_;
    std::shared_ptr<HostEvents> events_;
    std::shared_ptr<HostServices> services_;
    IPlugInLibrary* library_ = nullptr;
    std::shared_ptr<IPlugin> plugIn_;
};

} // namespace ov::host
