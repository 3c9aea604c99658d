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

// Also those with Ins and Del, which mean something else alone.
bool CriteriaList::handleClipboardKey(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Copy))
        copySelected();
    else if (event.matches(QKeySequence::Cut))
        cutSelected();
    else if (event.matches(QKeySequence::Paste))
        Q_EMIT pasteRequested();
    else
        return false;
    return true;
}

// Alt and an arrow.
bool CriteriaList::handleArrangingKey(int key) {
    switch (key) {
    case Qt::Key_Up:
        moveSelectedUp();
        return true;
    case Qt::Key_Down:
        moveSelectedDown();
        return true;
    case Qt::Key_Left:
        outdentSelected();
        return true;
    case Qt::Key_Right:
        indentSelected();
        return true;
    default:
        return false;
    }
}

bool CriteriaList::handleKey(const QKeyEvent& event) {
    if (handleClipboardKey(event))
        return true;
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (modifiers.testFlag(Qt::ControlModifier))
        return handleControlKey(event);
    if (modifiers == Qt::AltModifier && handleArrangingKey(event.key()))
        return true;
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

void CriteriaList::addToMenu(QMenu& menu, const MenuEntry& entry) {
    QAction* action = menu.addAction(QString());
    if (*entry.icon != '\0')
        action->setIcon(widgets::icon(entry.icon));
    widgets::setCaption(*action, entry.text);
    action->setShortcut(entry.key);
    action->setShortcutContext(Qt::WidgetShortcut); // shown; the list handles the key
    action->setEnabled(entry.enabled);
    connect(action, &QAction::triggered, this, [this, act = entry.act] { act(*this); });
}

void CriteriaList::fillMenu(QMenu& menu) {
    const bool any = hasSelected();
    const std::initializer_list<MenuEntry> entries{
        {"add", text_id::addCriterionButton, Qt::Key_Insert, &CriteriaList::addRequested, true},
        {"edit", text_id::editCriterionButton, Qt::Key_F2, &CriteriaList::editRequested, any},
        {"delete", text_id::deleteCriterionButton, Qt::Key_Delete, &CriteriaList::deleteRequested,
         any},
        {"", text_id::duplicateCriterionCommand, Qt::CTRL | Qt::Key_D,
         &CriteriaList::duplicateRequested, !entries_.empty()},
        {},
        {"", text_id::undoCommand, Qt::CTRL | Qt::Key_Z, &CriteriaList::undo, history_.canUndo()},
        {"", text_id::redoCommand, Qt::CTRL | Qt::SHIFT | Qt::Key_Z, &CriteriaList::redo,
         history_.canRedo()},
        {},
        {"", text_id::cutCriteria, Qt::CTRL | Qt::Key_X, &CriteriaList::cutSelected, any},
        {"", text_id::copyCriteria, Qt::CTRL | Qt::Key_C, &CriteriaList::copySelected, any},
        {"", text_id::pasteCriteria, Qt::CTRL | Qt::Key_V, &CriteriaList::pasteRequested, true},
        {},
        {"up", text_id::moveCriterionUp, Qt::ALT | Qt::Key_Up, &CriteriaList::moveSelectedUp, any},
        {"down", text_id::moveCriterionDown, Qt::ALT | Qt::Key_Down,
         &CriteriaList::moveSelectedDown, any},
        {"", text_id::indentCriterion, Qt::ALT | Qt::Key_Right, &CriteriaList::indentSelected,
         canIndent(true)},
        {"", text_id::outdentCriterion, Qt::ALT | Qt::Key_Left, &CriteriaList::outdentSelected,
         canIndent(false)}};
    for (const MenuEntry& entry : entries) {
        if (entry.text == 0)
            menu.addSeparator();
        else
            addToMenu(menu, entry);
    }
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
    change(moved(entries_, selectedRows(), before));
    event->accept();
    stopAutoScroll();
    setState(NoState);
}

} // namespace ov
