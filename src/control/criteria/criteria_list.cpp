// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/criteria_list.h"

#include "control/criteria/list_hint.h"
#include "dictation/search/criterion.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/icons.h"
#include "widgets/text.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>

namespace ov {

using widgets::text;
using widgets::toQt;

namespace {

// Kept as bytes: a value from an old file may be no UTF-8.
std::string criterionOf(const QTreeWidgetItem& entry) {
    return entry.data(0, Qt::UserRole).toByteArray().toStdString();
}

void setCriterion(QTreeWidgetItem& entry, const std::string& criteriaString) {
    entry.setData(0, Qt::UserRole, QByteArray::fromStdString(criteriaString));
    const QString shown = toQt(modDictation::GetCriterionText(criteriaString));
    entry.setText(0, shown);
    entry.setToolTip(0, widgets::toolTipText(shown));
}

} // namespace

CriteriaList::CriteriaList(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("lvSearchCriteria"));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    header()->setSectionsClickable(false);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &CriteriaList::editRequested);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &CriteriaList::selectionMoved);
}

std::vector<std::string> CriteriaList::criteria() const {
    std::vector<std::string> all;
    all.reserve(static_cast<std::size_t>(topLevelItemCount()));
    for (int i = 0; i < topLevelItemCount(); ++i)
        all.push_back(criterionOf(*topLevelItem(i)));
    return all;
}

void CriteriaList::add(const std::string& criteriaString) {
    auto* entry = new QTreeWidgetItem(this);
    setCriterion(*entry, criteriaString);
}

bool CriteriaList::addOnce(const std::string& criteriaString) {
    QTreeWidgetItem* present = find(criteriaString);
    if (present == nullptr)
        add(criteriaString);
    show(present != nullptr ? *present : *topLevelItem(topLevelItemCount() - 1));
    return present == nullptr;
}

bool CriteriaList::replaceSelected(const std::string& criteriaString) {
    QTreeWidgetItem* entry = selectedEntry();
    if (entry == nullptr)
        return addOnce(criteriaString);
    QTreeWidgetItem* present = find(criteriaString);
    if (present != nullptr && present != entry) {
        delete entry;
        show(*present);
        return false;
    }
    setCriterion(*entry, criteriaString);
    show(*entry);
    return true;
}

void CriteriaList::removeSelected() {
    QTreeWidgetItem* entry = selectedEntry();
    if (entry == nullptr)
        return;
    const int place = indexOfTopLevelItem(entry);
    delete entry;
    if (topLevelItemCount() > 0)
        show(*topLevelItem(std::min(place, topLevelItemCount() - 1)));
    else
        Q_EMIT selectionMoved();
}

std::string CriteriaList::selected() const {
    const QTreeWidgetItem* entry = selectedEntry();
    return entry != nullptr ? criterionOf(*entry) : std::string();
}

QTreeWidgetItem* CriteriaList::selectedEntry() const {
    const QList<QTreeWidgetItem*> chosen = selectedItems();
    return chosen.isEmpty() ? nullptr : chosen.first();
}

QTreeWidgetItem* CriteriaList::find(const std::string& criteriaString) const {
    for (int i = 0; i < topLevelItemCount(); ++i)
        if (modDictation::isSameCriterion(criterionOf(*topLevelItem(i)), criteriaString))
            return topLevelItem(i);
    return nullptr;
}

void CriteriaList::show(QTreeWidgetItem& entry) {
    setCurrentItem(&entry);
    scrollToItem(&entry);
}

void CriteriaList::retranslate() {
    setHeaderLabel(text(text_id::criteriaColumn));
    setAccessibleName(text(text_id::criteriaGroup));
    for (int i = 0; i < topLevelItemCount(); ++i)
        setCriterion(*topLevelItem(i), criterionOf(*topLevelItem(i)));
}

void CriteriaList::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Insert:
        Q_EMIT addRequested();
        break;
    case Qt::Key_Delete:
        Q_EMIT deleteRequested();
        break;
    case Qt::Key_F2:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT editRequested();
        break;
    default:
        QTreeWidget::keyPressEvent(event);
    }
}

void CriteriaList::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto addAction = [&](const char* iconName, std::int32_t textId, const QKeySequence& key,
                               void (CriteriaList::*request)(), bool enabled) {
        QAction* action = menu->addAction(widgets::icon(iconName), QString());
        widgets::setCaption(*action, textId);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetShortcut); // shown; the list handles the key
        action->setEnabled(enabled);
        connect(action, &QAction::triggered, this, request);
    };
    addAction("add", text_id::addCriterionButton, Qt::Key_Insert, &CriteriaList::addRequested,
              true);
    addAction("edit", text_id::editCriterionButton, Qt::Key_F2, &CriteriaList::editRequested,
              hasSelected());
    addAction("delete", text_id::deleteCriterionButton, Qt::Key_Delete,
              &CriteriaList::deleteRequested, hasSelected());
    menu->popup(event->globalPos());
}

void CriteriaList::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() == 0)
        paintListHint(*viewport(), text(text_id::criteriaHint));
}

} // namespace ov
