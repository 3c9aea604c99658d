// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Settings in INI files, by kind of value. Nothing here raises: what is missing or unreadable is
// the default, and a writer tells whether the file now holds the value; one that failed has told
// the log and the user (support/unsaved.h). A file name without "\" lies in the Windows directory.

namespace ov::modINI {

// The value, or `defaultValue`, with a trailing "\", up to 4095 bytes. Without `allowMissing`
// empty when there is no such directory. A value that begins with "file:///" is a path whose
// bytes may be given by "%" and two hexadecimal digits.
std::string ReadIniPath(std::string_view section, std::string_view key,
                        std::string_view defaultValue, std::string_view file, bool allowMissing);

// The number at the start of the value, in the form of the user's country ("1.234,5", where
// thousands are whole groups of three digits) or with a decimal point, rounded half to even and
// saturated; or "&H" and hexadecimal digits, where "&HFFFFFFFF" is -1. When `minimum` and `maximum`
// differ, what is read is limited to them. A value without a number is `defaultValue`, which is not
// limited.
std::int32_t ReadIniNumber(std::string_view section, std::string_view key,
                           std::int32_t defaultValue, std::int32_t minimum, std::int32_t maximum,
                           std::string_view file);

// True for every number but zero; a text without a number counts as zero.
bool ReadIniBoolean(std::string_view section, std::string_view key, bool defaultValue,
                    std::string_view file);
// Those of several keys, for which the file is read once.
std::vector<bool> ReadIniBooleans(std::string_view section, std::span<const std::string> keys,
                                  bool defaultValue, std::string_view file);

// Each writer also removes a section "[0]": no file of ours may use one.
bool WriteIniString(std::string_view section, std::string_view key, std::string_view value,
                    std::string_view file);
bool WriteIniNumber(std::string_view section, std::string_view key, std::int32_t number,
                    std::string_view file);
// What ReadIniPath() reads back byte for byte: a path that is no UTF-8, or that the file would
// change, is written in its "file:///" form. False also for one that is too long to be read.
bool WriteIniPath(std::string_view section, std::string_view key, std::string_view path,
                  std::string_view file);
// As "-1" or "0".
bool WriteIniBoolean(std::string_view section, std::string_view key, bool value,
                     std::string_view file);

// Reads the file by its own, stricter rules: the header line is "[section]" and nothing else, the
// key stands right before the "=", quotes and blanks behind the "=" belong to the value, and every
// section of that name is looked into. Letter case of section and key is ignored in all alphabets.
std::string ReadIniValueDirect(std::string_view section, std::string_view key,
                               std::string_view defaultValue, std::string_view file);

// How the readers above and those of the registry take the text of a setting.
bool BooleanFromText(std::string_view text);
std::string_view TextFromBoolean(bool value) noexcept;
std::string PathFromText(std::string_view text, bool allowMissing);

} // namespace ov::modINI
