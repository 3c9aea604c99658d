// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Any bytes as an INI file, with section, key and value of an edit in its first three lines: what
// is written is read back, what stands beside it stays.

#include "fuzz/fuzzing.h"
#include "platform/settings/profile_edit.h"
#include "platform/settings/profile_text.h"
#include "platform/text.h"

#include <optional>
#include <string>

namespace {

using namespace ov::platform;
using ov::fuzzing::require;

constexpr std::string_view otherSection = "OVSearch.fuzz";

// Nothing that a reader takes off a value: blanks and quotes around it.
bool readsAsWritten(std::string_view value) {
    constexpr std::string_view cut = " \t\v\f\"'";
    return value.empty() || (cut.find(value.front()) == std::string_view::npos &&
                             cut.find(value.back()) == std::string_view::npos);
}

void edit(std::string content, std::string_view section, std::string_view key,
          std::string_view value) {
    const std::string before = content;
    const ProfileEdit result = setProfileValue(content, section, key, value);
    if (result == ProfileEdit::refused) {
        require(content == before);
        return;
    }
    const std::optional<std::string> read = profileValue(content, section, key);
    require(read.has_value());
    require(!readsAsWritten(value) || *read == value);
    std::string twice = content;
    require(setProfileValue(twice, section, key, value) == ProfileEdit::unchanged);
    removeProfileKey(twice, section, key);
    removeProfileSection(twice, section);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest = ov::fuzzing::textOf(data, size);
    const std::string_view section = ov::fuzzing::takePart(rest, '\n');
    const std::string_view key = ov::fuzzing::takePart(rest, '\n');
    const std::string_view value = ov::fuzzing::takePart(rest, '\n');
    const std::string content(rest);
    profileKeys(content, section);
    profileSections(content);
    profileValue(content, section, key);
    if (isValidUtf8(section) && isValidUtf8(key) && isValidUtf8(value))
        edit(content, section, key, value);
    edit(content, otherSection, "key", "value");
    return 0;
}
