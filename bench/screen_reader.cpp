// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "bench/screen_reader.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QTableView>
#include <array>
#include <cstdio>
#include <functional>

namespace ov::bench {

namespace {

struct Request {
    const char* name;
    std::function<void()> ask;
};

double milliseconds(const std::function<void()>& run) {
    QElapsedTimer clock;
    clock.start();
    run();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

void askAllChildren(const QAccessibleInterface& list) {
    for (int i = 0; i < list.childCount(); ++i)
        list.child(i)->text(QAccessible::Name);
}

} // namespace

void measureScreenReader(QTableView& view) {
    QAccessible::setActive(true);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&view);
    QAccessibleTableInterface* table = list->tableInterface();
    const int last = table->rowCount() - 1;
    const std::array requests{
        Request{"select all", [&] { view.selectAll(); }},
        Request{"all children", [&] { askAllChildren(*list); }},
        Request{"number of selected rows", [&] { table->selectedRowCount(); }},
        Request{"selected rows", [&] { table->selectedRows(); }},
        Request{"number of selected cells", [&] { table->selectedCellCount(); }},
        Request{"selected cells", [&] { table->selectedCells(); }},
        Request{"last cell", [&] { table->cellAt(last, 1)->text(QAccessible::Name); }},
        Request{"its place", [&] { list->indexOfChild(table->cellAt(last, 1)); }},
        Request{"its state", [&] { table->cellAt(last, 1)->state(); }},
        Request{"unselect a row", [&] { table->unselectRow(last / 2); }},
        Request{"number of selected rows, two ranges", [&] { table->selectedRowCount(); }},
        Request{"go to the end", [&] { view.setCurrentIndex(view.model()->index(last, 1)); }}};
    for (const Request& request : requests)
        std::printf("screen reader: %-26s %8.1f ms\n", request.name, milliseconds(request.ask));
    QAccessible::setActive(false);
    view.clearSelection();
}

} // namespace ov::bench
