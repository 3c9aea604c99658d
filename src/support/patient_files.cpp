// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/patient_files.h"

#include "platform/threads/errand.h"

#include <utility>

namespace ov::patient {

using platform::patiently;
using platform::patientStatus;

std::optional<platform::FileKind> fileKind(std::string_view path) {
    return patiently(path, [path = std::string(path)] { return platform::fileKind(path); });
}

bool fileExists(std::string_view path) {
    return fileKind(path) == platform::FileKind::file;
}

bool directoryExists(std::string_view path) {
    return fileKind(path) == platform::FileKind::directory;
}

platform::Status createDirectory(std::string_view path, platform::Access access) {
    return patientStatus(path, [path = std::string(path), access] {
        return platform::createDirectory(path, access);
    });
}

platform::Status createDirectories(std::string_view directory, platform::Access access) {
    return patientStatus(directory, [directory = std::string(directory), access] {
        return platform::createDirectories(directory, access);
    });
}

platform::Status removeFile(std::string_view path) {
    return patientStatus(path, [path = std::string(path)] { return platform::removeFile(path); });
}

platform::Status readFile(std::string_view path, std::string& content, std::uint64_t limit) {
    auto read = patiently(path, [path = std::string(path), limit] {
        std::pair<platform::Status, std::string> result;
        result.first = platform::readFile(path, result.second, limit);
        return result;
    });
    if (!read)
        return platform::noAnswer(path);
    content = std::move(read->second);
    return std::move(read->first);
}

platform::Status replaceFile(std::string_view path, std::string content, platform::Access access) {
    return patientStatus(path, [path = std::string(path), content = std::move(content), access] {
        return platform::replaceFile(path, content, access);
    });
}

platform::Status appendToFile(std::string_view path, std::string content, platform::Access access) {
    return patientStatus(path, [path = std::string(path), content = std::move(content), access] {
        return platform::appendToFile(path, content, access);
    });
}

} // namespace ov::patient
