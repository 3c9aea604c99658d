// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/language.h"

#include <QMenu>
#include <QObject>

class QAction;
class QActionGroup;
class QMenuBar;

namespace ov::host {

class HostSettings;
class Texts;

// The main window's menu. Tells what was chosen; does nothing itself.
class HostMenu final : public QObject {
    Q_OBJECT

public:
    // `bar` is filled. `traceToggle` shows and hides the trace. All of them outlive the menu.
    HostMenu(QMenuBar& bar, QAction& traceToggle, const HostSettings& settings, const Texts& texts,
             QObject* parent = nullptr);

    // Entries of the plug-in's control, with texts of its own.
    void offer(const QList<QAction*>& ofControl);

signals:
    void openFolderChosen();
    void folderChosen(const QString& folder);
    void forgetFoldersChosen();
    void quitChosen();
    void logViewChosen();
    void languageChosen(ov::host::Language language);
    void aboutChosen();

private:
    void buildFile();
    void buildView();
    void buildHelp();
    void buildLanguages(QMenu& menu);
    void fillRecentFolders();
    void translate();

    const HostSettings& settings_;
    const Texts& texts_;
    QAction& traceToggle_;
    QMenu* file_;
    QMenu* view_;
    QMenu* language_;
    QMenu* help_;
    QMenu* recent_ = nullptr;
    QAction* openFolder_ = nullptr;
    QAction* quit_ = nullptr;
    QAction* logView_ = nullptr;
    QAction* about_ = nullptr;
    QActionGroup* languages_ = nullptr;
};

} // namespace ov::host
