// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Keys, menu and mouse of the criteria list.

#include "control/criteria/criteria_list.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/icons.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>

namespace ov {

bool CriteriaList::handleControlKey(const QKeyEvent& event) {
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
    case Qt::Key_D:
        Q_EMIT duplicateRequested();
        return true;
    case Qt::Key_Z:
        shift ? redo() : undo();
        return true;
    case Qt::Key_Y:
        redo();
        return true;
    default:
        return false;
    }
}

bool CriteriaList::handleKey(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (modifiers.testFlag(Qt::ControlModifier))
        return handleControlKey(event);
    const bool up = event.key() == Qt::Key_Up;
    if (modifiers == Qt::AltModifier && (up || event.key() == Qt::Key_Down)) {
        moveSelectedBy(up ? -1 : 1);
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Insert:
        Q_EMIT addRequested();
        return true;
    case Qt::Key_Delete:
        Q_EMIT deleteRequested();
        return true;
    case Qt::Key_F2:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT editRequested();
        return true;
    case Qt::Key_Space:
        if (hasSelected())
            tickSelected();
        return hasSelected();
    default:
        return false;
    }
}

void CriteriaList::keyPressEvent(QKeyEvent* event) {
    if (!handleKey(*event))
        QTreeWidget::keyPressEvent(event);
}

void CriteriaList::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillMenu(*menu);
    menu->popup(event->globalPos());
}

void CriteriaList::fillMenu(QMenu& menu) {
    const auto add = [&](const char* iconName, std::int32_t textId, const QKeySequence& key,
                         const std::function<void()>& act, bool enabled) {
        QAction* action = menu.addAction(QString());
        if (*iconName != '\0')
            action->setIcon(widgets::icon(iconName));
        widgets::setCaption(*action, textId);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetShortcut); // shown; the list handles the key
        action->setEnabled(enabled);
        connect(action, &QAction::triggered, this, act);
    };
    const bool any = hasSelected();
    add(
        "add", text_id::addCriterionButton, Qt::Key_Insert, [this] { Q_EMIT addRequested(); },
        true);
    add(
        "edit", text_id::editCriterionButton, Qt::Key_F2, [this] { Q_EMIT editRequested(); }, any);
    add(
        "delete", text_id::deleteCriterionButton, Qt::Key_Delete,
        [this] { Q_EMIT deleteRequested(); }, any);
    add(
        "", text_id::duplicateCriterionCommand, Qt::CTRL | Qt::Key_D,
        [this] { Q_EMIT duplicateRequested(); }, !entries_.empty());
    menu.addSeparator();
    add(
        "", text_id::undoCommand, Qt::CTRL | Qt::Key_Z, [this] { undo(); }, history_.canUndo());
    add(
        "", text_id::redoCommand, Qt::CTRL | Qt::SHIFT | Qt::Key_Z, [this] { redo(); },
        history_.canRedo());
    menu.addSeparator();
    add(
        "up", text_id::moveCriterionUp, Qt::ALT | Qt::Key_Up, [this] { moveSelectedBy(-1); }, any);
    add(
        "down", text_id::moveCriterionDown, Qt::ALT | Qt::Key_Down, [this] { moveSelectedBy(1); },
        any);
}

// Not the view's own, which removes what was moved: dropEvent() has given it its new place.
// What it is, a loop of events, is for a command, and not for the handler of the mouse.
void CriteriaList::startDrag(Qt::DropActions /*actions*/) {
    Q_EMIT dragRequested();
}

void CriteriaList::dragSelected() {
    if (!QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) // released meanwhile
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(model()->mimeData(selectedIndexes()));
    drag->exec(Qt::MoveAction);
}

void CriteriaList::dropEvent(QDropEvent* event) {
    const QPoint place = event->position().toPoint();
    const QModelIndex over = indexAt(place);
    int before = over.isValid() ? over.row() : topLevelItemCount();
    if (over.isValid() && place.y() > visualRect(over).center().y())
        ++before;
    moveSelected(before);
    event->accept();
    stopAutoScroll();
    setState(NoState);
}

} // namespace ov
