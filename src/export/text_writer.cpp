// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/cell.h"
#include "export/plain_text.h"
#include "export/row_writer.h"

#include <utility>

namespace ov::exporting {

namespace {

class TextWriter final : public RowWriter {
public:
    TextWriter(std::vector<Column> columns, Sink& sink)
        : columns_(std::move(columns)), sink_(sink) {}

    void begin() override {
        writeLine([](const Column& column) { return column.caption; });
    }
    void write(const Dictation& dictation) override {
        writeLine([&dictation](const Column& column) { return cellText(column, dictation); });
    }

private:
    template <typename TextOf>
    void writeLine(TextOf textOf) {
        std::string line;
        for (const Column& column : columns_) {
            line.append(plainText(textOf(column), Gaps::blank)).push_back('\t');
        }
        if (!line.empty())
            line.back() = '\n';
        sink_.write(line);
    }

    std::vector<Column> columns_;
    Sink& sink_;
};

} // namespace

std::unique_ptr<RowWriter> makeTextWriter(const std::vector<Column>& columns, Sink& sink) {
    return std::make_unique<TextWriter>(columns, sink);
}

} // namespace ov::exporting
