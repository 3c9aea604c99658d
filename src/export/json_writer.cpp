// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/cell.h"
#include "export/row_writer.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>
#include <utility>

namespace ov::exporting {

namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(const modDictation::DateSerial& serial) {
    const platform::DateTime date = modDictation::dateOf(serial);
    std::array<char, 64> text{};
    const int dayLength =
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", date.year, date.month, date.day);
    std::string iso(text.data(), static_cast<std::size_t>(dayLength));
    if (serial.hasTime) {
        const int timeLength = std::snprintf(text.data(), text.size(), "T%02d:%02d:%02d", date.hour,
                                             date.minute, date.second);
        iso.append(text.data(), static_cast<std::size_t>(timeLength));
    }
    return iso;
}
Json jsonOf(modDictation::Seconds seconds) {
    return seconds.count;
}
Json jsonOf(std::int64_t number) {
    return number;
}

class JsonWriter final : public RowWriter {
public:
    JsonWriter(std::vector<Column> columns, TextFilter filter, Sink& sink)
        : columns_(std::move(columns)), filter_(filter), sink_(sink) {}

    void begin() override { sink_.write("["); }

    void write(const Dictation& dictation) override {
        Json object;
        Json values;
        object["path"] = platform::textFromBytes(nativePathOf(dictation));
        for (const Column& column : columns_) {
            if (column.field == pathColumn)
                continue;
            object[column.key] = cellText(column, dictation);
            if (const auto value = cellValue(column, dictation))
                values[column.key] = std::visit([](const auto& v) { return jsonOf(v); }, *value);
        }
        if (!values.empty())
            object["values"] = std::move(values);
        const std::string text = object.dump();
        sink_.write(std::exchange(first_, false) ? "\n  " : ",\n  ");
        sink_.write(filter_ != nullptr ? filter_(text) : text);
    }

    void end() override { sink_.write(first_ ? "]\n" : "\n]\n"); }

private:
    std::vector<Column> columns_;
    TextFilter filter_;
    Sink& sink_;
    bool first_ = true;
};

} // namespace

std::unique_ptr<RowWriter> makeJsonWriter(const std::vector<Column>& columns, TextFilter filter,
                                          Sink& sink) {
    return std::make_unique<JsonWriter>(columns, filter, sink);
}

} // namespace ov::exporting
