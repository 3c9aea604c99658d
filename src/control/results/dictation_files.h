// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QUrl>
#include <string>

class QMimeData;

namespace ov {

// Of a path, by its bytes: a name need not be UTF-8.
QUrl fileUrl(const std::string& path);

// Files as desktops hand them round, to be copied where they are dropped or pasted. The caller owns
// it.
QMimeData* fileContent(const QList<QUrl>& files);

} // namespace ov
