// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/cell.h"
#include "export/csv_line.h"
#include "export/machine/machine_value.h"
#include "export/plain_text.h"
#include "export/row_writer.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ov::exporting {

namespace {

bool beginsFormula(std::string_view text) {
    constexpr std::array<std::string_view, 8> signs = {"=", "+", "-", "@", "＝", "＋", "－", "＠"};
    return std::ranges::any_of(signs,
                               [text](std::string_view sign) { return text.starts_with(sign); });
}

// Each reader has its own idea of what parts cells, and may pass over blanks and quotation marks.
// The text is plain: what becomes a blank is one already.
std::string defused(std::string_view text) {
    constexpr std::string_view separators = ";,";
    constexpr std::string_view passedOver = " \"";
    std::string out;
    std::size_t done = 0; // up to here the apostrophe stands already
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i >= done && (i == 0 || separators.find(text[i - 1]) != std::string_view::npos)) {
            const std::size_t start = text.find_first_not_of(passedOver, i);
            if (start != std::string_view::npos && beginsFormula(text.substr(start))) {
                out.push_back('\'');
                done = start + 1;
            }
        }
        out.push_back(text[i]);
    }
    return out;
}

class CsvWriter final : public RowWriter {
public:
    CsvWriter(std::vector<Column> columns, const CsvOptions& options, Sink& sink)
        : columns_(std::move(columns)), options_(options), sink_(sink) {}

    void begin() override {
        if (options_.forSpreadsheets)
            sink_.write("\xEF\xBB\xBF");
        for (const Column& column : columns_) {
            appendCell(options_.forSpreadsheets ? column.caption : column.key);
            if (hasBytes(column))
                appendCell("path_bytes");
        }
        line_.writeTo(sink_);
    }

    void write(const Dictation& dictation) override {
        for (const Column& column : columns_) {
            const std::string text = textOf(column, dictation);
            appendCell(options_.filter != nullptr ? options_.filter(text) : text);
            if (hasBytes(column))
                appendCell(pathBytes(dictation));
        }
        line_.writeTo(sink_);
    }

private:
    bool hasBytes(const Column& column) const { return options_.raw && column.field == pathColumn; }
    std::string textOf(const Column& column, const Dictation& dictation) const {
        return options_.raw && column.field != pathColumn
                   ? machineText(machineValue(column.field, dictation))
                   : cellText(column, dictation);
    }

    void appendCell(std::string_view text) {
        if (options_.forSpreadsheets)
            line_.append(defused(plainText(text, Gaps::blank)));
        else
            line_.append(text);
    }

    std::vector<Column> columns_;
    CsvOptions options_;
    Sink& sink_;
    CsvLine line_{options_.separator};
};

} // namespace

std::unique_ptr<RowWriter> makeCsvWriter(const std::vector<Column>& columns,
                                         const CsvOptions& options, Sink& sink) {
    return std::make_unique<CsvWriter>(columns, options, sink);
}

} // namespace ov::exporting
