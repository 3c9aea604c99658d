// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/dictation.h"

#include "dictation/dictation_record.h"
#include "platform/files.h"
#include "support/modFilePath.h"

namespace ov::modDictation {

Dictation dictationOfPath(std::string_view path) {
    return {modFilePath::directoryPart(path), modFilePath::namePart(path)};
}

std::string pathOf(const Dictation& dictation) {
    return std::string(dictation.directory).append(dictation.name);
}

std::string nativePathOf(const Dictation& dictation) {
    return platform::toNativePath(pathOf(dictation));
}

bool readField(std::int32_t fieldNumber, const Dictation& dictation, std::string& value) {
    std::string buffer;
    return GetDictationField(fieldNumber, dictation.directory,
                             dictationName(dictation.name, buffer), value);
}

} // namespace ov::modDictation
