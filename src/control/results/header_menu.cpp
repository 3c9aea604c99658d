// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/results/header_menu.h"

#include "dictation/field_table.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QMenu>
#include <algorithm>

namespace ov {

namespace {

using modDictation::SortKey;

// "&" would be an accelerator.
QString captionOf(std::int32_t field) {
    return widgets::toQt(modDictation::GetSearchFieldCaption(field, true))
        .replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

QMenu* HeaderMenu::make() const {
    auto* menu = new QMenu(&parent_);
    menu->setObjectName(QStringLiteral("HeaderMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    return menu;
}

QMenu* HeaderMenu::ofColumn(std::int32_t field) const {
    QMenu* menu = make();
    if (field != modDictation::noField) {
        addColumn(*menu, field);
        menu->addSeparator();
    }
    addChoiceOfColumns(*menu);
    return menu;
}

QMenu* HeaderMenu::ofAll() const {
    QMenu* menu = make();
    for (const std::int32_t field : columns_.shown)
        addColumn(*menu->addMenu(captionOf(field)), field);
    menu->addSeparator();
    addChoiceOfColumns(*menu);
    return menu;
}

void HeaderMenu::add(QMenu& menu, std::int32_t textId, HeaderChoice choice, bool enabled) const {
    QAction* entry = menu.addAction(QString());
    widgets::setCaption(*entry, textId);
    entry->setEnabled(enabled);
    QObject::connect(entry, &QAction::triggered, &parent_,
                     [choose = choose_, choice] { choose(choice); });
}

void HeaderMenu::addTick(QMenu& menu, std::int32_t textId, HeaderChoice choice, bool ticked) const {
    add(menu, textId, choice, true);
    QAction* entry = menu.actions().constLast();
    entry->setCheckable(true);
    entry->setChecked(ticked);
}

// The second key is taken back by choosing it again.
void HeaderMenu::addSorts(QMenu& menu, std::int32_t field) const {
    for (const bool descending : {false, true}) {
        const SortKey key{field, descending};
        addTick(menu, descending ? text_id::sortDown : text_id::sortUp, {HeaderChoice::sort, key},
                columns_.sorted == key);
    }
    if (columns_.sorted.field == field)
        return;
    for (const bool descending : {false, true}) {
        const SortKey key{field, descending};
        const bool isSecond = columns_.second == key;
        addTick(menu, descending ? text_id::sortSecondDown : text_id::sortSecondUp,
                {HeaderChoice::sortSecond, isSecond ? SortKey() : key}, isSecond);
    }
}

void HeaderMenu::addColumn(QMenu& menu, std::int32_t field) const {
    addSorts(menu, field);
    menu.addSeparator();
    const SortKey key{field, false};
    add(menu, text_id::fitWidth, {HeaderChoice::fitWidth, key}, true);
    add(menu, text_id::moveColumnLeft, {HeaderChoice::moveLeft, key},
        columns_.shown.front() != field);
    add(menu, text_id::moveColumnRight, {HeaderChoice::moveRight, key},
        columns_.shown.back() != field);
}

// The last column stays: without titles nobody would find this menu again.
void HeaderMenu::addChoiceOfColumns(QMenu& menu) const {
    QMenu* fields = menu.addMenu(QString());
    widgets::setCaption(*fields->menuAction(), text_id::columnTicks);
    for (const modDictation::SearchField& field : modDictation::searchFields()) {
        if (!field.Selectable)
            continue;
        QAction* entry = fields->addAction(captionOf(field.Id));
        entry->setCheckable(true);
        entry->setChecked(field.Visible);
        const bool isShown = std::ranges::find(columns_.shown, field.Id) != columns_.shown.end();
        entry->setEnabled(!isShown || columns_.shown.size() > 1);
        const HeaderChoice choice{isShown ? HeaderChoice::hide : HeaderChoice::show,
                                  {field.Id, false}};
        QObject::connect(entry, &QAction::triggered, &parent_,
                         [choose = choose_, choice] { choose(choice); });
    }
    add(menu, text_id::menuColumns, {HeaderChoice::choose, {}}, true);
    if (columns_.second.field != modDictation::noField) // its column may be hidden
        add(menu, text_id::withoutSecondSort, {HeaderChoice::sortSecond, {}}, true);
    add(menu, text_id::resetColumns, {HeaderChoice::reset, {}}, true);
}

} // namespace ov
