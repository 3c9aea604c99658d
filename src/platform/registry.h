// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The registry, read-only. On Linux it is an exported ".reg" text (UTF-16 or UTF-8, the header
// "Windows Registry Editor Version 5.00" or "REGEDIT4") called "registry.reg": first that of the
// system-wide Orvanta folder, then that of the per-user one, whose values win. What is below
// "Software" of the local machine is looked for in "Software\WOW6432Node" next. The shell folders
// come from XDG where neither file names them.

namespace ov::platform {

enum class RegistryHive : std::uint8_t { currentUser, localMachine };

// The numbers of the value types, as stored.
enum class RegistryType : std::uint32_t {
    none = 0,
    text = 1,
    expandableText = 2, // never expanded here
    binary = 3,
    number = 4,
    multiText = 7,
};

// The results of the calls, numbered as the platform numbers them.
namespace registry_result {
constexpr long success = 0;
constexpr long notFound = 2;
constexpr long invalidHandle = 6;
constexpr long badPath = 161;
constexpr long moreData = 234;
} // namespace registry_result

// Where both hives keep the shell folders.
constexpr std::string_view shellFoldersKey =
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders)";

struct RegistryKeyData;

// An open key; closed by its end of life or by close().
class RegistryKey {
public:
    // Opens for reading. Names ignore letter case; a trailing "\" is harmless, a leading one is
    // badPath. An empty `key` is the hive itself.
    long open(RegistryHive hive, std::string_view key);

    // Copies the value's bytes into `buffer` and sets `size` to its full size, also when the
    // buffer is too small (moreData; nothing is copied then). Text is UTF-8, with its zero if it
    // was stored with one; a number has four bytes, little-endian.
    long queryValue(std::string_view name, RegistryType& type, std::span<char> buffer,
                    std::size_t& size) const;

    // The names of the keys right below this one, in the order of the file.
    long subkeys(std::vector<std::string>& names) const;

    void close() noexcept { data_.reset(); }

private:
    std::shared_ptr<const RegistryKeyData> data_;
};

// Forgets what was read, so that the next open() reads the files again: when the per-user folder
// is replaced, and for tests.
void reloadRegistry();

} // namespace ov::platform
