// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/language/resource_gateway.h"

#include "platform/files.h"
#include "platform/text.h"
#include "support/language/language_file.h"
#include "support/modFilePath.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>

namespace ov::resource_gateway {

namespace {

// A hundred times what all texts together need.
constexpr std::uint64_t largestFile = std::uint64_t{16} * 1024 * 1024;

struct State {
    std::string folder;                                                    // empty: the default
    std::map<std::string, std::optional<LanguageFile>, std::less<>> files; // nothing: unreadable
};

State& state() {
    thread_local State threadState;
    return threadState;
}

std::string pathOf(std::string_view fileName) {
    const std::string& folder = state().folder;
    return folder.empty() ? defaultPath(platform::moduleDirectory(), fileName)
                          : folder + std::string(fileName);
}

std::optional<LanguageFile> load(std::string_view fileName) {
    std::string content;
    if (!platform::readFile(pathOf(fileName), content, largestFile).ok())
        return std::nullopt;
    return LanguageFile::parse(content);
}

const LanguageFile* loaded(std::string_view fileName) {
    auto& files = state().files;
    auto file = files.find(fileName);
    if (file == files.end())
        file = files.emplace(fileName, load(fileName)).first;
    return file->second ? &*file->second : nullptr;
}

} // namespace

void SetResPath(std::string_view folder) {
    state() = {};
    state().folder = modFilePath::AddBackslash(folder);
}

std::string defaultPath(std::string_view moduleDirectory, std::string_view fileName) {
    std::string directory(moduleDirectory);
    std::string beside = directory + "DRL\\";
    beside += fileName;
    if (platform::fileExists(beside))
        return beside;
    constexpr int parents = 4;
    for (int level = 0; level <= parents && !directory.empty(); ++level) {
        std::string installed = directory + R"(share\ovsearch\DRL\)";
        installed += fileName;
        if (platform::fileExists(installed))
            return installed;
        directory.pop_back();
        directory.resize(modFilePath::directoryPart(directory).size());
    }
    return beside;
}

void forgetFiles() {
    state().files.clear();
}

std::int32_t GetResString(std::string_view fileName, std::int32_t number, std::span<char> buffer,
                          std::int32_t language, std::int32_t subLanguage) {
    const LanguageFile* file = loaded(fileName);
    if (file == nullptr)
        return -1;
    const std::string_view text = platform::truncateUtf8(
        file->find(number, language, subLanguage).value_or(std::string_view()), buffer.size());
    std::copy(text.begin(), text.end(), buffer.begin());
    return static_cast<std::int32_t>(text.size());
}

} // namespace ov::resource_gateway
