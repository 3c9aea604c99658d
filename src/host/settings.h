// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/language.h"

#include <QSettings>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>

class QMainWindow;

namespace ov::host {

// What the host remembers, and where it keeps things. Below "Orvanta" in the user's folder of
// settings lie
//
//   OVHostWindow.ini  language, dictation folders, place of the window: this class
//   OVHost.ini        what the plug-in keeps under its own sections ("PI_GetLocalINIFile")
//   Data/DAss/        the plug-in's data ("PI_GetDirectory" 32)
//
// Folders and files that are made are their owner's alone.
class HostSettings {
public:
    // `configFolder` is the folder above "Orvanta", absolute. Makes it.
    explicit HostSettings(const QString& configFolder);

    // As they cross the boundary. The data folder is made when it is missing; empty when it
    // cannot be.
    std::string localIniFile() const;
    std::string dataFolder() const;

    // The language of the system until the user chose one.
    Language language() const;
    void setLanguage(Language language);
    void useLanguageForThisRun(Language language);

    // The tree of dictations, absolute, the bytes of its name; empty until the user chose one.
    // What is set is remembered and heads the recent folders.
    std::string dictationFolder() const;
    void setDictationFolder(const QString& folder);
    void useDictationFolderForThisRun(std::string folder);

    QStringList recentFolders() const; // the last used first
    void forgetFolder(const QString& folder);
    void forgetRecentFolders();

    void keepPlace(const QMainWindow& window);
    // False when there is none to restore.
    bool restorePlace(QMainWindow& window) const;

    // Writes what changed; called after each change that shall not be lost without a word. Empty,
    // or the file that could not be written.
    QString save();

private:
    QString folder_;
    QSettings file_;
    std::optional<Language> languageOfThisRun_;
    std::string folderOfThisRun_;
};

} // namespace ov::host
