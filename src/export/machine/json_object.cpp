// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/machine/json_object.h"

#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <variant>

namespace ov::exporting {

namespace {

// As nearly all texts are.
bool needsNoEscape(std::string_view text) {
    return std::ranges::none_of(
               text, [](char c) { return (c >= 0 && c < ' ') || c == '"' || c == '\\'; }) &&
           platform::isValidUtf8(text);
}

void appendLiteral(std::string_view text, std::string& out) {
    if (!needsNoEscape(text)) {
        out.append(nlohmann::json(text).dump());
        return;
    }
    out.push_back('"');
    out.append(text).push_back('"');
}

} // namespace

void JsonObject::addKey(std::string_view key) {
    if (!members_.empty())
        members_.push_back(',');
    appendLiteral(key, members_);
    members_.push_back(':');
}

void JsonObject::add(std::string_view key, const MachineValue& value) {
    if (std::holds_alternative<std::monostate>(value))
        return;
    addKey(key);
    if (const auto* text = std::get_if<std::string>(&value))
        appendLiteral(*text, members_);
    else
        members_.append(std::to_string(std::get<std::int64_t>(value)));
}

void JsonObject::add(std::string_view key, const JsonObject& object) {
    addKey(key);
    members_.append(object.text());
}

} // namespace ov::exporting
