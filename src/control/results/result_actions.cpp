// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What can be done with the selected rows: the context menu and the clipboard.

#include "control/results/dictation_files.h"
#include "control/results/result_list.h"
#include "platform/user_interface.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/icons.h"
#include "widgets/text.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>

namespace ov {

void ResultList::copySelectedRows(const std::function<bool()>& goOn) {
    const std::vector<int> columns = columns_->shown();
    QString rows;
    const auto addRow = [&](const auto& textOf) {
        for (const int column : columns)
            rows += textOf(column) + QLatin1Char(column == columns.back() ? '\n' : '\t');
    };
    addRow([&](int column) {
        return widgets::cellText(model_->columns().at(static_cast<std::size_t>(column)).caption);
    });
    QList<QUrl> files;
    selection_.forEachRow([&](int row) {
        addRow([&](int column) { return widgets::cellText(model_->text(row, column)); });
        files.append(fileUrl(model_->path(row)));
        platform::processMessagesNowAndThen();
        return goOn();
    });
    if (files.isEmpty() || !goOn())
        return;
    QMimeData* content = fileContent(files); // the clipboard owns it
    content->setText(rows);
    QApplication::clipboard()->setMimeData(content);
}

void ResultList::copySelectedPaths(const std::function<bool()>& goOn) {
    QString paths;
    selection_.forEachRow([&](int row) {
        paths += widgets::nativePathText(model_->path(row)) + QLatin1Char('\n');
        platform::processMessagesNowAndThen();
        return goOn();
    });
    if (!paths.isEmpty() && goOn())
        QApplication::clipboard()->setText(paths.chopped(1));
}

QMenu* ResultList::buildMenu() {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool any = selectionModel()->hasSelection();
    const auto add = [&](const char* iconName, std::int32_t textId, const QKeySequence& key,
                         bool enabled, auto action) {
        QAction* entry = menu->addAction(widgets::icon(iconName), QString());
        widgets::setCaption(*entry, textId);
        entry->setShortcut(key);
        entry->setShortcutContext(Qt::WidgetShortcut); // shown; the list handles the key
        entry->setEnabled(enabled);
        connect(entry, &QAction::triggered, this, action);
    };
    add("play", text_id::menuPlay, Qt::Key_Return, any, &ResultList::playRequested);
    add("stop", text_id::menuStop, {}, any, &ResultList::stopPlayingRequested);
    add("log", text_id::menuShowLog, {}, any, &ResultList::showLogRequested);
    add("", text_id::menuDetails, Qt::ALT | Qt::Key_Return, any, &ResultList::detailsRequested);
    menu->addSeparator();
    add("copy", text_id::menuCopyRows, QKeySequence::Copy, any, &ResultList::copyRequested);
    add("", text_id::menuCopyFiles, Qt::CTRL | Qt::SHIFT | Qt::Key_C, any,
        &ResultList::copyFilesRequested);
    add("", text_id::menuCopyPath, {}, any, &ResultList::copyPathsRequested);
    add("folder", text_id::menuOpenFolder, {}, any, &ResultList::openFolderRequested);
    menu->addSeparator();
    add("", text_id::menuSelectAll, QKeySequence::SelectAll, !isEmpty(), [this] { selectAll(); });
    add("columns", text_id::menuColumns, {}, true, &ResultList::columnsRequested);
    add("", text_id::menuSearchAfresh, Qt::SHIFT | Qt::Key_F5, true,
        &ResultList::searchAfreshRequested);
    menu->addActions(actions());
    return menu;
}

HeaderMenu ResultList::headerMenu() {
    return {*this, {shownFields(), sortedBy(), secondSort_}, [this](HeaderChoice choice) {
                Q_EMIT headerRequested(choice);
            }};
}

void ResultList::openColumnMenu(int column, QPoint place) {
    const bool isOne = column >= 0;
    const std::int32_t field = isOne ? model_->columns().at(static_cast<std::size_t>(column)).field
                                     : modDictation::noField;
    headerMenu().ofColumn(field)->popup(place);
}

void ResultList::openHeaderMenu() {
    headerMenu().ofAll()->popup(viewport()->mapToGlobal(QPoint(0, 0)));
}

void ResultList::contextMenuEvent(QContextMenuEvent* event) {
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid())
        place = viewport()->mapToGlobal(visualRect(currentIndex()).center());
    buildMenu()->popup(place);
}

} // namespace ov
