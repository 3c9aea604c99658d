// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "export/machine/json_object.h"
#include "export/row_writer.h"

namespace ov::exporting {

// Objects of JSON as an array, or one on each line. begin() first, then any number, then end().
class JsonRecords {
public:
    // `filter` may be nullptr.
    JsonRecords(bool lines, TextFilter filter, Sink& sink)
        : lines_(lines), filter_(filter), sink_(sink) {}

    void begin();
    void write(const JsonObject& object);
    void end();

private:
    bool lines_;
    TextFilter filter_;
    Sink& sink_;
    bool first_ = true;
};

} // namespace ov::exporting
