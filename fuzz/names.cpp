// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Any bytes as the name of a dictation: every field read, shown and sorted, and the list that it
// makes written in every form that needs no windows. What machines read back must be well formed.

#include "dictation/dictation_record.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "dictation/search/dictation_list.h"
#include "export/document.h"
#include "export/file_export.h"
#include "export/row_writer.h"
#include "export/rows.h"
#include "fuzz/fuzzing.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

using namespace ov;
using fuzzing::require;

constexpr std::string_view directory = "D:\\Store\\Ward3\\";

void readFields(std::string_view fileName) {
    std::string buffer;
    const std::string_view name = modDictation::dictationName(fileName, buffer);
    require(platform::isValidUtf8(name));
    std::string value;
    for (std::int32_t number = -5; number < 100; ++number)
        modDictation::GetDictationField(number, directory, name, value);
    for (std::int32_t field = 0; field < modDictation::searchFieldCount; ++field) {
        require(platform::isValidUtf8(modDictation::shownValue(field, {directory, name})));
        require(!std::isnan(modDictation::sortNumber(field, {directory, name})));
    }
}

void writeLists(std::string_view fileName) {
    modDictation::DictationList hits;
    hits.add(directory, fileName);
    exporting::Document document;
    document.columns.push_back({"path", exporting::pathColumn, "Path", "Path", 0});
    for (std::int32_t field = 1; field < modDictation::searchFieldCount; ++field)
        document.columns.push_back(exporting::columnOf(field));
    const auto goOn = [](std::int64_t) { return true; };
    for (const exporting::FormatInfo& info : exporting::formats()) {
        if (info.format == exporting::Format::pdf || info.format == exporting::Format::xlsx)
            continue;
        const auto text =
            exporting::exportText(document, exporting::HitRows(hits), info.format, goOn);
        require(text && platform::isValidUtf8(*text));
        if (info.format == exporting::Format::json)
            require(nlohmann::json::accept(*text));
        // A line for the captions and one for the dictation: no name breaks out of its row.
        if (info.format == exporting::Format::text)
            require(std::count(text->begin(), text->end(), '\n') == 2);
    }
}

// What programs read, with every field as it stands in the name.
void writeRaw(std::string_view fileName) {
    struct Text final : exporting::Sink {
        bool write(std::string_view bytes) override {
            all.append(bytes);
            return true;
        }
        std::string all;
    };
    std::vector<exporting::Column> columns;
    columns.push_back({"path", exporting::pathColumn, "Path", "Path", 0});
    for (std::int32_t field = 1; field < modDictation::searchFieldCount; ++field)
        columns.push_back(exporting::columnOf(field));
    Text json;
    Text csv;
    exporting::makeJsonWriter(columns, {.lines = true, .raw = true}, json)
        ->write({directory, fileName});
    exporting::makeCsvWriter(columns, {.raw = true}, csv)->write({directory, fileName});
    require(nlohmann::json::accept(json.all) && platform::isValidUtf8(csv.all));
    require(json.all.ends_with("}\n") && std::ranges::count(json.all, '\n') == 1);
}

// Needs a file, which is slow: now and then only.
void writeSpreadsheet(std::string_view fileName) {
    static int turn = 0;
    constexpr int every = 64;
    if (turn++ % every != 0)
        return;
    modDictation::DictationList hits;
    hits.add(directory, fileName);
    exporting::Document document;
    for (std::int32_t field = 1; field < modDictation::searchFieldCount; ++field)
        document.columns.push_back(exporting::columnOf(field));
    const auto result = exporting::exportFile(
        document, exporting::HitRows(hits), exporting::Format::xlsx, "\\tmp\\ovfuzz_names.xlsx",
        [](std::int64_t) { return true; }, nullptr);
    require(result.ok());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string fileName(fuzzing::textOf(data, size));
    std::erase(fileName, '\0'); // what no file system lets through
    std::erase(fileName, '/');
    fileName += ".WAV";
    modDictation::BuildSearchFieldTable();
    readFields(fileName);
    writeLists(fileName);
    writeRaw(fileName);
    writeSpreadsheet(fileName);
    return 0;
}
