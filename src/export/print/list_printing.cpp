// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What a list export puts on paper, and shows before.

#include "dialogs/frmExportOptionsPrint.h"
#include "export/print/export_progress.h"
#include "export/print/list_export.h"
#include "export/print/pdf.h"
#include "export/print/print_preview.h"
#include "support/language/text_ids.h"

#include <string>

namespace ov::exporting::print {

namespace {

QPageSize paperOf(const QPrinter& printer) {
    const QPageSize paper = printer.pageLayout().pageSize();
    return printer.printerName().isEmpty() || !paper.isValid() ? usualPaper() : paper;
}

} // namespace

void ListExport::print(bool selectedOnly) {
    frmExportOptionsPrint options(list_.owner);
    options.DruckBereichIndex =
        selectedOnly ? frmExportOptionsPrint::markierte : frmExportOptionsPrint::alle;
    options.Titel = list_.document.title;
    options.Orientation = static_cast<std::int32_t>(list_.document.style.orientation);
    options.Font_Name = list_.document.style.fontName;
    options.Font_Size = list_.document.style.fontSize;
    options.AllColumns = list_.settings.allColumns();
    options.exec();
    if (!options.OKPressed() || list_.isEnding())
        return;
    list_.settings.setAllColumns(options.AllColumns);
    list_.document.title = options.Titel;
    list_.document.style = {options.Font_Name, options.Font_Size,
                            static_cast<Orientation>(options.Orientation)};
    const RowSource& chosen = rows(options.DruckBereichIndex == frmExportOptionsPrint::markierte);
    if (chosen.count() == 0)
        tell(text_id::nothingSelected);
    else if (options.printer().printerName().isEmpty() &&
             options.printer().outputFileName().isEmpty())
        tell(text_id::noPrinter);
    else
        printOn(options.printer(), chosen);
}

void ListExport::printOn(QPrinter& printer, const RowSource& chosen) {
    bool stopped = false;
    Printed printed = Printed::failed;
    int count = 0; // of the pages
    {
        ExportProgress progress(text_id::printing, list_.owner, list_.isEnding);
        const auto part = [&](std::int64_t passes) -> GoOn { // with those that follow
            return [&, goOn = progress.part(passes * chosen.count())](std::int64_t done) {
                stopped = stopped || !goOn(done);
                return !stopped;
            };
        };
        if (const auto document = documentOf(chosen, part(3))) {
            ListPages pages(*document, chosen, paperOf(printer));
            printer.setDocName(pageText(document->title));
            if (pages.layOut(part(2)))
                printed = printPages(pages, printer, part(1));
            count = pages.count();
        }
    }
    if (stopped)
        tell(text_id::printStopped);
    else if (printed == Printed::noSuchPage)
        tell({text_id::noSuchPage, {std::to_string(printer.fromPage()), std::to_string(count)}});
    else if (printed == Printed::failed)
        tell(text_id::printFailed);
}

void ListExport::preview(bool selectedOnly) {
    const RowSource& chosen = rows(selectedOnly);
    const QPrinter printer(QPrinter::HighResolution);
    std::optional<Document> document;
    std::optional<ListPages> pages;
    {
        ExportProgress progress(text_id::layingOutPages, list_.owner, list_.isEnding);
        document = documentOf(chosen, progress.part(2 * chosen.count()));
        if (!document)
            return;
        pages.emplace(*document, chosen, paperOf(printer));
        if (!pages->layOut(progress.part(chosen.count())))
            return;
    }
    PrintPreview window(*pages, list_.owner);
    if (window.exec() == QDialog::Accepted && !list_.isEnding())
        print(selectedOnly);
}

} // namespace ov::exporting::print
