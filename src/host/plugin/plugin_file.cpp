// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/plugin/plugin_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <optional>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

#ifdef Q_OS_WIN
constexpr auto fileName = "OVSearch.dll"_L1;
#else
constexpr auto fileName = "libOVSearch.so"_L1;
#endif

// The subfolders of `folder` whose names fit `pattern`.
QStringList subfolders(const QString& folder, const QString& pattern) {
    QStringList found;
    const QDir dir(folder);
    for (const QString& name : dir.entryList({pattern}, QDir::Dirs | QDir::NoDotAndDotDot))
        found += dir.filePath(name);
    return found;
}

// Every place the file may have, the likeliest first. Distributions part their folders of
// libraries by machine: lib, lib64, lib/x86_64-linux-gnu.
QStringList candidates() {
    const QString programs = QCoreApplication::applicationDirPath();
    QStringList files{programs + u'/' + fileName};
    QStringList libraries = subfolders(QDir::cleanPath(programs + "/.."_L1), u"lib*"_s);
    libraries += subfolders(QDir::cleanPath(programs + "/../lib"_L1), u"*"_s);
    for (const QString& folder : libraries)
        files += folder + "/ovsearch/"_L1 + fileName;
    return files;
}

QString native(const QString& path) {
    return QDir::toNativeSeparators(path);
}

// "1", or "1–3" when older ones do as well.
QString wantedVersions() {
    QString newest = QString::number(pluginInterfaceVersion);
    if constexpr (oldestPluginInterfaceVersion == pluginInterfaceVersion)
        return newest;
    return QString::number(oldestPluginInterfaceVersion) + u'–' + newest;
}

// Looks at what the file tells of itself before any of its code runs.
std::optional<Failure> mismatch(const QPluginLoader& loader, const QString& path) {
    const QJsonObject data = loader.metaData();
    if (data.isEmpty())
        return Failure{Text::noPlugIn, {native(path)}};
    const QString interfaceId = data.value("IID"_L1).toString();
    const QString wanted = QStringLiteral(OV_PLUGIN_LIBRARY_IID);
    if (interfaceId != wanted)
        return Failure{Text::otherInterface, {native(path), interfaceId, wanted}};
    const QJsonValue version = data.value("MetaData"_L1).toObject().value("interfaceVersion"_L1);
    const int number = version.toInt(0);
    if (number < oldestPluginInterfaceVersion || number > pluginInterfaceVersion)
        return Failure{Text::otherVersion,
                       {native(path), QString::number(number), wantedVersions()}};
    return std::nullopt;
}

} // namespace

std::variant<IPlugInLibrary*, Failure> PluginFile::load(const QString& file) {
    path_ = file;
    if (!file.isEmpty())
        return loadPath();
    const QStringList places = candidates();
    for (const QString& place : places) {
        if (!QFileInfo::exists(place))
            continue;
        path_ = place;
        return loadPath();
    }
    return Failure{Text::notFound, {native(places.join(", "_L1))}};
}

std::variant<IPlugInLibrary*, Failure> PluginFile::loadPath() {
    if (!QFileInfo::exists(path_))
        return Failure{Text::missingFile, {native(path_)}};
    loader_ = std::make_unique<QPluginLoader>(path_);
    if (const auto failure = mismatch(*loader_, path_))
        return *failure;
    QObject* instance = loader_->instance();
    if (instance == nullptr)
        return Failure{Text::loaderFailed, {native(path_), loader_->errorString()}};
    auto* library = qobject_cast<IPlugInLibrary*>(instance);
    if (library == nullptr)
        return Failure{Text::noLibrary, {native(path_), QStringLiteral(OV_PLUGIN_LIBRARY_IID)}};
    return library;
}

} // namespace ov::host
