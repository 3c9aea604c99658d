// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/saved_searches.h"

#include "dictation/typed/search_text.h"
#include "platform/directories.h"
#include "platform/text.h"
#include "platform/threads/errand.h"
#include "support/log.h"
#include "support/numbers.h"
#include "support/patient_files.h"
#include "widgets/text.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>

namespace ov {

namespace {

constexpr std::string_view ending = ".search";
constexpr std::size_t longestName = 120; // in bytes, of 255
constexpr std::uint64_t largestFile = 1 << 20;

struct FileContent {
    std::string name;
    platform::Status status;
    std::string content;
};

// On another thread; none when there is no such directory.
std::vector<FileContent> readAll(const std::string& directory) {
    std::vector<FileContent> files;
    platform::DirectoryReader reader;
    if (!reader.open(directory).ok())
        return files;
    platform::DirectoryEntry entry;
    while (files.size() < SavedSearches::mostListed && reader.next(entry))
        if (entry.kind == platform::FileKind::file && entry.name.ends_with(ending) &&
            entry.name.find('\\') == std::string_view::npos)
            files.push_back({std::string(entry.name), {}, {}});
    for (FileContent& file : files)
        file.status = platform::readFile(directory + file.name, file.content, largestFile);
    return files;
}

std::vector<SavedSearch> searchesIn(const std::string& directory) {
    std::vector<SavedSearch> searches;
    if (directory.empty())
        return searches;
    auto files = platform::patiently(directory, [directory] { return readAll(directory); });
    if (!files) {
        WriteErrorLog(platform::noAnswer(directory), "SavedSearches");
        return searches;
    }
    for (FileContent& file : *files) {
        modDictation::SearchText text = modDictation::readSearchText(file.content);
        if (!file.status.ok() || text.search.criteria.empty()) {
            WriteErrorLog(Error(0, file.name + " holds no search"), "SavedSearches");
            continue;
        }
        if (text.skipped > 0)
            WriteErrorLog(Error(0, file.name + " holds lines that are no criteria"),
                          "SavedSearches");
        const std::string stem = file.name.substr(0, file.name.size() - ending.size());
        std::string name = readableSearchName(text.name.empty() ? stem : text.name);
        searches.push_back(
            {directory + file.name, std::move(name), std::move(text.search), text.skipped});
    }
    return searches;
}

platform::Status write(const std::string& file, const modDictation::Search& search,
                       std::string_view name) {
    modDictation::Search kept;
    kept.criteria = search.criteria;
    kept.all = search.all;
    return patient::replaceFile(file, modDictation::writeSearchText(kept, name),
                                platform::Access::ownerOnly);
}

// "12" of "...\Recent\12.search"; 0 of files that are not ours.
std::int32_t numberOf(const SavedSearch& recent) {
    constexpr std::int32_t most = 1'000'000'000;
    const std::string_view path = recent.file;
    const std::int32_t number = leadingInt32(path.substr(path.rfind('\\') + 1));
    return number < 0 || number > most ? 0 : number;
}

bool asksForTheSame(const modDictation::Search& one, const modDictation::Search& other) {
    return one.criteria == other.criteria && one.all == other.all;
}

} // namespace

std::string readableSearchName(std::string_view bytes) {
    QString text;
    for (const char32_t c : widgets::toQt(bytes).toUcs4())
        if (QChar::isPrint(c) && QChar::category(c) != QChar::Other_Format &&
            QChar::category(c) != QChar::Separator_Line &&
            QChar::category(c) != QChar::Separator_Paragraph)
            text += QString::fromUcs4(&c, 1);
    return widgets::toUtf8(text.trimmed());
}

std::string savedSearchFileName(std::string_view name) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string file;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = byte > 0x20 && byte != 0x7F && c != '/' && c != '\\' && c != '%' &&
                           (c != '.' || !file.empty());
        const bool blankInside = c == ' ' && !file.empty();
        if (plain || blankInside)
            file.push_back(c);
        else
            file.append({'%', digits[byte / 16U], digits[byte % 16U]});
    }
    return std::string(platform::truncateUtf8(file, longestName));
}

std::vector<SavedSearch> SavedSearches::saved() const {
    std::vector<SavedSearch> searches = searchesIn(directory_);
    std::ranges::sort(searches, {}, [](const SavedSearch& one) {
        return std::pair(platform::upperCase(one.name), one.file);
    });
    return searches;
}

std::vector<SavedSearch> SavedSearches::recent() const {
    std::vector<SavedSearch> searches =
        directory_.empty() ? std::vector<SavedSearch>() : searchesIn(recentDirectory());
    std::ranges::sort(searches, std::greater(), numberOf);
    for (SavedSearch& one : searches)
        one.name.clear(); // that of its file is a number
    return searches;
}

// A name that is cut, or one that a colleague's file has already, gets a number.
std::string SavedSearches::freeFile(const std::string& name,
                                    const std::vector<SavedSearch>& present) const {
    const std::string stem = directory_ + savedSearchFileName(name);
    const auto isTaken = [&](const std::string& file) {
        return std::ranges::any_of(present, [&](const auto& one) { return one.file == file; }) ||
               patient::fileKind(file) != platform::FileKind::missing;
    };
    std::string file = stem + std::string(ending);
    for (std::size_t i = 2; i < mostListed && isTaken(file); ++i)
        file = stem + "~" + std::to_string(i) + std::string(ending);
    return file;
}

platform::Status SavedSearches::save(const std::string& name,
                                     const modDictation::Search& search) const {
    const std::vector<SavedSearch> present = saved();
    const auto same = std::ranges::find(present, name, &SavedSearch::name);
    if (same != present.end())
        return write(same->file, search, name);
    platform::Status made = patient::createDirectories(directory_, platform::Access::ownerOnly);
    return made.ok() ? write(freeFile(name, present), search, name) : made;
}

platform::Status SavedSearches::rename(const SavedSearch& renamed, const std::string& name) const {
    if (name == renamed.name)
        return {};
    std::string content;
    if (platform::Status read = patient::readFile(renamed.file, content); !read.ok())
        return read;
    const std::vector<SavedSearch> present = saved();
    const auto same = std::ranges::find(present, name, &SavedSearch::name);
    const std::string file = same != present.end() ? same->file : freeFile(name, present);
    platform::Status status = patient::replaceFile(
        file, modDictation::renamedSearchText(content, name), platform::Access::ownerOnly);
    return status.ok() && file != renamed.file ? remove(renamed) : status;
}

platform::Status SavedSearches::remove(const SavedSearch& saved) {
    return patient::removeFile(saved.file);
}

platform::Status SavedSearches::note(const modDictation::Search& search) const {
    if (directory_.empty())
        return {};
    std::vector<SavedSearch> present = recent();
    const std::int32_t number = present.empty() ? 1 : numberOf(present.front()) + 1;
    if (!present.empty() && asksForTheSame(present.front().search, search))
        return {};
    platform::Status status =
        patient::createDirectories(recentDirectory(), platform::Access::ownerOnly);
    if (status.ok())
        status =
            write(recentDirectory() + std::to_string(number) + std::string(ending), search, {});
    std::size_t kept = 1;
    for (const SavedSearch& old : present)
        if (asksForTheSame(old.search, search) || ++kept > mostRecent)
            remove(old).ok(); // tried again with the next one
    return status;
}

} // namespace ov
