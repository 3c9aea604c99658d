// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/counted_hits.h"

#include "cli/looks/table_layout.h"
#include "cli/shown_text.h"
#include "dictation/field_date.h"
#include "export/csv_line.h"
#include "export/machine/json_records.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace ov::cli {

using exporting::JsonObject;
using exporting::MachineValue;

namespace {

constexpr const char* countKey = "count";
constexpr const char* sumKey = "sum_length";

std::string lengthText(const TallyGroup& group) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max(); // 68 years
    return modDictation::secondsText(static_cast<std::int32_t>(std::min(group.seconds, most)));
}

// The same cells in each form: how they are called, and what they are of a group.
Row keysOf(const CountForm& form) {
    Row keys;
    if (form.by)
        keys.push_back(form.by->key);
    if (form.counts || form.by)
        keys.emplace_back(countKey);
    if (form.addsLengths)
        keys.emplace_back(sumKey);
    return keys;
}

Row cellsOf(const TallyGroup& group, const CountForm& form) {
    Row cells;
    if (form.by)
        cells.push_back(form.raw ? exporting::machineText(group.value) : group.shown);
    if (form.counts || form.by)
        cells.push_back(std::to_string(group.count));
    if (form.addsLengths)
        cells.push_back(form.raw ? std::to_string(group.seconds) : lengthText(group));
    return cells;
}

JsonObject objectOf(const TallyGroup& group, const CountForm& form) {
    JsonObject object;
    JsonObject values;
    if (form.by) {
        object.add(form.by->key, group.shown);
        values.add(form.by->key, group.value);
    }
    if (form.counts || form.by)
        object.add(countKey, group.count);
    if (form.addsLengths) {
        object.add(sumKey, lengthText(group));
        values.add(sumKey, group.seconds);
    }
    object.add("values", values);
    return object;
}

} // namespace

CountedHits::CountedHits(const CountForm& form, Output& output)
    : form_(form),
      tally_(form.by ? form.by->field : modDictation::noField, form.addsLengths),
      output_(output) {}

void CountedHits::take(const modDictation::Dictation& hit) {
    tally_.add(hit);
}

std::optional<std::int32_t> CountedHits::countsBy() const {
    if (form_.addsLengths)
        return std::nullopt;
    return form_.by ? form_.by->field : modDictation::noField;
}

void CountedHits::takeMany(const modDictation::Dictation& one, std::int64_t count) {
    tally_.add(one, count);
}

void CountedHits::end() {
    switch (form_.format) {
    case HitFormat::csv:
        writeCsv();
        break;
    case HitFormat::json:
    case HitFormat::jsonl:
        writeJson();
        break;
    default:
        form_.by ? writeTable() : writeLines();
    }
    output_.flush();
}

// For `$( )` of a shell.
void CountedHits::writeLines() {
    for (const std::string& cell : cellsOf(tally_.groups().front(), form_))
        output_.write(cell + '\n');
}

void CountedHits::writeTable() {
    std::vector<Row> rows = {
        {shownText(form_.by->caption), modLanguage::GetText(text_id::countTitle)}};
    if (form_.addsLengths)
        rows.front().push_back(
            shownText(exporting::columnOf(modDictation::field_id::length).caption));
    for (const TallyGroup& group : tally_.groups()) {
        Row cells = cellsOf(group, form_);
        cells.front() = cells.front().empty() ? "-" : shownText(cells.front());
        rows.push_back(std::move(cells));
    }
    if (rows.size() == 1)
        return;
    std::vector<std::size_t> widths = columnWidths(rows);
    std::vector<Giving> givings(widths.size(), Giving::never);
    givings.front() = givingOf(*form_.by);
    if (form_.looks.width)
        widths = fittedWidths(std::move(widths), givings, *form_.looks.width);
    for (Row& row : rows) {
        std::string& value = row.front();
        value = cutCell({value, std::vector<bool>(value.size())}, widths.front(), *form_.by).text;
        const std::string line = tableLine(row, widths);
        output_.write(&row == &rows.front() ? asTitles(line, form_.looks) : line);
    }
}

void CountedHits::writeCsv() {
    exporting::CsvLine line(form_.separator);
    std::vector<Row> rows = {keysOf(form_)};
    for (const TallyGroup& group : tally_.groups())
        rows.push_back(cellsOf(group, form_));
    for (const Row& row : rows) {
        for (const std::string& cell : row)
            line.append(form_.escaped ? shownText(cell) : cell);
        line.writeTo(output_);
    }
}

// What is counted in all is one object in either form.
void CountedHits::writeJson() {
    exporting::JsonRecords records(!form_.by || form_.format == HitFormat::jsonl,
                                   form_.escaped ? shownText : nullptr, output_);
    records.begin();
    for (const TallyGroup& group : tally_.groups())
        records.write(objectOf(group, form_));
    records.end();
}

} // namespace ov::cli
