// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The window that lists all keys.

#include "support/language/help_text_ids.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/first_size.h"
#include "widgets/help/shortcuts.h"
#include "widgets/text.h"

#include <QDialog>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <array>
#include <utility>

namespace ov::widgets {

namespace {

constexpr const char* shortcutsName = "frmShortcuts";

constexpr std::array places{std::pair(KeyPlace::anywhere, text_id::title),
                            std::pair(KeyPlace::criteria, text_id::criteriaGroup),
                            std::pair(KeyPlace::results, text_id::resultList),
                            std::pair(KeyPlace::position, text_id::seekTip),
                            std::pair(KeyPlace::preview, text_id::previewTitle)};

QString namesOf(const KeyText& keyText) {
    QStringList names;
    const QList<QKeySequence> keys = keysOf(keyText);
    for (const QKeySequence& key : keys)
        names.append(key.toString(QKeySequence::NativeText));
    return names.join(QLatin1String(", "));
}

void fill(QTreeWidget& list) {
    list.clear();
    list.setHeaderLabels({text(text_id::keysColumn), text(text_id::keysDoColumn)});
    for (const auto& [place, heading] : places) {
        auto* group = new QTreeWidgetItem(&list, {text(heading)});
        group->setFirstColumnSpanned(true);
        QFont bold = list.font();
        bold.setBold(true);
        group->setFont(0, bold);
        for (const KeyText& keyText : keyTexts())
            if (keyText.place == place)
                new QTreeWidgetItem(group, {namesOf(keyText), plainText(keyText.text)});
    }
    list.expandAll();
    list.resizeColumnToContents(0);
}

// So that each text is read whole.
int widthOf(const QAbstractItemView& list) {
    const QStyle& style = *list.style();
    return list.sizeHintForColumn(0) + list.sizeHintForColumn(1) +
           style.pixelMetric(QStyle::PM_ScrollBarExtent) +
           style.pixelMetric(QStyle::PM_ScrollView_ScrollBarSpacing) + 2 * list.frameWidth();
}

void openShortcuts(QWidget& owner) {
    auto* window = new QDialog(&owner);
    window->setObjectName(QLatin1String(shortcutsName));
    window->setAttribute(Qt::WA_DeleteOnClose);
    setCaption(*window, text_id::keyShortcuts);
    auto* list = new QTreeWidget(window);
    list->setObjectName(QStringLiteral("lstShortcuts"));
    list->setRootIsDecorated(false);
    list->setItemsExpandable(false);
    setSpokenName(*list, text_id::keyShortcuts);
    fill(*list);
    followLanguage(*window, [window, list] {
        fill(*list);
        resizeOnScreen(*window, window->size().expandedTo({widthOf(*list), 0}));
    });
    auto* column = new QVBoxLayout(window);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(list);
    resizeOnScreen(*window, {widthOf(*list), 560});
}

} // namespace

void showShortcuts(QWidget& owner) {
    const auto find = [&] {
        return owner.findChild<QDialog*>(QLatin1String(shortcutsName), Qt::FindDirectChildrenOnly);
    };
    if (find() == nullptr)
        openShortcuts(owner);
    find()->show();
    find()->raise();
    find()->activateWindow();
}

} // namespace ov::widgets
