// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/catalogue_check.h"

#include "catalogue/known_folders.h"
#include "dictation/listing/folder_listing.h"

#include <algorithm>
#include <random>
#include <unordered_map>

namespace ov::catalogue {

using platform::Status;
using Names = std::vector<std::string>;

namespace {

struct Content {
    Names dictations; // sorted
    Names folders;
    bool operator==(const Content&) const = default;

    void sort() {
        std::ranges::sort(dictations);
        std::ranges::sort(folders);
    }
};

void append(std::string_view rest, Names& names) {
    for (modDictation::ListedName name; modDictation::takeName(rest, name);)
        if (!name.hasBackslash)
            names.emplace_back(name.name);
}

// The walk is inside of it already, and does not look into it again.
bool isCircular(const std::string& directory, const std::string& root) {
    const auto stamp = platform::directoryStamp(directory);
    if (!stamp)
        return false;
    for (std::string_view above = directoryAbove(directory); above.size() >= root.size();
         above = directoryAbove(above))
        if (const auto other = platform::directoryStamp(above); other && other->id == stamp->id)
            return true;
    return false;
}

Status list(const std::string& directory, Content& content) {
    modDictation::FolderReader reader;
    if (Status opened = reader.open(directory); !opened.ok())
        return opened;
    modDictation::ListedNames names;
    while (!reader.ended()) {
        reader.next(names);
        append(names.dictations, content.dictations);
        append(names.folders, content.folders);
    }
    content.sort();
    return reader.status();
}

// At one moment: again while it changes.
Status contentOf(const std::string& directory, const std::string& root, Content& content) {
    constexpr int most = 5;
    Status status;
    for (int i = 0; i < most; ++i) {
        const auto before = platform::directoryStamp(directory);
        content = {};
        status = isCircular(directory, root) ? Status() : list(directory, content);
        if (platform::directoryStamp(directory) == before)
            break;
    }
    return status;
}

// Those that are looked at, by their directories, with what the catalogue has in them. Others each
// time, so that many checks see them all.
Status readKnown(Catalogue& catalogue, const std::vector<Folder>& folders, std::size_t most,
                 std::unordered_map<std::string, Content>& known) {
    const std::size_t step = std::max<std::size_t>((folders.size() + most - 1) / most, 1);
    for (std::size_t i = std::random_device()() % step; i < folders.size(); i += step)
        if (Status read = catalogue.names(folders[i].id, known[folders[i].path].dictations);
            !read.ok())
            return read;
    for (const Folder& folder : folders) {
        const std::string above(directoryAbove(folder.path));
        if (const auto found = known.find(above); found != known.end())
            found->second.folders.push_back(
                folder.path.substr(above.size(), folder.path.size() - above.size() - 1));
    }
    return {};
}

} // namespace

Status checkStore(Catalogue& catalogue, const Store& store, CheckReport& report,
                  std::size_t mostFolders) {
    const Moment moment(catalogue);
    Status status = moment.begun();
    if (status.ok())
        status = platform::DirectoryReader().open(store.root);
    std::vector<Folder> folders;
    if (status.ok())
        status = catalogue.folders(store.id, folders);
    std::unordered_map<std::string, Content> known;
    if (status.ok())
        status = readKnown(catalogue, folders, mostFolders, known);
    if (!status.ok())
        return status;
    for (auto& [directory, expected] : known) {
        expected.sort();
        ++report.folders;
        report.dictations += static_cast<std::int64_t>(expected.dictations.size());
        Content content;
        const Status read = contentOf(directory, store.root, content);
        if (read.kind() == Status::Kind::missing || (read.ok() && content != expected))
            report.differing.push_back(directory);
        else if (!read.ok())
            report.problems.push_back(read);
    }
    std::ranges::sort(report.differing);
    return {};
}

} // namespace ov::catalogue
