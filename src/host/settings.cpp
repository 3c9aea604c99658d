// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/settings.h"

#include "host/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QMainWindow>
#include <utility>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

namespace key {
constexpr auto language = "language"_L1;
constexpr auto folder = "dictationFolder"_L1;
constexpr auto recent = "recentFolders"_L1;
constexpr auto geometry = "window/geometry"_L1;
constexpr auto state = "window/state"_L1;
} // namespace key

constexpr qsizetype mostRecentFolders = 8;

Language systemLanguage() {
    const QStringList languages = QLocale::system().uiLanguages();
    const bool german = !languages.isEmpty() && languages.constFirst().startsWith("de"_L1);
    return german ? Language::german : Language::english;
}

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

// With all its parents. What lies here names authors and patients, so what is made is the
// owner's alone; what is there stays as it is.
bool makeFolder(const QString& folder) {
    const QFileInfo place(folder);
    return place.isDir() ||
           (makeFolder(place.path()) && QDir().mkdir(folder, ownerOnly | QFileDevice::ExeOwner));
}

QString madeFolder(const QString& folder) {
    makeFolder(folder); // what fails here shows when the file is written
    return folder;
}

// QSettings would let the umask decide.
QString madeFile(const QString& name) {
    QFile file(name);
    static_cast<void>(file.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownerOnly));
    return name;
}

} // namespace

HostSettings::HostSettings(const QString& configFolder)
    : folder_(madeFolder(configFolder + "/Orvanta"_L1)),
      file_(madeFile(folder_ + "/OVHostWindow.ini"_L1), QSettings::IniFormat) {}

std::string HostSettings::localIniFile() const {
    return boundaryPath(nativeBytes(folder_ + "/OVHost.ini"_L1));
}

std::string HostSettings::dataFolder() const {
    const QString folder = folder_ + "/Data/DAss"_L1;
    return makeFolder(folder) ? boundaryDirectory(nativeBytes(folder)) : std::string();
}

Language HostSettings::language() const {
    if (languageOfThisRun_)
        return *languageOfThisRun_;
    const int stored = file_.value(key::language).toInt();
    for (const Language known : {Language::german, Language::english})
        if (stored == static_cast<int>(known))
            return known;
    return systemLanguage();
}

void HostSettings::setLanguage(Language language) {
    languageOfThisRun_.reset();
    file_.setValue(key::language, static_cast<int>(language));
}

void HostSettings::useLanguageForThisRun(Language language) {
    languageOfThisRun_ = language;
}

std::string HostSettings::dictationFolder() const {
    return folderOfThisRun_.empty() ? nativeBytes(file_.value(key::folder).toString())
                                    : folderOfThisRun_;
}

void HostSettings::setDictationFolder(const QString& folder) {
    folderOfThisRun_.clear();
    file_.setValue(key::folder, folder);
    QStringList recent = recentFolders();
    recent.removeAll(folder);
    recent.prepend(folder);
    file_.setValue(key::recent, recent.mid(0, mostRecentFolders));
}

void HostSettings::useDictationFolderForThisRun(std::string folder) {
    folderOfThisRun_ = std::move(folder);
}

QStringList HostSettings::recentFolders() const {
    return file_.value(key::recent).toStringList().mid(0, mostRecentFolders);
}

void HostSettings::forgetFolder(const QString& folder) {
    QStringList recent = recentFolders();
    recent.removeAll(folder);
    file_.setValue(key::recent, recent);
}

void HostSettings::forgetRecentFolders() {
    file_.remove(key::recent);
}

void HostSettings::keepPlace(const QMainWindow& window) {
    file_.setValue(key::geometry, window.saveGeometry());
    file_.setValue(key::state, window.saveState());
}

bool HostSettings::restorePlace(QMainWindow& window) const {
    window.restoreState(file_.value(key::state).toByteArray());
    return window.restoreGeometry(file_.value(key::geometry).toByteArray());
}

QString HostSettings::save() {
    file_.sync();
    return file_.status() == QSettings::NoError ? QString() : file_.fileName();
}

} // namespace ov::host
