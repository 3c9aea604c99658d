// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/document.h"
#include "export/print/page_font.h"
#include "export/rows.h"

#include <QString>
#include <vector>

namespace ov::exporting::print {

// A text as a page shows it, without line ends and other controls, marks on their letters.
QString pageText(const std::string& utf8);

// What a column would like to have, and the least with which it can be read.
struct ColumnNeed {
    double natural = 0;
    double whole = 0; // so that no text is broken, however long
    double least = 0;
    double word = 0;      // the longest of the caption
    bool isRigid = false; // dates and lengths: half of one is worse than none
};

// Judged by some hundred rows from all over the list.
std::vector<ColumnNeed> columnNeeds(const std::vector<Column>& columns, const RowSource& rows,
                                    const PageFont& font, const PageFont& captionFont);

// True when the columns, with the gaps between them, fit without going below their least.
bool fits(const std::vector<ColumnNeed>& needs, double width, double gap);

// Widths that take as much of `width` but the gaps as the texts need and no more: where there is
// not enough, the widest columns give way first. When not even the least widths fit, the widest of
// those do, rigid ones last.
std::vector<double> columnWidths(const std::vector<ColumnNeed>& needs, double width, double gap);

} // namespace ov::exporting::print
