// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/registry.h"

#include "platform/files.h"
#include "platform/known_folders.h"
#include "platform/settings/registry_file.h"
#include "platform/text.h"

#include <algorithm>

namespace ov::platform {

namespace {

// The export of a few keys is some kilobytes; that of a whole machine is not meant to be here.
constexpr std::uint64_t registrySizeLimit = std::uint64_t{64} * 1024 * 1024;

struct RegistryState {
    std::shared_ptr<const RegistryTree> tree;
};

RegistryState& registryState() {
    thread_local RegistryState ofThread;
    return ofThread;
}

void importFile(const std::string& folder, RegistryTree& tree) {
    std::string bytes;
    if (!folder.empty() && readFile(folder + "registry.reg", bytes, registrySizeLimit).ok())
        importRegistryFile(bytes, tree);
}

void setShellFolder(RegistryTree& tree, RegistryKeyData& hive, std::string_view name,
                    const std::string& folder) {
    if (!folder.empty())
        setRegistryText(*makeRegistryKey(tree, hive, shellFoldersKey), name, folder);
}

// What `key` itself has stays.
void addMissing(RegistryKeyData& key, const RegistryKeyData& from) {
    key.values.insert(from.values.begin(), from.values.end());
    for (const auto& [upperName, subkey] : from.subkeys) {
        std::unique_ptr<RegistryKeyData>& own = key.subkeys[upperName];
        if (!own) {
            own = std::make_unique<RegistryKeyData>();
            own->name = subkey->name;
            own->order = subkey->order;
        }
        if (own.get() != &from)
            addMissing(*own, *subkey);
    }
}

// 64-bit systems keep the keys of 32-bit programs, as the host is one, in a place of their own;
// there we look second.
void addRedirectedKeys(RegistryKeyData& localMachine) {
    const auto software = localMachine.subkeys.find("SOFTWARE");
    const auto* redirected = findRegistryKey(localMachine, R"(Software\WOW6432Node)");
    if (redirected != nullptr)
        addMissing(*software->second, *redirected);
}

std::shared_ptr<const RegistryTree> readTree() {
    auto tree = std::make_shared<RegistryTree>();
    const std::string common = systemConfigFolder();
    setShellFolder(*tree, tree->currentUser, "AppData", userConfigFolder());
    setShellFolder(*tree, tree->localMachine, "Common AppData", common);
    importFile(common.empty() ? common : common + "Orvanta\\", *tree);
    importFile(perUserFolder(), *tree);
    addRedirectedKeys(tree->localMachine);
    return tree;
}

} // namespace

long RegistryKey::open(RegistryHive hive, std::string_view key) {
    close();
    if (key.starts_with('\\'))
        return registry_result::badPath;
    if (!registryState().tree)
        registryState().tree = readTree();
    const auto& tree = registryState().tree;
    const auto* found = findRegistryKey(
        hive == RegistryHive::currentUser ? tree->currentUser : tree->localMachine, key);
    if (found == nullptr)
        return registry_result::notFound;
    data_ = std::shared_ptr<const RegistryKeyData>(tree, found);
    return registry_result::success;
}

long RegistryKey::queryValue(std::string_view name, RegistryType& type, std::span<char> buffer,
                             std::size_t& size) const {
    if (!data_)
        return registry_result::invalidHandle;
    const auto found = data_->values.find(upperCase(name));
    if (found == data_->values.end())
        return registry_result::notFound;
    const RegistryValue& value = found->second;
    type = value.type;
    size = value.data.size();
    if (size > buffer.size())
        return registry_result::moreData;
    std::copy(value.data.begin(), value.data.end(), buffer.begin());
    return registry_result::success;
}

long RegistryKey::subkeys(std::vector<std::string>& names) const {
    names.clear();
    if (!data_)
        return registry_result::invalidHandle;
    std::vector<const RegistryKeyData*> keys;
    for (const auto& [upperName, key] : data_->subkeys)
        keys.push_back(key.get());
    std::sort(keys.begin(), keys.end(),
              [](const auto* a, const auto* b) { return a->order < b->order; });
    for (const RegistryKeyData* key : keys)
        names.push_back(key->name);
    return registry_result::success;
}

void reloadRegistry() {
    registryState() = {};
}

} // namespace ov::platform
