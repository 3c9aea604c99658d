// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ov::modDictation {

// A dictation as the file system has it: what lists, writers and pages hand round. Views of what
// somebody else keeps.
struct Dictation {
    std::string_view directory; // ends in "\", or is empty
    std::string_view name;      // of the file, with its ".WAV"; bytes that need not be UTF-8
    bool operator==(const Dictation&) const = default;
};

Dictation dictationOfPath(std::string_view path);

std::string pathOf(const Dictation& dictation);
std::string nativePathOf(const Dictation& dictation);

// Reads a field of the dictation into `value`, as GetDictationField() does.
bool readField(std::int32_t fieldNumber, const Dictation& dictation, std::string& value);

} // namespace ov::modDictation
