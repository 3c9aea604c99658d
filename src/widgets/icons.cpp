// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/icons.h"

#include <QFile>
#include <QHash>
#include <QString>

// A static library's resources are linked in only when somebody asks for them; the macro must
// stand outside of any namespace.
static void initWidgetResources() {
    Q_INIT_RESOURCE(widgets);
}

namespace ov::widgets {

QIcon icon(const char* name) {
    thread_local QHash<QString, QIcon> loaded;
    if (loaded.isEmpty())
        initWidgetResources();
    const QString path = QStringLiteral(":/ovsearch/%1.svg").arg(QLatin1String(name));
    auto found = loaded.find(path);
    if (found == loaded.end())
        found = loaded.insert(path, QFile::exists(path) ? QIcon(path) : QIcon());
    return *found;
}

} // namespace ov::widgets
