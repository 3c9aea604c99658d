// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The resource gateway: numbered texts from the language files of a folder (language_file.h). The
// folder and the files read so far are kept per thread.

namespace ov::resource_gateway {

// The folder of the language files; empty for the default: "DRL\" beside the program or plug-in,
// and for a file that is not there, "share\ovsearch\DRL\" in the program's directory or the
// nearest of the four above it. Forgets the files read so far.
void SetResPath(std::string_view folder);

// Where a file of the default folder lies, for a program or plug-in in that directory (ending in
// "\"); below its "DRL\" when it is nowhere.
std::string defaultPath(std::string_view moduleDirectory, std::string_view fileName);

// Forgets the files read so far, so that the next call sees them as they are now.
void forgetFiles();

// Copies the text into `buffer`, UTF-8 without a terminating zero, cut before the character that
// does not fit, and returns its length in bytes. 0 when there is no such text in that language
// nor in those it falls back to; -1 when the file cannot be read. A file is read once, and that
// it could not be read is remembered as well.
std::int32_t GetResString(std::string_view fileName, std::int32_t number, std::span<char> buffer,
                          std::int32_t language, std::int32_t subLanguage);

} // namespace ov::resource_gateway
