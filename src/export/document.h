// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/search/search.h"

#include <cstdint>
#include <string>
#include <vector>

// What a list says besides its rows, in the words of the user's language. Writers take every word
// from here, so that one in another module needs no language files.

namespace ov::exporting {

struct Column {
    std::string key;        // "author"
    std::int32_t field = 0; // pathColumn for the full native path
    std::string caption;
    std::string shortCaption; // for narrow columns
    std::int32_t width = 0;   // in the result list, twips (1/1440 inch)
};
constexpr std::int32_t pathColumn = -1;

// The column of a search field, with the captions of the user's language.
Column columnOf(std::int32_t field);

// Stored by callers as numbers.
enum class Orientation : std::int32_t { automatic = 0, portrait = 1, landscape = 2 };

struct PageStyle {
    std::string fontName;                             // empty: the program's
    std::int32_t fontSize = 0;                        // points; 0: one that fits the columns
    Orientation orientation = Orientation::automatic; // landscape when the columns need it
};

struct Document {
    std::string title;
    std::string language; // "de", "en"
    std::vector<Column> columns;
    std::vector<std::string> criteria; // a line each
    std::string madeOn;                // "Printed on 21.11.2026"
    std::string storeFolder;           // native
    std::string pageNumber;            // "Page %1% of %2%"
    std::string sheetName;
    char listSeparator = ','; // between the cells of CSV
    PageStyle style;
};

// A document with all that can be known: the words for what was searched and for what the hits were
// filtered by, the date of today, the usual title. Columns are the caller's.
Document describe(const modDictation::Search& search, const std::string& filter = {});

} // namespace ov::exporting
