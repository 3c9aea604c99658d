// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/dictation_details.h"
#include "export/cell.h"
#include "export/machine/json_records.h"
#include "export/machine/machine_value.h"
#include "export/row_writer.h"
#include "platform/text.h"

#include <algorithm>

namespace ov::exporting {

namespace {

// A field that has no key stands under its tag, "@@31$".
JsonObject rawFields(const Dictation& dictation) {
    JsonObject raw;
    for (const modDictation::Detail& detail : modDictation::fieldDetails(dictation))
        if (!detail.isMissing)
            raw.add(detail.key.empty() ? detail.caption : detail.key,
                    platform::textFromBytes(detail.raw));
    return raw;
}

class JsonWriter final : public RowWriter {
public:
    // An object has each key once.
    JsonWriter(const std::vector<Column>& columns, const JsonOptions& options, Sink& sink)
        : raw_(options.raw), records_(options.lines, options.filter, sink) {
        for (const Column& column : columns)
            if (std::ranges::find(columns_, column.field, &Column::field) == columns_.end())
                columns_.push_back(column);
    }

    void begin() override { records_.begin(); }

    void write(const Dictation& dictation) override {
        JsonObject object;
        JsonObject values;
        object.add("path", platform::textFromBytes(nativePathOf(dictation)));
        if (const std::string bytes = pathBytes(dictation); !bytes.empty())
            object.add("path_bytes", bytes);
        for (const Column& column : columns_) {
            if (column.field == pathColumn)
                continue;
            object.add(column.key, cellText(column, dictation));
            values.add(column.key, machineValue(column.field, dictation));
        }
        object.add("values", values);
        if (raw_)
            object.add("raw", rawFields(dictation));
        records_.write(object);
    }

    void end() override { records_.end(); }

private:
    std::vector<Column> columns_;
    bool raw_;
    JsonRecords records_;
};

} // namespace

std::unique_ptr<RowWriter> makeJsonWriter(const std::vector<Column>& columns,
                                          const JsonOptions& options, Sink& sink) {
    return std::make_unique<JsonWriter>(columns, options, sink);
}

} // namespace ov::exporting
