// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/folder_check.h"
#include "host/plugin/plugin_pane.h"
#include "host/plugin/plugin_session.h"
#include "host/settings.h"
#include "host/texts.h"
#include "host/window/first_page.h"
#include "host/window/host_menu.h"
#include "host/window/log_view.h"
#include "host/window/progress_notes.h"
#include "host/window/progress_panel.h"
#include "host/window/trace_dock.h"

#include <QMainWindow>
#include <QStackedWidget>
#include <optional>

namespace ov::host {

// The host's main window, number 1 of the window events.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    // All of them outlive the window.
    MainWindow(PluginSession& session, ProgressNotes& progress, HostSettings& settings,
               Texts& texts);
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    // Starts the plug-in of that file (empty: the usual one) and lets it place its control. To
    // be called once, when the window is shown.
    void load(const QString& plugInFile);

signals:
    void controlReady();
    // Something did not work; told to the user already.
    void failed(const QString& what);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void placeControl();
    void connectMenu();
    void connectSession();
    void translate();
    void showFailure();
    void showPage();
    void showTitle();
    void askForFolder();
    void showFolderDialog(const QString& folder);
    void saveSettings();
    void warn(const QString& text);
    void openFolder(const QString& folder);
    void useFolder(const QString& folder);
    void refuseFolder(const QString& folder, FolderAnswer answer);
    void changeLanguage(Language language);
    void showLogView(const QByteArray& path);
    void showAbout();
    QString aboutText();

    PluginSession& session_;
    HostSettings& settings_;
    Texts& texts_;
    QStackedWidget* pages_;
    PluginPane* pane_;
    FirstPage* firstPage_;
    TraceDock* trace_;
    ProgressPanel* progress_;
    HostMenu* menu_;
    LogView* logView_ = nullptr; // made at its first use
    bool toldUnsaved_ = false;
    std::optional<Failure> notLoaded_;
};

} // namespace ov::host
