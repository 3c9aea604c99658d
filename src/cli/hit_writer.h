// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "cli/looks/looks.h"
#include "cli/looks/text_marks.h"
#include "cli/output.h"
#include "dictation/dictation.h"
#include "export/document.h"

#include <memory>
#include <vector>

// Hits as text, in the forms that `ovsearch find` offers.

namespace ov::cli {

using exporting::Column;

enum class HitFormat { table, csv, json, jsonl, paths };

// Writes hits one after the other. begin() first, then any number of hits, then end().
class HitWriter {
public:
    virtual ~HitWriter() = default;
    virtual void begin() {}
    virtual void write(const modDictation::Dictation& dictation) = 0;
    // What was held back is written: it may take long until there are more.
    virtual void catchUp() {}
    virtual void end() {}
};

// For a person (`escaped`), what a terminal would obey is made visible; tables always do that,
// paths that end by a zero byte never.
struct WriterOptions {
    HitFormat format = HitFormat::table;
    std::vector<Column> columns;
    char separator = ','; // of CSV
    bool raw = false;     // CSV for programs
    bool escaped = false;
    bool zeroEnded = false;
    Looks looks = {}; // of a table, and what it marks; of paths, whether they are links
    TextMarks marks = {};
};

std::unique_ptr<HitWriter> makeHitWriter(const WriterOptions& options, Output& output);

} // namespace ov::cli
