// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/plugin/failure.h"
#include "plugin/plugin_library.h"

#include <QPluginLoader>
#include <QString>
#include <QtPlugin>
#include <memory>
#include <variant>

Q_DECLARE_INTERFACE(ov::IPlugInLibrary, OV_PLUGIN_LIBRARY_IID)

namespace ov::host {

// The plug-in's file. It stays loaded until the program ends: code of it may be on the stack
// longer than any object of it lives.
class PluginFile {
public:
    // `file` is absolute; empty: the one that belongs to this program. It is looked for beside
    // the program, where a build puts it, and then in the folders of libraries of the same
    // installation.
    std::variant<IPlugInLibrary*, Failure> load(const QString& file);

    // The file last tried.
    const QString& path() const { return path_; }

private:
    std::variant<IPlugInLibrary*, Failure> loadPath();

    QString path_;
    std::unique_ptr<QPluginLoader> loader_;
};

} // namespace ov::host
