// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// The platform's profile calls on INI files.
//
// Reading. A line ends at CR, LF or both; a zero byte ends its line; it is trimmed of blanks,
// tabs, vertical tabs and form feeds. A header begins with "[" and has a "]"; its name runs to
// the last "]". Lines before any header form the section "". The key is what stands before the
// first "="; stored names and arguments are trimmed; letter case is ignored in ASCII only. Only
// the first section of a name counts, and in it the first key. A line without "=" reads as
// missing and hides later ones of its name. ";" as the first character makes a comment. One pair
// of matching outer quotes is stripped from a value, and from a default. Byte-order marks (UTF-8,
// UTF-16) are honoured; bytes that are not UTF-8 are Windows-1252. The file is read again at every
// call that names it.
//
// Writing. A value that stands already leaves the file untouched; a key keeps its place and
// spelling; a new key goes to the end of the first section of that name; a new section is
// appended; a new line ends in CR LF; every other line keeps its bytes. The file is locked
// against other writers and replaced atomically; who waits for it waits a second at most, and
// after a wait in vain not at all until it is free again. A write that a server keeps for longer
// has failed for its caller, but may still be made; until it ends the file stays locked. A new file
// is its owner's alone. A directory is never created.
//
// A file whose server does not answer within a second reads as empty, and is not written to by this
// process any more, so that nothing takes the place of settings that nobody has seen.
//
// A file name without "\" (or the native separator) lies in the Windows directory. A file of more
// than profileSizeLimit bytes reads as empty and is not written to.

namespace ov::platform {

constexpr std::uint64_t profileSizeLimit = std::uint64_t{64} * 1024 * 1024;

// Copies the value of `key`, or `fallback`, into `buffer`, cut on a character boundary and ended
// by a zero byte; returns the bytes copied without that zero. Without `key` the keys of the
// section, without `section` the sections of the file, each ended by a zero, the list by one
// more. Never fails: an unreadable file is an empty one.
std::size_t getPrivateProfileString(std::optional<std::string_view> section,
                                    std::optional<std::string_view> key,
                                    std::optional<std::string_view> fallback,
                                    std::span<char> buffer, std::string_view file);

// For several values of one file: its content, and what the call above answers of it.
std::string profileContent(std::string_view file);
std::size_t stringOfProfile(std::string_view content, std::optional<std::string_view> section,
                            std::optional<std::string_view> key,
                            std::optional<std::string_view> fallback, std::span<char> buffer);

// Writes a value; without `value` removes the key that is read, without `key` the first section of
// that name. True also when there was nothing to do. False without `section`, when the file cannot
// be written, and for texts that would damage it: a line end or zero byte in any of them, a key or
// section that would be read as something else.
bool writePrivateProfileString(std::optional<std::string_view> section,
                               std::optional<std::string_view> key,
                               std::optional<std::string_view> value, std::string_view file);

// The path of the file that the calls take for that name; empty when it names nothing.
std::string profilePath(std::string_view file);

// "/etc/orvanta/", or $OV_WINDIR; ends in "\".
std::string windowsDirectory();

} // namespace ov::platform
