// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/machine/json_records.h"

#include <utility>

namespace ov::exporting {

void JsonRecords::begin() {
    if (!lines_)
        sink_.write("[");
}

void JsonRecords::write(const JsonObject& object) {
    const std::string text = object.text();
    if (!lines_)
        sink_.write(std::exchange(first_, false) ? "\n  " : ",\n  ");
    sink_.write(filter_ != nullptr ? filter_(text) : text);
    if (lines_)
        sink_.write("\n");
}

void JsonRecords::end() {
    if (!lines_)
        sink_.write(first_ ? "]\n" : "\n]\n");
}

} // namespace ov::exporting
