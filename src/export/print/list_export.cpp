// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/list_export.h"

#include "export/print/export_progress.h"
#include "export/print/file_dialog.h"
#include "export/print/pdf.h"
#include "export/telling_columns.h"
#include "platform/files.h"
#include "platform/threads/errand.h"
#include "support/language/text_ids.h"
#include "support/modFilePath.h"
#include "support/patient_files.h"
#include "widgets/text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <utility>

namespace ov::exporting::print {

ListExport::ListExport(ListToExport list) : list_(std::move(list)) {
    list_.document.style = list_.settings.pageStyle();
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

std::optional<Document> ListExport::documentOf(const RowSource& chosen, const GoOn& goOn) const {
    Document document = list_.document;
    if (list_.settings.allColumns())
        return document;
    auto columns = tellingColumns(document.columns, chosen, goOn);
    if (!columns)
        return std::nullopt;
    document.columns = std::move(*columns);
    return document;
}

void ListExport::tell(modUtil::Message message) const {
    if (!list_.isEnding())
        modUtil::ShowMessage(std::move(message), platform::MessageIcon::information, {},
                             list_.owner);
}

// ---- Files

void ListExport::save(std::optional<Format> format, bool selectedOnly) {
    const auto target = askForTarget({format, format.value_or(list_.settings.format()),
                                      list_.settings.folder(), widgets::toQt(list_.document.title)},
                                     list_.owner);
    if (!target || list_.isEnding())
        return;
    const auto before = patient::fileKind(target->path);
    if (!before)
        return tellResult({platform::noAnswer(target->path), false}, target->path, false);
    const bool existed = *before == platform::FileKind::file;
    if (existed && !mayReplace(target->path))
        return;
    list_.settings.setFolder(std::string(modFilePath::directoryPart(target->path)));
    list_.settings.setFormat(target->format);
    ExportResult result;
    {
        const RowSource& source = rows(selectedOnly);
        ExportProgress progress(text_id::exporting, list_.owner, list_.isEnding);
        const auto document = documentOf(source, progress.part(2 * source.count()));
        result = document ? exportFile(*document, source, target->format, target->path,
                                       progress.part(source.count()), writePdf)
                          : ExportResult{{}, true};
    }
    tellResult(result, target->path, existed);
}

bool ListExport::mayReplace(const std::string& path) const {
    return modUtil::AskYesNo({text_id::replaceFileQuestion, {platform::toNativePath(path)}}, {},
                             list_.owner) &&
           !list_.isEnding();
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
    ExportProgress progress(text_id::exporting, list_.owner, list_.isEnding);
    const auto document = documentOf(source, progress.part(2 * source.count()));
    const auto text =
        document ? exportText(*document, source, Format::text, progress.part(source.count()))
                 : std::nullopt;
    if (text && !list_.isEnding())
        QGuiApplication::clipboard()->setText(QString::fromStdString(*text));
}

} // namespace ov::exporting::print
