// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/control/control_fixture.h"

#include <QDropEvent>
#include <QMimeData>

namespace ov::tests {

// What the tests of the list of criteria share.
class CriteriaListTest : public ControlTest {
protected:
    void open(const std::string& authors) {
        openWith(linesOf(authors));
        criteria().setFocus();
    }
    static std::string linesOf(const std::string& authors) {
        std::string lines;
        for (const char author : authors)
            lines += std::string("5|17|") + author + "|\r\n";
        return lines;
    }
    // "A>BC": B is in a group with A.
    void openGrouped(const std::string& list) {
        std::string authors;
        std::vector<int> members;
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (list[i] == '>')
                continue;
            if (i > 0 && list[i - 1] == '>')
                members.push_back(static_cast<int>(authors.size()));
            authors += list[i];
        }
        closeControl(); // which keeps its criteria
        for (const char* beside : {"SearchCriteria.off", "SearchCriteria.grp"})
            fs::remove(folder() / beside);
        open(authors);
        select(members);
        key(criteria(), Qt::Key_Right, Qt::AltModifier);
        select({});
    }
    void altKey(Qt::Key arrow) { key(criteria(), arrow, Qt::AltModifier); }
    void controlKey(Qt::Key letter) { key(criteria(), letter, Qt::ControlModifier); }
    void spaceOn(const std::vector<int>& rows) {
        select(rows);
        key(criteria(), Qt::Key_Space);
    }
    void groupFrom(int row) {
        select({row});
        altKey(Qt::Key_Right);
    }
    // Answers the editor of that row, or of another one like it.
    void edit(int row, const char* author) {
        select({row});
        enter([this] { key(criteria(), Qt::Key_F2); }, author);
    }
    void duplicate(int row, const char* author) {
        select({row});
        enter([this] { controlKey(Qt::Key_D); }, author);
    }
    void select(const std::vector<int>& rows) {
        criteria().clearSelection();
        for (const int row : rows)
            criteria().topLevelItem(row)->setSelected(true);
    }
    QPoint middle(int row) {
        return criteria().visualItemRect(criteria().topLevelItem(row)).center();
    }
    // Drags the selected ones to that place.
    void drop(QPoint place) {
        criteria().setDragDropMode(QAbstractItemView::DragDrop); // the drag comes from nowhere
        const std::unique_ptr<QMimeData> data(
            criteria().model()->mimeData({criteria().model()->index(0, 0)}));
        QDragEnterEvent enter(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(criteria().viewport(), &enter);
        QDropEvent event(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(criteria().viewport(), &event);
        EXPECT_TRUE(event.isAccepted()) << "who drags learns that it is moved";
    }
};

} // namespace ov::tests
