// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/modRegistry.h"

#include "support/log.h"
#include "support/modFilePath.h"
#include "support/modINI.h"
#include "support/numbers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace ov::modRegistry {

namespace {

using platform::RegistryType;

constexpr std::size_t bufferSize = 1024;

struct State {
    bool reporting = false;
};

State& state() {
    thread_local State threadState;
    return threadState;
}

// The log asks the registry for its own folder, so an error there must not be reported again.
void reportError(long result, std::string_view key, std::string_view name,
                 std::string_view procedureName) {
    if (result == platform::registry_result::notFound || state().reporting)
        return;
    state().reporting = true;
    std::string description(key);
    if (!name.empty())
        description.append(": ").append(name);
    WriteErrorLog(Error(static_cast<int>(result), description + " cannot be read"), procedureName);
    state().reporting = false;
}

std::uint32_t numberFrom(std::span<const char> bytes) noexcept {
    std::uint32_t number = 0;
    for (unsigned i = 0; i < 4; ++i)
        number |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    return number;
}

std::optional<std::string> readValue(RegistryHive hive, std::string_view key,
                                     std::string_view name) {
    platform::RegistryKey open;
    RegistryType type = RegistryType::none;
    std::array<char, bufferSize> buffer{};
    std::size_t size = 0;
    long result = open.open(hive, key);
    if (result == platform::registry_result::success)
        result = open.queryValue(name, type, buffer, size);
    if (result != platform::registry_result::success) {
        reportError(result, key, name, "RegistryGetValueEx");
        return std::nullopt;
    }
    if (type == RegistryType::text || type == RegistryType::expandableText) {
        const std::string_view text(buffer.data(), size);
        return std::string(text.substr(0, text.find('\0')));
    }
    if (type == RegistryType::number)
        return std::to_string(static_cast<std::int32_t>(numberFrom(buffer)));
    return std::nullopt;
}

std::vector<std::string> subkeyNames(RegistryHive hive, std::string_view key,
                                     std::string_view procedureName) {
    std::vector<std::string> names;
    platform::RegistryKey open;
    long result = open.open(hive, key);
    if (result == platform::registry_result::success)
        result = open.subkeys(names);
    if (result != platform::registry_result::success)
        reportError(result, key, {}, procedureName);
    return names;
}

} // namespace

std::string RegistryGetValueEx(RegistryHive hive, std::string_view key, std::string_view name,
                               std::string_view defaultValue) {
    return readValue(hive, key, name).value_or(std::string(defaultValue));
}

bool RegistryGetBoolean(RegistryHive hive, std::string_view key, std::string_view name,
                        bool defaultValue) {
    return modINI::BooleanFromText(
        RegistryGetValueEx(hive, key, name, modINI::TextFromBoolean(defaultValue)));
}

std::string RegistryGetPath(RegistryHive hive, std::string_view key, std::string_view name,
                            std::string_view defaultValue, bool allowMissing) {
    return modINI::PathFromText(RegistryGetValueEx(hive, key, name, defaultValue), allowMissing);
}

std::string GetShellFolder(std::string_view name) {
    const RegistryHive hive =
        name.starts_with("Common ") ? RegistryHive::localMachine : RegistryHive::currentUser;
    return modFilePath::AddBackslash(RegistryGetValueEx(hive, platform::shellFoldersKey, name, ""));
}

std::vector<std::string> REGReadSubKeys(RegistryHive hive, std::string_view key) {
    std::vector<std::string> keys = subkeyNames(hive, key, "REGReadSubKeys");
    for (std::string& subkey : keys)
        subkey.insert(0, modFilePath::AddBackslash(key));
    return keys;
}

std::vector<std::string> REGReadSubKeyNames(RegistryHive hive, std::string_view key) {
    return subkeyNames(hive, key, "REGReadSubKeyNames");
}

} // namespace ov::modRegistry
