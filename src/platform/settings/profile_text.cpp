// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/settings/profile_text.h"

#include "platform/settings/profile_scanner.h"
#include "platform/text.h"

namespace ov::platform {

namespace {

void appendListed(std::string_view name, std::string& list) {
    list += textFromBytes(name);
    list.push_back('\0');
}

} // namespace

std::string_view withoutQuotes(std::string_view value) noexcept {
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                        value.front() == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::optional<std::string> profileValue(std::string_view content, std::string_view section,
                                        std::string_view key) {
    ProfileScanner scanner(content);
    const std::string wantedSection = textFromBytes(withoutBlanks(section));
    const std::string wantedKey = textFromBytes(withoutBlanks(key));
    if (!scanner.findKey(wantedSection, wantedKey) || !scanner.line().hasValue)
        return std::nullopt;
    return textFromBytes(withoutQuotes(scanner.line().value));
}

std::string profileKeys(std::string_view content, std::string_view section) {
    std::string list;
    ProfileScanner scanner(content);
    if (!scanner.enter(textFromBytes(withoutBlanks(section))))
        return list;
    while (scanner.nextInSection())
        if (scanner.line().hasValue && !scanner.line().name.starts_with(';'))
            appendListed(scanner.line().name, list);
    return list;
}

std::string profileSections(std::string_view content) {
    std::string list;
    for (ProfileScanner scanner(content); scanner.next();)
        if (scanner.line().kind == ProfileLine::Kind::header && !scanner.line().name.empty())
            appendListed(scanner.line().name, list);
    return list;
}

} // namespace ov::platform
