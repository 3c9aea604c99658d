// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemView>
#include <QApplication>
#include <string>

namespace ov::tests {

// The list that is open below a line; nullptr: none is.
inline QAbstractItemView* offeredList() {
    return qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
}
// "Anna; Berta; "
inline std::string offered() {
    QString all;
    const QAbstractItemView* list = offeredList();
    for (int row = 0; list != nullptr && row < list->model()->rowCount(); ++row)
        all += list->model()->index(row, 0).data().toString() + QLatin1String("; ");
    return all.toStdString();
}

} // namespace ov::tests
