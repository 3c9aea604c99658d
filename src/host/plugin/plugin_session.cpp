// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/plugin/plugin_session.h"

#include <QDir>
#include <QPointer>
#include <utility>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

constexpr std::string_view connectorProgId = "OVSearch.Connector";

std::string_view view(const QByteArray& bytes) {
    return {bytes.data(), static_cast<std::size_t>(bytes.size())};
}

} // namespace

// What the plug-in sees of the program. It may outlive the session: the plug-in shares it.
class PluginSession::Application final : public IHostApplication {
public:
    explicit Application(PluginSession& session)
        : events_(session.events_), services_(session.services_), session_(&session) {}

    std::shared_ptr<ov::EventSource> EventSource() override { return events_; }
    std::shared_ptr<IHostServices> HostServices() override { return services_; }
    void ReportPlugInFailure(std::string_view plugInName) override {
        if (!session_)
            return;
        const auto size = static_cast<qsizetype>(plugInName.size());
        emit session_->failed(
            session_->texts_(Text::plugInFailed, {QString::fromUtf8(plugInName.data(), size)}));
    }

private:
    std::shared_ptr<HostEvents> events_;
    std::shared_ptr<ov::host::HostServices> services_;
    QPointer<PluginSession> session_;
};

PluginSession::PluginSession(const HostSettings& settings, const Texts& texts,
                             ProgressNotes& progress)
    : texts_(texts),
      events_(std::make_shared<HostEvents>()),
      services_(std::make_shared<HostServices>(settings, progress)) {}

PluginSession::~PluginSession() {
    plugIn_.reset(); // while there is still an application for it
}

std::optional<Failure> PluginSession::start(const QString& file) {
    auto loaded = file_.load(file);
    if (auto* failure = std::get_if<Failure>(&loaded))
        return std::move(*failure);
    library_ = std::get<IPlugInLibrary*>(loaded);
    std::optional<Failure> failure;
    const bool returned =
        guarded([&] { failure = startPlugIn(); },
                [&](const std::exception_ptr& thrown) {
                    failure =
                        Failure{Text::startFailed,
                                {QDir::toNativeSeparators(file_.path()), describe(texts_, thrown)}};
                });
    if (!returned)
        plugIn_.reset();
    return failure;
}

std::optional<Failure> PluginSession::startPlugIn() {
    plugIn_ = library_->createPlugIn(connectorProgId);
    if (!plugIn_)
        return Failure{Text::noConnector,
                       {QDir::toNativeSeparators(file_.path()),
                        QString::fromLatin1(connectorProgId.data(),
                                            static_cast<qsizetype>(connectorProgId.size()))}};
    plugIn_->ApplicationStart(std::make_shared<Application>(*this));
    plugIn_->setPlugInControlContainerName("MainWindow");
    plugIn_->setPlugInControlName("ctrlOVSearch");
    return std::nullopt;
}

void PluginSession::sendAction(std::int32_t action, std::string_view parameter) {
    call([&] { events_->action(action, parameter); });
}

void PluginSession::sendWindowEvent(std::int32_t event, IHostWindow& window) {
    call([&] { events_->window(event, mainWindowId, window); });
}

std::shared_ptr<IFormExtension> PluginSession::createControl(std::string_view progId,
                                                             WindowHandle parent) {
    return library_ != nullptr ? library_->createControl(progId, parent) : nullptr;
}

Identity PluginSession::identity() {
    Identity identity;
    if (plugIn_)
        call([&] {
            identity = {QString::fromStdString(plugIn_->PlugInName()),
                        QString::fromStdString(plugIn_->PlugInVersion()),
                        QString::fromStdString(plugIn_->PlugInDescription())};
        });
    return identity;
}

LogNotes PluginSession::logNotes(const QByteArray& path) {
    LogNotes notes;
    if (library_ != nullptr)
        call([&] {
            notes.lines = library_->recentLogLines();
            if (!path.isEmpty())
                notes.facts = library_->describeDictation(view(path));
        });
    return notes;
}

void PluginSession::report(const std::exception_ptr& thrown) {
    emit failed(texts_(Text::callFailed, {describe(texts_, thrown)}));
}

bool PluginSession::call(const std::function<void()>& function) {
    return guarded(function, [this](const std::exception_ptr& thrown) { report(thrown); });
}

} // namespace ov::host
