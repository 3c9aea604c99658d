// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/paths.h"

#include <QDir>
#include <QFile>
#include <algorithm>

namespace ov::host {

namespace {

QString fromBytes(std::string_view bytes) {
    return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

} // namespace

std::string boundaryPath(std::string_view native) {
    // Two separators would be a share, which only Windows has.
    if (QDir::separator() == u'/')
        while (native.starts_with("//"))
            native.remove_prefix(1);
    std::string path(native);
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string boundaryDirectory(std::string_view native) {
    std::string path = boundaryPath(native);
    if (!path.empty() && !path.ends_with('\\'))
        path.push_back('\\');
    return path;
}

std::string nativeBytes(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString shownPath(std::string_view boundary) {
    std::string native(boundary);
    std::replace(native.begin(), native.end(), '\\', '/');
    return QDir::toNativeSeparators(fromBytes(native));
}

} // namespace ov::host
