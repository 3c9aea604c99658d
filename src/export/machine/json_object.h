// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "export/machine/machine_value.h"

#include <string>
#include <string_view>

namespace ov::exporting {

// An object of JSON, put together member by member.
class JsonObject {
public:
    // A number or a text in UTF-8; no member where there is no value.
    void add(std::string_view key, const MachineValue& value);
    void add(std::string_view key, const JsonObject& object);

    std::string text() const { return '{' + members_ + '}'; }

private:
    void addKey(std::string_view key);

    std::string members_;
};

} // namespace ov::exporting
