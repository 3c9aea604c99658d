// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/list_export.h"

#include "dialogs/frmExportOptionsPrint.h"
#include "export/print/export_progress.h"
#include "export/print/pdf.h"
#include "export/print/print_preview.h"
#include "platform/files.h"
#include "support/language/text_ids.h"
#include "support/modFilePath.h"
#include "widgets/captions.h"
#include "widgets/icons.h"
#include "widgets/text.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>
#include <array>
#include <utility>

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

QString fileFilter(const FormatInfo& info) {
    const auto ending =
        QLatin1String(info.ending.data(), static_cast<qsizetype>(info.ending.size()));
    return QStringLiteral("%1 (*%2)").arg(widgets::text(info.description), ending);
}

// The kind of file that is chosen stays the same.
void showWords(QFileDialog& dialog, std::optional<Format> only) {
    QStringList filters;
    for (const FormatInfo& info : formats())
        if (!only || info.format == *only)
            filters << fileFilter(info);
    const auto place = dialog.nameFilters().indexOf(dialog.selectedNameFilter());
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(place));
    widgets::setCaption(dialog, text_id::exportTitle);
}

std::string nativeOf(const QString& fileName) {
    return QFile::encodeName(fileName).toStdString();
}

// As the user typed it, with the ending of the chosen format unless it has one that is known.
std::string withEnding(std::string native, const QString& filter, Format& format) {
    for (const FormatInfo& info : formats())
        if (filter == fileFilter(info))
            format = info.format;
    if (const auto typed = formatOfFile(native))
        format = *typed;
    else
        native.append(formatInfo(format).ending);
    return native;
}

QPageSize paperOf(const QPrinter& printer) {
    const QPageSize paper = printer.pageLayout().pageSize();
    return printer.printerName().isEmpty() || !paper.isValid() ? usualPaper() : paper;
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

ListExport::ListExport(ListToExport list) : list_(std::move(list)), settings_(list_.settingsFile) {
    list_.document.style = settings_.pageStyle();
}

void ListExport::run(Command command, bool selectedOnly) {
    switch (command) {
    case Command::print:
        return print(selectedOnly);
    case Command::preview:
        return preview(selectedOnly);
    case Command::saveAs:
        return save(std::nullopt, selectedOnly);
    case Command::pdf:
        return save(Format::pdf, selectedOnly);
    case Command::xlsx:
        return save(Format::xlsx, selectedOnly);
    case Command::csv:
        return save(Format::csv, selectedOnly);
    case Command::html:
        return save(Format::html, selectedOnly);
    case Command::json:
        return save(Format::json, selectedOnly);
    case Command::copyText:
        return copyText(selectedOnly);
    }
}

const RowSource& ListExport::rows(bool selectedOnly) const {
    return selectedOnly ? list_.selected : list_.all;
}

void ListExport::tell(modUtil::Message message) const {
    if (!list_.isEnding())
        modUtil::ShowMessage(std::move(message), platform::MessageIcon::information, {},
                             list_.owner);
}

// ---- Paper

void ListExport::print(bool selectedOnly) {
    frmExportOptionsPrint options(list_.owner);
    options.DruckBereichIndex =
        selectedOnly ? frmExportOptionsPrint::markierte : frmExportOptionsPrint::alle;
    options.Titel = list_.document.title;
    options.Orientation = static_cast<std::int32_t>(list_.document.style.orientation);
    options.Font_Name = list_.document.style.fontName;
    options.Font_Size = list_.document.style.fontSize;
    options.exec();
    if (!options.OKPressed() || list_.isEnding())
        return;
    Document document = list_.document;
    document.title = options.Titel;
    document.style = {options.Font_Name, options.Font_Size,
                      static_cast<Orientation>(options.Orientation)};
    const RowSource& chosen = rows(options.DruckBereichIndex == frmExportOptionsPrint::markierte);
    if (chosen.count() == 0)
        tell(text_id::nothingSelected);
    else if (options.printer().printerName().isEmpty() &&
             options.printer().outputFileName().isEmpty())
        tell(text_id::noPrinter);
    else
        printOn(options.printer(), document, chosen);
}

void ListExport::printOn(QPrinter& printer, const Document& document, const RowSource& chosen) {
    bool stopped = false;
    bool printed = false;
    {
        ListPages pages(document, chosen, paperOf(printer));
        ExportProgress progress(text_id::printing, 2 * chosen.count(), list_.owner, list_.isEnding);
        const auto goOn = [&](std::int64_t done) {
            stopped = stopped || !progress.goOn(done);
            return !stopped;
        };
        printer.setDocName(pageText(document.title));
        printed = pages.layOut(goOn) && printPages(pages, printer, [&](std::int64_t done) {
                      return goOn(chosen.count() + done);
                  });
    }
    if (stopped)
        tell(text_id::printStopped);
    else if (!printed)
        tell(text_id::printFailed);
}

void ListExport::preview(bool selectedOnly) {
    const RowSource& chosen = rows(selectedOnly);
    const QPrinter printer(QPrinter::HighResolution);
    ListPages pages(list_.document, chosen, paperOf(printer));
    {
        ExportProgress progress(text_id::layingOutPages, chosen.count(), list_.owner,
                                list_.isEnding);
        if (!pages.layOut([&](std::int64_t done) { return progress.goOn(done); }))
            return;
    }
    PrintPreview window(pages, list_.owner);
    if (window.exec() == QDialog::Accepted && !list_.isEnding())
        print(selectedOnly);
}

// ---- Files

void ListExport::save(std::optional<Format> format, bool selectedOnly) {
    Format chosen = format.value_or(settings_.format());
    const auto path = askForFile(format, chosen);
    if (!path || !mayReplace(*path))
        return;
    settings_.setFolder(std::string(modFilePath::directoryPart(*path)));
    settings_.setFormat(chosen);
    const bool existed = platform::fileExists(*path);
    ExportResult result;
    {
        const RowSource& source = rows(selectedOnly);
        ExportProgress progress(text_id::exporting, source.count(), list_.owner, list_.isEnding);
        result = exportFile(
            list_.document, source, chosen, *path,
            [&](std::int64_t done) { return progress.goOn(done); }, writePdf);
    }
    tellResult(result, *path, existed);
}

std::optional<std::string> ListExport::askForFile(std::optional<Format> format, Format& chosen) {
    QFileDialog dialog(list_.owner);
    dialog.setObjectName(QStringLiteral("ExportFile"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // asked once the ending is known
    showWords(dialog, format);
    widgets::followLanguage(dialog, [&] { showWords(dialog, format); });
    dialog.selectNameFilter(fileFilter(formatInfo(chosen)));
    if (const std::string folder = settings_.folder(); !folder.empty())
        dialog.setDirectory(widgets::nativePathText(folder));
    QString name = widgets::toQt(list_.document.title);
    dialog.selectFile(name.replace(QLatin1Char('/'), QLatin1Char('-')));
    if (dialog.exec() != QDialog::Accepted || list_.isEnding())
        return std::nullopt;
    return platform::fromNativePath(
        withEnding(nativeOf(dialog.selectedFiles().value(0)), dialog.selectedNameFilter(), chosen));
}

bool ListExport::mayReplace(const std::string& path) const {
    return !platform::fileExists(path) ||
           (modUtil::AskYesNo({text_id::replaceFileQuestion, {platform::toNativePath(path)}}, {},
                              list_.owner) &&
            !list_.isEnding());
}

void ListExport::tellResult(const ExportResult& result, const std::string& path, bool existed) {
    const std::string native = platform::toNativePath(path);
    if (result.stopped && existed)
        tell({text_id::replacementStopped, {native}});
    else if (result.stopped)
        tell(text_id::exportStopped);
    else if (!result.status.ok())
        tell({text_id::exportFailed, {native, result.status.description()}});
}

void ListExport::copyText(bool selectedOnly) {
    const RowSource& source = rows(selectedOnly);
    ExportProgress progress(text_id::exporting, source.count(), list_.owner, list_.isEnding);
    const auto text = exportText(list_.document, source, Format::text,
                                 [&](std::int64_t done) { return progress.goOn(done); });
    if (text && !list_.isEnding())
        QGuiApplication::clipboard()->setText(QString::fromStdString(*text));
}

} // namespace ov::exporting::print
