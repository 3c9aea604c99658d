// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/file_export.h"

#include <QPageSize>
#include <cstdint>

class QPrinter;

namespace ov::exporting::print {

class ListPages;

// A4, or Letter where that is the paper.
QPageSize usualPaper();

// An exporting::PdfWriter. Needs a Qt application with a graphical interface. The rows done count
// once for finding the pages and once for drawing them, each as half a row.
bool writePdf(const Document& document, const RowSource& rows, Sink& sink, const GoOn& goOn);

// Sends the pages to the printer, all or the range that it was set to; copies are the printer's
// affair. `pages` have been laid out for its paper. Failed when `goOn`, which is told the rows
// drawn, stopped it or the printer did; the job is then given up. No job is begun where the range
// lies behind the last page.
enum class Printed : std::uint8_t { whole, failed, noSuchPage };
Printed printPages(const ListPages& pages, QPrinter& printer, const GoOn& goOn);

} // namespace ov::exporting::print
