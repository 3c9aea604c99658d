// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/cell.h"
#include "export/row_writer.h"

#include <utility>

namespace ov::exporting {

namespace {

class CsvWriter final : public RowWriter {
public:
    CsvWriter(std::vector<Column> columns, const CsvOptions& options, Sink& sink)
        : columns_(std::move(columns)), options_(options), sink_(sink) {}

    void begin() override {
        if (options_.forSpreadsheets)
            sink_.write("\xEF\xBB\xBF");
        for (const Column& column : columns_)
            appendCell(options_.forSpreadsheets ? column.caption : column.key);
        endLine();
    }

    void write(const Hit& hit) override {
        for (const Column& column : columns_) {
            const std::string text = cellText(column, hit);
            appendCell(options_.filter != nullptr ? options_.filter(text) : text);
        }
        endLine();
    }

private:
    // Every cell begins with its comma; the first one's is cut off here.
    void endLine() {
        line_.append("\r\n");
        sink_.write(std::string_view(line_).substr(1));
        line_.clear();
    }

    void appendCell(std::string_view text) {
        line_.push_back(',');
        const bool defused = options_.forSpreadsheets && looksLikeFormula(text);
        if (text.find_first_of("\",\r\n") == std::string_view::npos) {
            line_.append(defused ? "'" : "").append(text);
            return;
        }
        line_.append(defused ? "\"'" : "\"");
        for (const char c : text)
            line_.append(c == '"' ? 2 : 1, c);
        line_.push_back('"');
    }

    std::vector<Column> columns_;
    CsvOptions options_;
    Sink& sink_;
    std::string line_;
};

} // namespace

bool looksLikeFormula(std::string_view text) noexcept {
    constexpr std::string_view beginnings = "=+-@\t\r\n";
    return !text.empty() && beginnings.find(text.front()) != std::string_view::npos;
}

std::unique_ptr<RowWriter> makeCsvWriter(const std::vector<Column>& columns,
                                         const CsvOptions& options, Sink& sink) {
    return std::make_unique<CsvWriter>(columns, options, sink);
}

} // namespace ov::exporting
