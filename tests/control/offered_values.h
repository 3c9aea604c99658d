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
// "Anna; *Berta; " with a star at the one that is chosen.
inline std::string offered() {
    std::string all;
    const QAbstractItemView* list = offeredList();
    for (int row = 0; list != nullptr && row < list->model()->rowCount(); ++row) {
        const QModelIndex value = list->model()->index(row, 0);
        all += (list->currentIndex() == value ? "*" : "") + value.data().toString().toStdString();
        all += "; ";
    }
    return all;
}

} // namespace ov::tests
