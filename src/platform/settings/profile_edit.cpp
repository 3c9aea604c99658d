// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/settings/profile_edit.h"

#include "platform/settings/profile_encoding.h"
#include "platform/settings/profile_scanner.h"
#include "platform/text.h"

#include <algorithm>

namespace ov::platform {

namespace {

constexpr std::string_view lineEnd = "\r\n";

// Turns text into the bytes of a file.
class Encoder {
public:
    explicit Encoder(std::string_view content)
        : encoding_(settingsEncoding(content)),
          windows1252_(encoding_ == SettingsEncoding::plain && !isValidUtf8(content)) {}

    std::string operator()(std::string_view text) const {
        if (isUtf16(encoding_))
            return utf8ToUtf16(text, encoding_ == SettingsEncoding::utf16BigEndian);
        if (windows1252_) {
            auto bytes = toWindows1252(text);
            // Bytes that happen to be UTF-8 would be read back as something else.
            if (bytes && !isValidUtf8(*bytes))
                return *std::move(bytes);
        }
        return std::string(text);
    }

    // The name of a line keeps its bytes; in UTF-16 it was converted for the comparison.
    std::string stored(std::string_view name) const {
        return isUtf16(encoding_) ? (*this)(name) : std::string(name);
    }

private:
    SettingsEncoding encoding_;
    bool windows1252_;
};

// Replaces `count` bytes at `at`.
ProfileEdit splice(std::string& content, std::size_t at, std::size_t count,
                   std::string_view replacement) {
    std::string edited = content.substr(0, at);
    edited.append(replacement).append(content, std::min(at + count, content.size()));
    if (settingsEncoding(edited) != settingsEncoding(content))
        return ProfileEdit::refused;
    content = std::move(edited);
    return ProfileEdit::changed;
}

ProfileEdit eraseLines(std::string& content, std::size_t begin, std::size_t end) {
    return begin == end ? ProfileEdit::unchanged : splice(content, begin, end - begin, {});
}

// True when the last line has no end yet.
bool needsLineEnd(std::string_view content, const Encoder& encode) {
    return content.size() > markSize(settingsEncoding(content)) &&
           !content.ends_with(encode("\n")) && !content.ends_with(encode("\r"));
}

ProfileEdit insertLines(std::string& content, std::size_t at, const Encoder& encode,
                        std::string lines) {
    if (at == SettingsLines(content).size()) {
        content.resize(at); // an odd byte at the end of UTF-16 is no character
        if (needsLineEnd(content, encode))
            lines.insert(0, encode(lineEnd));
    }
    return splice(content, at, 0, lines);
}

bool breaksLine(std::string_view text) noexcept {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

bool readsBackAsKey(std::string_view name, std::string_view value) {
    const std::string text = std::string(name) + "=" + std::string(value);
    const ProfileLine line = parseProfileLine(text);
    return line.kind == ProfileLine::Kind::entry && line.name == withoutBlanks(name);
}

bool readsBackAsSection(std::string_view name) {
    const std::string text = "[" + std::string(name) + "]";
    const ProfileLine line = parseProfileLine(text);
    return line.kind == ProfileLine::Kind::header && line.name == withoutBlanks(name);
}

// The line that `scanner` stands on gets another value; its line end stays.
ProfileEdit replaceValue(std::string& content, const ProfileScanner& scanner, const Encoder& encode,
                         std::string_view value) {
    const ProfileLine& line = scanner.line();
    if (line.hasValue && textFromBytes(line.value) == withoutBlanks(value))
        return ProfileEdit::unchanged;
    if (!readsBackAsKey(line.name, value))
        return ProfileEdit::refused;
    return splice(content, scanner.lines().begin(), scanner.lines().bytes(false).size(),
                  encode.stored(line.name) + encode("=") + encode(value));
}

ProfileEdit setChecked(std::string& content, std::string_view section, std::string_view key,
                       std::string_view value) {
    ProfileScanner scanner(content);
    const Encoder encode(content);
    const auto newLine = [&encode, key, value] {
        return encode(key) + encode("=") + encode(value) + encode(lineEnd);
    };
    if (!scanner.enter(withoutBlanks(section))) {
        if (!readsBackAsKey(key, value) || !readsBackAsSection(section))
            return ProfileEdit::refused;
        return insertLines(content, scanner.lines().size(), encode,
                           encode("[") + encode(section) + encode("]") + encode(lineEnd) +
                               newLine());
    }
    std::size_t lastLine = scanner.lines().end();
    while (scanner.nextInSection()) {
        if (scanner.isKey(withoutBlanks(key)))
            return replaceValue(content, scanner, encode, value);
        if (scanner.line().kind != ProfileLine::Kind::blank)
            lastLine = scanner.lines().end();
    }
    return readsBackAsKey(key, value) ? insertLines(content, lastLine, encode, newLine())
                                      : ProfileEdit::refused;
}

} // namespace

ProfileEdit setProfileValue(std::string& content, std::string_view section, std::string_view key,
                            std::string_view value) {
    if (breaksLine(section) || breaksLine(key) || breaksLine(value))
        return ProfileEdit::refused;
    return setChecked(content, textFromBytes(withoutLeadingBlanks(section)),
                      textFromBytes(withoutLeadingBlanks(key)),
                      textFromBytes(withoutLeadingBlanks(value)));
}

ProfileEdit removeProfileKey(std::string& content, std::string_view section, std::string_view key) {
    ProfileScanner scanner(content);
    const std::string wantedSection = textFromBytes(withoutBlanks(section));
    if (!scanner.findKey(wantedSection, textFromBytes(withoutBlanks(key))))
        return ProfileEdit::unchanged;
    return eraseLines(content, scanner.lines().begin(), scanner.lines().end());
}

ProfileEdit removeProfileSection(std::string& content, std::string_view section) {
    const std::string wanted = textFromBytes(withoutBlanks(section));
    ProfileScanner scanner(content);
    if (!scanner.enter(wanted))
        return ProfileEdit::unchanged;
    const std::size_t begin = wanted.empty() ? scanner.lines().end() : scanner.lines().begin();
    std::size_t end = scanner.lines().end();
    while (scanner.nextInSection())
        end = scanner.lines().end();
    return eraseLines(content, begin, end);
}

} // namespace ov::platform
