// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/resources.h"

#include <QDir>

// The macro must stand outside of any namespace.
static void initWidgetResources() {
    Q_INIT_RESOURCE(widgets);
}

namespace ov::widgets {

void initResources() {
    static const bool once = [] {
        initWidgetResources();
        return true;
    }();
    static_cast<void>(once);
}

} // namespace ov::widgets
