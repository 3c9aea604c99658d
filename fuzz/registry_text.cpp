// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Any bytes as an exported registry file, as they are and as the UTF-16 of such a file.

#include "fuzz/fuzzing.h"
#include "platform/settings/registry_file.h"
#include "platform/text.h"

#include <string>

namespace {

using namespace ov::platform;
using ov::fuzzing::require;

void checkKey(const RegistryKeyData& key, std::size_t depth) {
    require(depth <= deepestRegistryKey);
    for (const auto& [name, value] : key.values)
        require(isValidUtf8(name) && value.data.size() < std::size_t{1} << 24U);
    for (const auto& [name, subkey] : key.subkeys) {
        require(isValidUtf8(name) && !name.empty());
        checkKey(*subkey, depth + 1);
    }
}

void import(std::string_view bytes) {
    RegistryTree tree;
    importRegistryFile(bytes, tree);
    checkKey(tree.currentUser, 0);
    checkKey(tree.localMachine, 0);
    findRegistryKey(tree.localMachine, "Software\\Orvanta\\WF\\OV2000\\");
}

std::string asUtf16(std::string_view text) {
    std::string bytes("\xFF\xFE");
    for (const char c : text)
        bytes.append({c, '\0'});
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = ov::fuzzing::textOf(data, size);
    import(text);
    import(asUtf16(text));
    return 0;
}
