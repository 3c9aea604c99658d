// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "demo/name_encoding.h"

#include "dictation/dictation_record.h"
#include "dictation/name_decoding.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <span>

namespace ov::modDictation {

namespace {

struct Escape {
    std::string_view character;
    std::string_view sequence;
};

constexpr std::array<Escape, 8> generalEscapes{{{"*", "~"},
                                                {"/", "_"},
                                                {"?", "²²"},
                                                {"<", "³³"},
                                                {">", "%%"},
                                                {"\"", "'"},
                                                {".", "!!"},
                                                {":", "$#"}}};

constexpr std::array<Escape, 11> secondEscapes{{{"²", "²0"},
                                                {"*", "²1"},
                                                {"/", "²2"},
                                                {"\\", "²3"},
                                                {"?", "²4"},
                                                {"<", "²5"},
                                                {">", "²6"},
                                                {"\"", "²7"},
                                                {".", "²8"},
                                                {":", "²9"},
                                                {"|", "²A"}}};

bool isControl(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
}

bool fitsBetweenTags(std::string_view text) {
    return text.find("@@") == std::string_view::npos && !text.ends_with('@') &&
           std::none_of(text.begin(), text.end(), isControl) && platform::isValidUtf8(text);
}

std::string escape(std::string_view text, std::span<const Escape> escapes) {
    std::string encoded;
    encoded.reserve(text.size() + 8);
    while (!text.empty()) {
        const auto match = std::find_if(escapes.begin(), escapes.end(), [&](const Escape& entry) {
            return entry.character[0] == text[0] && text.starts_with(entry.character);
        });
        const bool plain = match == escapes.end();
        encoded += plain ? text.substr(0, 1) : match->sequence;
        text.remove_prefix(plain ? 1 : match->character.size());
    }
    return encoded;
}

} // namespace

std::optional<std::string> encodeFieldText(std::string_view text) {
    if (!fitsBetweenTags(text) || text.find_first_of("\\|") != std::string_view::npos)
        return std::nullopt;
    std::string encoded = escape(text, generalEscapes);
    if (DecodeFieldText(encoded) != text)
        return std::nullopt;
    return encoded;
}

std::optional<std::string> encodeFieldText2(std::string_view text) {
    if (!fitsBetweenTags(text))
        return std::nullopt;
    std::string encoded = escape(text, secondEscapes);
    if (DecodeFieldText2(encoded) != text)
        return std::nullopt;
    return encoded;
}

bool DictationNameBuilder::add(std::int32_t field, std::string_view value) {
    const std::string tag = fieldTag(field);
    const bool isStatus = field == dictation_field::status;
    if (field <= 0 || (isStatus ? hasStatus_ : name_.find(tag) != std::string::npos))
        return false;
    const auto encoded =
        field == dictation_field::freeText ? encodeFieldText2(value) : encodeFieldText(value);
    if (!encoded || name_.size() + encoded->size() + (isStatus ? 0 : tag.size()) > limit_)
        return false;
    if (isStatus)
        name_.insert(tag.size(), *encoded);
    else
        name_.append(tag).append(*encoded);
    hasStatus_ |= isStatus;
    return true;
}

} // namespace ov::modDictation
