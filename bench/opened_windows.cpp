// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "bench/opened_windows.h"

#include "control/results/result_list.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTableView>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace ov::bench {

namespace {

void press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers) {
    for (const QEvent::Type type : {QEvent::ShortcutOverride, QEvent::KeyPress}) {
        QKeyEvent event(type, key, modifiers);
        QCoreApplication::sendEvent(&widget, &event);
    }
}

// Of five, the median.
template <typename Open>
double milliseconds(Open open) {
    std::vector<double> times;
    while (times.size() < 5) {
        QElapsedTimer clock;
        QTimer look;
        bool isClosed = false;
        look.callOnTimeout([&] {
            QWidget* opened = QApplication::activePopupWidget();
            if (opened == nullptr)
                opened = QApplication::activeModalWidget();
            if (opened == nullptr || !opened->isVisible())
                return;
            opened->repaint();
            times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
            opened->close();
            isClosed = true;
            look.stop();
        });
        look.start(0);
        clock.start();
        open();
        while (!isClosed)
            QCoreApplication::processEvents();
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

} // namespace

void measureOpenedWindows(QTableView& list) {
    list.selectRow(list.model()->rowCount() / 2);
    std::printf("details of a row                          %8.1f ms\n",
                milliseconds([&] { press(list, Qt::Key_Return, Qt::AltModifier); }));
    std::printf("menu of the titles                        %8.1f ms\n",
                milliseconds([&] { dynamic_cast<ResultList&>(list).openHeaderMenu(); }));
    list.clearSelection();
}

} // namespace ov::bench
