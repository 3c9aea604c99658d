// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/language.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTranslator>

namespace ov::host {

// The host's own texts. "%1" to "%9" in them are filled by arguments.
enum class Text {
    fileMenu,
    openFolder,
    recentFolders,
    forgetRecentFolders,
    quit,
    viewMenu,
    logView,
    languageMenu,
    helpMenu,
    about,
    traceDock,
    traceTime,
    traceText,
    copy,
    clear,
    chooseFolder,
    folderIsGone,
    folderIsSilent,
    settingsUnsaved,
    noFolderChosen,
    chooseFirstFolder,
    progressBar,
    working,
    logViewTitle,
    logViewOf,
    caption,
    value,
    logLines,
    noLogLines,
    aboutPlugIn,
    aboutNoPlugIn,
    plugInFailed,
    callFailed,
    errorNumber,
    notLoadedTitle,
    notLoadedAdvice,
    notStartedAdvice,
    notFound,
    missingFile,
    noPlugIn,
    otherInterface,
    otherVersion,
    loaderFailed,
    noLibrary,
    noConnector,
    startFailed,
    none,
    count_
};

// Gives texts in the language chosen now; also moves Qt's own texts to it, where the system has
// them. Who shows texts asks again when `changed` comes.
class Texts final : public QObject {
    Q_OBJECT

public:
    explicit Texts(Language language);

    QString operator()(Text text, const QStringList& arguments = {}) const;
    Language language() const { return language_; }
    void setLanguage(Language language);

signals:
    void changed();

private:
    void loadTextsOfQt();

    Language language_;
    QTranslator textsOfQt_;
};

} // namespace ov::host
