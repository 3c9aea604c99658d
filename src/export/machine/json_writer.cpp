// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_details.h"
#include "export/cell.h"
#include "export/machine/machine_value.h"
#include "export/row_writer.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <utility>
#include <variant>

namespace ov::exporting {

namespace {

using Json = nlohmann::ordered_json;

void add(Json& object, const std::string& key, const MachineValue& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value))
        object[key] = *number;
    else if (const auto* text = std::get_if<std::string>(&value))
        object[key] = *text;
}

// A field that has no key stands under its tag, "@@31$".
Json rawFields(const Dictation& dictation) {
    Json raw = Json::object();
    for (const modDictation::Detail& detail : modDictation::fieldDetails(dictation))
        if (!detail.isMissing)
            raw[detail.key.empty() ? detail.caption : detail.key] =
                platform::textFromBytes(detail.raw);
    return raw;
}

class JsonWriter final : public RowWriter {
public:
    JsonWriter(std::vector<Column> columns, const JsonOptions& options, Sink& sink)
        : columns_(std::move(columns)), options_(options), sink_(sink) {}

    void begin() override {
        if (!options_.lines)
            sink_.write("[");
    }

    void write(const Dictation& dictation) override {
        const std::string text = object(dictation).dump();
        if (!options_.lines)
            sink_.write(std::exchange(first_, false) ? "\n  " : ",\n  ");
        sink_.write(options_.filter != nullptr ? options_.filter(text) : text);
        if (options_.lines)
            sink_.write("\n");
    }

    void end() override {
        if (!options_.lines)
            sink_.write(first_ ? "]\n" : "\n]\n");
    }

private:
    Json object(const Dictation& dictation) const {
        Json object;
        object["path"] = platform::textFromBytes(nativePathOf(dictation));
        if (std::string bytes = pathBytes(dictation); !bytes.empty())
            object["path_bytes"] = std::move(bytes);
        Json values = Json::object();
        for (const Column& column : columns_) {
            if (column.field == pathColumn)
                continue;
            object[column.key] = cellText(column, dictation);
            add(values, column.key, machineValue(column.field, dictation));
        }
        object["values"] = std::move(values);
        if (options_.raw)
            object["raw"] = rawFields(dictation);
        return object;
    }

    std::vector<Column> columns_;
    JsonOptions options_;
    Sink& sink_;
    bool first_ = true;
};

} // namespace

std::unique_ptr<RowWriter> makeJsonWriter(const std::vector<Column>& columns,
                                          const JsonOptions& options, Sink& sink) {
    return std::make_unique<JsonWriter>(columns, options, sink);
}

} // namespace ov::exporting
