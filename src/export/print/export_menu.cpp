// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/print/export_menu.h"

#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/icons.h"

#include <QMenu>
#include <array>
#include <cstdint>

namespace ov::exporting::print {

namespace {

struct Entry {
    Command command;
    std::int32_t text;
    const char* icon;
    bool endsGroup;
};
constexpr std::array<Entry, 8> entries = {{
    {Command::print, text_id::menuPrint, "print", false},
    {Command::preview, text_id::menuPreview, "", true},
    {Command::pdf, text_id::menuExportPdf, "", false},
    {Command::xlsx, text_id::menuExportXlsx, "", false},
    {Command::csv, text_id::menuExportCsv, "", false},
    {Command::html, text_id::menuExportHtml, "", false},
    {Command::json, text_id::menuExportJson, "", true},
    {Command::copyText, text_id::menuCopyText, "copy", false},
}};

void addEntries(QMenu& menu, bool selectedOnly, const std::function<void(Command, bool)>& run) {
    for (const Entry& entry : entries) {
        QAction* action = menu.addAction(widgets::icon(entry.icon), QString());
        widgets::setCaption(*action, entry.text);
        if (!selectedOnly && entry.command == Command::print)
            action->setShortcut(QKeySequence::Print);
        action->setShortcutContext(Qt::WidgetShortcut); // shown; the window handles the key
        QObject::connect(
            action, &QAction::triggered, &menu,
            [run, command = entry.command, selectedOnly] { run(command, selectedOnly); });
        if (entry.endsGroup)
            menu.addSeparator();
    }
}

} // namespace

void addCommands(QMenu& menu, bool someSelected, const std::function<void(Command, bool)>& run) {
    addEntries(menu, false, run);
    menu.addSeparator();
    QMenu* selected = menu.addMenu(QString());
    widgets::setCaption(*selected, text_id::menuSelectedOnly);
    selected->setEnabled(someSelected);
    addEntries(*selected, true, run);
}

QAction* addAllColumns(QMenu& menu, bool ticked, const std::function<void(bool)>& choose) {
    menu.addSeparator();
    QAction* tick = menu.addAction(QString());
    widgets::setCaption(*tick, text_id::allColumns);
    tick->setCheckable(true);
    tick->setChecked(ticked);
    QObject::connect(tick, &QAction::triggered, &menu, choose);
    return tick;
}

} // namespace ov::exporting::print
