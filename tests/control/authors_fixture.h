// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/results/result_list.h"
#include "tests/control/rows_fixture.h"

namespace ov {

// A list of two dictations each of Anna and Berta.
class AuthorRows : public RowsTest {
protected:
    AuthorRows() {
        for (const char* name :
             {"2$WAV@@14$Berta@@12$2@@6$00$10$00", "2$WAV@@14$Anna@@12$1@@6$01$00$05",
              "2$ROH@@14$Berta@@12$1@@6$x", "2$ROH@@14$Anna@@12$2@@11$Knie & Hüfte"})
            store.add(std::string(name) + ".WAV");
    }
    void open() {
        openAndSearch();
        clickHeader(column(5));
    }
    // The menu of the title of that field, with the mouse.
    void openMenu(int field) {
        QHeaderView* header = results().horizontalHeader();
        results().scrollTo(model().index(0, column(field)));
        const QPoint place(header->sectionViewportPosition(column(field)) + 3, 3);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                header->viewport()->mapToGlobal(place));
        QApplication::sendEvent(header->viewport(), &event);
    }
    void choose(int field, const char* entry) {
        openMenu(field);
        click(entry);
    }
    std::string authorsWithNumbers() {
        std::string all;
        for (int row = 0; row < model().rowCount(); ++row)
            all +=
                (model().text(row, column(5)) + model().text(row, column(8))).toStdString() + " ";
        return all;
    }
    std::string titles() {
        std::string all;
        for (const std::int32_t field : dynamic_cast<ResultList&>(results()).shownFields())
            all += std::to_string(field) + " ";
        return all;
    }
    std::string focus() { return window().focusWidget()->objectName().toStdString(); }
};

} // namespace ov
