// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/machine/json_object.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <variant>

namespace ov::exporting {

namespace {

std::string literal(std::string_view text) {
    return nlohmann::json(text).dump();
}

} // namespace

void JsonObject::addMember(std::string_view key, std::string_view value) {
    members_.append(members_.empty() ? "" : ",").append(literal(key)).append(":").append(value);
}

void JsonObject::add(std::string_view key, const MachineValue& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value))
        addMember(key, std::to_string(*number));
    else if (const auto* text = std::get_if<std::string>(&value))
        addMember(key, literal(*text));
}

void JsonObject::add(std::string_view key, const JsonObject& object) {
    addMember(key, object.text());
}

} // namespace ov::exporting
