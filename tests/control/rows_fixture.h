// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/results/result_model.h"
#include "support/modINI.h"
#include "tests/window/window_fixture.h"

#include <QHelpEvent>
#include <QToolTip>

namespace ov::tests {

// A control whose list of hits is looked at.
class RowsTest : public WindowTest {
public:
    const ResultModel& model() { return dynamic_cast<const ResultModel&>(*results().model()); }
    int column(int field) { return model().columnOf(field); }
    // "*Anna; Berta; ": what the column of that field shows, with a star at the selected rows.
    std::string rows(int field = 5) {
        std::string all;
        for (int row = 0; row < model().rowCount(); ++row)
            all += (results().selectionModel()->isRowSelected(row) ? "*" : "") +
                   model().text(row, column(field)).toStdString() + "; ";
        return all;
    }
    // The list that is open below a line; nullptr: none is.
    static QAbstractItemView* offeredList() {
        return qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
    }
    // "Anna; Berta; "
    static std::string offered() {
        QString all;
        const QAbstractItemView* list = offeredList();
        for (int row = 0; list != nullptr && row < list->model()->rowCount(); ++row)
            all += list->model()->index(row, 0).data().toString() + QLatin1String("; ");
        return all.toStdString();
    }
    // Seen, so that it has a picture.
    QModelIndex cell(int row, int field) {
        const QModelIndex index = model().index(row, column(field));
        results().scrollTo(index);
        return index;
    }
    QImage picture(const QModelIndex& cell) {
        results().scrollTo(cell);
        return results().viewport()->grab(results().visualRect(cell)).toImage();
    }
    std::string toolTip(int row, int field) {
        const QPoint place = results().visualRect(cell(row, field)).center();
        QHelpEvent asked(QEvent::ToolTip, place, results().viewport()->mapToGlobal(place));
        QApplication::sendEvent(results().viewport(), &asked);
        return QToolTip::text().toStdString();
    }
    std::string text(const char* label) { return widget<QLabel>(label).text().toStdString(); }
    std::string setting(const char* key) {
        return modINI::ReadIniValueDirect("OVSearch.ctrlOVSearch", key, "", path("local.ini"));
    }
    void waitFor(const std::function<bool()>& seen) { EXPECT_TRUE(QTest::qWaitFor(seen, 60000)); }
};

} // namespace ov::tests
