// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/host_interfaces.h"

#include <QLabel>
#include <QPointer>
#include <QWidget>
#include <memory>

namespace ov::host {

class PluginSession;

// The middle of the main window: the window and the form that carry the plug-in's control, or a
// text that tells why there is none.
class PluginPane final : public QWidget, public IHostWindow, public IHostForm {
    Q_OBJECT

public:
    // `session` outlives the pane.
    explicit PluginPane(PluginSession& session, QWidget* parent = nullptr);
    ~PluginPane() override;
    PluginPane(const PluginPane&) = delete;
    PluginPane& operator=(const PluginPane&) = delete;

    // Shown while there is no control. `reason` and `advice` are plain text.
    void setMessage(const QString& title, const QString& reason, const QString& advice);

    bool hasControl() const { return control_ != nullptr; }
    // Gives the control the keyboard.
    void focusControl() const;
    // What it offers for a menu; they go with it.
    QList<QAction*> actionsOfControl() const;
    // Lets go of the control, if the plug-in did not do so before.
    void dropControl();

    QSize minimumSizeHint() const override;

    std::shared_ptr<IFormExtension> AddPlugInControl(std::string_view progId,
                                                     IPlugin& caller) override;
    void RemovePlugInControl(IPlugin& caller) override;
    void ResizePlugInControl(IPlugin& caller) override;
    std::shared_ptr<ov::EventSource> EventSource() override;
    void ReportControlReady(IPlugin& caller) override;

signals:
    void resized();
    void controlReady();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    PluginSession& session_;
    QLabel message_;
    std::shared_ptr<IFormExtension> control_;
    QPointer<QWidget> controlWindow_; // belongs to the control
};

} // namespace ov::host
