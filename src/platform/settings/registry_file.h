// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/registry.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Keys and values in memory, and the reader of exported registry files:
//
//   file    = header { "[" path "]" | "[-" path "]" | value | ";" comment }
//   header  = "Windows Registry Editor Version 5.00" | "REGEDIT4"
//   value   = ( "@" | string ) "=" ( "-" | string | dword | hex )
//   string  = '"' with \" and \\ inside '"'
//   dword   = "dword:" and up to eight hexadecimal digits
//   hex     = "hex:" or "hex(type):" and bytes between commas, going on behind a "\" at the end
//             of a line
//
// "-" removes a value, "[-" a key with all below it. Texts given as bytes are UTF-16 in a file of
// version 5.00 and as the file itself in REGEDIT4; they are kept as UTF-8. Lines that are nothing
// of this are skipped, and so are keys of other hives than the two.

namespace ov::platform {

struct RegistryValue {
    RegistryType type = RegistryType::none;
    std::string data;
};

// Names are looked up in upper case.
struct RegistryKeyData {
    std::string name; // as the file writes it first
    std::size_t order = 0;
    std::map<std::string, RegistryValue> values;
    std::map<std::string, std::unique_ptr<RegistryKeyData>> subkeys;
};

struct RegistryTree {
    RegistryKeyData currentUser;
    RegistryKeyData localMachine;
    std::size_t keyCount = 0; // ever made; numbers them in the order of the files
};

// Keys deeper than this are skipped; it is also the platform's own limit.
constexpr std::size_t deepestRegistryKey = 512;

// Adds what the file says to `tree`. Bytes that are no such file change nothing.
void importRegistryFile(std::string_view bytes, RegistryTree& tree);

// The key at `path` below `hive`, nullptr when there is none; an empty path is the hive.
const RegistryKeyData* findRegistryKey(const RegistryKeyData& hive, std::string_view path);
// The same, made with all its parents where missing; nullptr for a path that names no key.
RegistryKeyData* makeRegistryKey(RegistryTree& tree, RegistryKeyData& hive, std::string_view path);

// Stores a text with its zero.
void setRegistryText(RegistryKeyData& key, std::string_view name, std::string_view text);

} // namespace ov::platform
