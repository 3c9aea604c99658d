// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/settings/registry_file.h"

#include "platform/settings/profile_encoding.h"
#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

namespace ov::platform {

namespace {

// Takes one line, trimmed, off the front of `text`.
std::string_view takeLine(std::string_view& text) noexcept {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(text.size(), 1));
    return line;
}

// Takes the part before the first "\" off the front of `path`.
std::string_view takePart(std::string_view& path) noexcept {
    const std::size_t end = std::min(path.find('\\'), path.size());
    const std::string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    return part;
}

bool isWellFormed(std::string_view path) noexcept {
    return !path.starts_with('\\') && path.find("\\\\") == std::string_view::npos &&
           std::count(path.begin(), path.end(), '\\') <
               static_cast<std::ptrdiff_t>(deepestRegistryKey);
}

// For keys to read and keys to change alike.
template <typename Key>
Key* findKey(Key* key, std::string_view path) {
    if (!isWellFormed(path))
        return nullptr;
    while (key != nullptr && !path.empty()) {
        const auto found = key->subkeys.find(upperCase(takePart(path)));
        key = found == key->subkeys.end() ? nullptr : found->second.get();
    }
    return key;
}

bool isEndOrComment(std::string_view text) noexcept {
    text = trimmed(text);
    return text.empty() || text.front() == ';';
}

// Takes a string in quotes off the front of `text`. A "\" before anything but a quote or another
// one is meant as it stands, as in a path written by hand.
std::optional<std::string> takeString(std::string_view& text) {
    if (!text.starts_with('"'))
        return std::nullopt;
    std::string string;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"') {
            text.remove_prefix(i + 1);
            return string;
        }
        const bool escape =
            text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '\\' || text[i + 1] == '"');
        string.push_back(text[escape ? ++i : i]);
    }
    return std::nullopt;
}

// Takes `prefix` off the front of `text`, in any letter case.
bool takeWord(std::string_view& text, std::string_view prefix) {
    if (!equalsIgnoringCase(text.substr(0, prefix.size()), prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

bool takeCharacter(std::string_view& text, char character) noexcept {
    if (!text.starts_with(character))
        return false;
    text.remove_prefix(1);
    return true;
}

// Takes a hexadecimal number of at most 32 bits off the front of `text`.
std::optional<std::uint32_t> takeHex(std::string_view& text) noexcept {
    text = trimmed(text);
    std::uint32_t number = 0;
    const char* last = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), last, number, 16);
    if (error != std::errc{})
        return std::nullopt;
    text = trimmed({stop, static_cast<std::size_t>(last - stop)});
    return number;
}

std::string littleEndian(std::uint32_t number) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<char>((number >> shift) & 0xFFU));
    return bytes;
}

bool isTextType(RegistryType type) noexcept {
    return type == RegistryType::text || type == RegistryType::expandableText ||
           type == RegistryType::multiText;
}

class Importer {
public:
    Importer(std::string text, RegistryTree& tree) : text_(std::move(text)), tree_(tree) {}

    void run() {
        std::string_view line;
        while (!rest_.empty() && line.empty())
            line = takeLine(rest_);
        utf16Texts_ = equalsIgnoringCase(line, "Windows Registry Editor Version 5.00");
        if (!utf16Texts_ && !equalsIgnoringCase(line, "REGEDIT4"))
            return;
        while (!rest_.empty())
            readLine(takeLine(rest_));
    }

private:
    void readLine(std::string_view line) {
        if (line.starts_with('['))
            readKey(line.substr(1));
        else if (key_ != nullptr && (line.starts_with('@') || line.starts_with('"')))
            readValue(line);
    }

    RegistryKeyData* takeHive(std::string_view& path) {
        const std::string_view root = takePart(path);
        if (equalsIgnoringCase(root, "HKEY_CURRENT_USER"))
            return &tree_.currentUser;
        return equalsIgnoringCase(root, "HKEY_LOCAL_MACHINE") ? &tree_.localMachine : nullptr;
    }

    void readKey(std::string_view header) {
        key_ = nullptr;
        const std::size_t close = header.rfind(']');
        if (close == std::string_view::npos)
            return;
        std::string_view path = header.substr(0, close);
        const bool removal = takeCharacter(path, '-');
        RegistryKeyData* hive = takeHive(path);
        if (hive == nullptr)
            return;
        if (removal)
            removeKey(*hive, path);
        else
            key_ = makeRegistryKey(tree_, *hive, path);
    }

    static void removeKey(RegistryKeyData& hive, std::string_view path) {
        if (!isWellFormed(path))
            return;
        if (path.ends_with('\\'))
            path.remove_suffix(1);
        const std::size_t parentEnd = path.rfind('\\');
        const bool topLevel = parentEnd == std::string_view::npos;
        RegistryKeyData* parent = findKey(&hive, topLevel ? "" : path.substr(0, parentEnd));
        if (parent != nullptr)
            parent->subkeys.erase(upperCase(topLevel ? path : path.substr(parentEnd + 1)));
    }

    void readValue(std::string_view line) {
        std::optional<std::string> name;
        if (takeCharacter(line, '@'))
            name.emplace();
        else
            name = takeString(line);
        line = trimmed(line);
        if (!name || !takeCharacter(line, '='))
            return;
        line = trimmed(line);
        const std::string upperName = upperCase(*name);
        if (line.starts_with('-') && isEndOrComment(line.substr(1)))
            key_->values.erase(upperName);
        else if (auto value = readData(line))
            key_->values.insert_or_assign(upperName, *std::move(value));
    }

    std::optional<RegistryValue> readData(std::string_view data) {
        if (data.starts_with('"')) {
            auto text = takeString(data);
            if (!text || !isEndOrComment(data))
                return std::nullopt;
            return RegistryValue{RegistryType::text, *std::move(text) + '\0'};
        }
        if (takeWord(data, "dword:")) {
            const auto number = takeHex(data);
            if (!number || !isEndOrComment(data))
                return std::nullopt;
            return RegistryValue{RegistryType::number, littleEndian(*number)};
        }
        return takeWord(data, "hex") ? readHex(data) : std::nullopt;
    }

    // Behind "hex": the type and the bytes, with the lines that they go on in.
    std::optional<RegistryValue> readHex(std::string_view data) {
        RegistryValue value{RegistryType::binary, {}};
        if (takeCharacter(data, '(')) {
            const auto type = takeHex(data);
            if (!type || !takeCharacter(data, ')'))
                return std::nullopt;
            value.type = static_cast<RegistryType>(*type); // any number may be stored
        }
        if (!takeCharacter(data, ':'))
            return std::nullopt;
        bool complete = readBytes(data, value.data);
        while (complete && data == "\\") {
            data = takeLine(rest_);
            complete = readBytes(data, value.data);
        }
        if (!complete || !isEndOrComment(data))
            return std::nullopt;
        if (isTextType(value.type))
            value.data = utf16Texts_ ? utf16ToUtf8(value.data, false) : textFromBytes(value.data);
        return value;
    }

    // Takes bytes and commas off the front of `data`; false for a number that is no byte.
    static bool readBytes(std::string_view& data, std::string& bytes) {
        for (auto number = takeHex(data); number; number = takeHex(data)) {
            if (*number > 0xFF)
                return false;
            bytes.push_back(static_cast<char>(*number));
            if (!takeCharacter(data, ','))
                break;
        }
        return true;
    }

    const std::string text_;
    std::string_view rest_ = text_;
    RegistryTree& tree_;
    RegistryKeyData* key_ = nullptr; // what values belong to; nullptr: skipped
    bool utf16Texts_ = false;
};

} // namespace

void importRegistryFile(std::string_view bytes, RegistryTree& tree) {
    Importer(settingsText(bytes), tree).run();
}

const RegistryKeyData* findRegistryKey(const RegistryKeyData& hive, std::string_view path) {
    return findKey(&hive, path);
}

RegistryKeyData* makeRegistryKey(RegistryTree& tree, RegistryKeyData& hive, std::string_view path) {
    if (!isWellFormed(path))
        return nullptr;
    RegistryKeyData* key = &hive;
    while (!path.empty()) {
        const std::string_view name = takePart(path);
        std::unique_ptr<RegistryKeyData>& subkey = key->subkeys[upperCase(name)];
        if (!subkey) {
            subkey = std::make_unique<RegistryKeyData>();
            subkey->name = name;
            subkey->order = ++tree.keyCount;
        }
        key = subkey.get();
    }
    return key;
}

void setRegistryText(RegistryKeyData& key, std::string_view name, std::string_view text) {
    key.values.insert_or_assign(upperCase(name),
                                RegistryValue{RegistryType::text, std::string(text) + '\0'});
}

} // namespace ov::platform
