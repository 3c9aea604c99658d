// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/host_interfaces.h"

#include <QByteArray>
#include <QObject>
#include <QString>

namespace ov::host {

class HostSettings;
class ProgressNotes;

// The functions that a plug-in calls by name. What the host does not know is answered with
// nothing. No call handles window messages, and none waits.
class HostServices final : public QObject, public IHostServices {
    Q_OBJECT

public:
    // Both outlive the object.
    HostServices(const HostSettings& settings, ProgressNotes& progress);

    void CallPlugInFunction(IPlugin& caller, std::string_view function,
                            std::span<HostArgument> arguments, std::string& result) override;
    void WriteTrace(std::string_view text, IPlugin& caller) override;

signals:
    void traced(const QString& text);
    // A path as it crosses the boundary.
    void logViewRequested(const QByteArray& path);

private:
    using Arguments = std::span<HostArgument>;
    using Function = void (HostServices::*)(Arguments, std::string&);
    struct Named;

    void getLanguage(Arguments arguments, std::string& result);
    void getSubLanguage(Arguments arguments, std::string& result);
    void getLocalIniFile(Arguments arguments, std::string& result);
    void getDirectory(Arguments arguments, std::string& result);
    void progressInit(Arguments arguments, std::string& result);
    void progressText(Arguments arguments, std::string& result);
    void progressValue(Arguments arguments, std::string& result);
    void progressClear(Arguments arguments, std::string& result);
    void logView(Arguments arguments, std::string& result);

    const HostSettings& settings_;
    ProgressNotes& progress_;
};

} // namespace ov::host
