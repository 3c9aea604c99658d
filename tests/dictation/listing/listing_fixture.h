// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/search/search.h"
#include "platform/directories.h"
#include "tests/child_process.h"
#include "tests/settings_fixture.h"

#include <algorithm>
#include <random>

namespace ov::modDictation {

using Texts = std::vector<std::string>;

// As one thread finds them that lists each folder when it comes to it.
inline void walkPlainly(const std::string& directory, std::size_t depth, Texts& found,
                        std::vector<std::uint64_t> inside = {}) {
    platform::DirectoryReader reader;
    Texts subfolders;
    static_cast<void>(reader.open(directory));
    inside.push_back(reader.stamp().id.file);
    if (std::count(inside.begin(), inside.end(), inside.back()) > 1)
        return;
    for (platform::DirectoryEntry entry; reader.next(entry);) {
        const std::string name(entry.name);
        if (entry.kind == platform::FileKind::file && name.ends_with(".WAV"))
            found.push_back(directory + name);
        if (entry.kind == platform::FileKind::directory && name[0] != '_' && inside.size() <= depth)
            subfolders.push_back(directory + name + "\\");
    }
    for (const std::string& subfolder : subfolders)
        walkPlainly(subfolder, depth, found, inside);
}

inline Texts pathsOf(const DictationList& hits) {
    Texts paths;
    for (std::int32_t i = 1; i <= hits.size(); ++i)
        paths.push_back(pathOf(hits[i]));
    return paths;
}

// Long after whatever the tests have changed.
inline RememberedStore::Moment muchLater() {
    const RememberedStore::Moment now = RememberedStore::Moment::now();
    return {now.wall + 3'600'000'000'000, now.steady};
}

// That believes what is old enough, as all is that the tests have changed.
inline std::shared_ptr<RememberedStore> believingStore() {
    return std::make_shared<RememberedStore>(RememberedStore::Rules{.clock = muchLater});
}

// A tree that is changed at random, as other programs do.
class RandomTree {
public:
    explicit RandomTree(std::uint32_t seed) : random_(seed) { store.addFolder("busy"); }

    void change() {
        const fs::path folder = anyFolder();
        std::error_code gone; // also where it tries to move a folder into itself
        switch (below(8)) {
        case 0:
            fs::remove_all(folder / anyName(), gone);
            break;
        case 1:
            fs::rename(folder / anyName(), anyFolder() / anyName(), gone);
            break;
        case 2:
            if (countLinks() < 6) // they multiply each other
                fs::create_directory_symlink(anyFolder(), folder / ("to" + anyName()), gone);
            break;
        case 3:
            fs::create_directory(folder / ("_" + anyName()), gone);
            break;
        case 4:
        case 5:
            fs::create_directory(folder / anyName(), gone);
            break;
        default:
            std::ofstream(folder / (anyName() + ".WAV"));
        }
    }
    void change(int times) {
        while (times-- > 0)
            change();
    }
    // The same by another program.
    void changeElsewhere(int times) {
        random_.discard(1000); // what the one before has used up
        EXPECT_TRUE(tests::isTrueInChild([&] {
            change(times);
            return true;
        }));
    }

    tests::TemporaryStore store;

private:
    int below(int end) { return static_cast<int>(random_() % static_cast<std::uint32_t>(end)); }
    std::string anyName() { return std::to_string(below(40)); }
    std::ptrdiff_t countLinks() const {
        const fs::recursive_directory_iterator all(store.folder() / "busy");
        return std::count_if(begin(all), end(all), [](const auto& e) { return e.is_symlink(); });
    }
    fs::path anyFolder() {
        std::vector<fs::path> folders{store.folder() / "busy"};
        std::error_code gone;
        for (const auto& entry : fs::recursive_directory_iterator(folders[0], gone))
            if (entry.is_directory(gone) && !entry.is_symlink(gone))
                folders.push_back(entry.path());
        return folders[static_cast<std::size_t>(below(static_cast<int>(folders.size())))];
    }

    std::mt19937 random_;
};

// Searches for all that is there.
class ListingTest : public tests::SettingsTest {
protected:
    static Texts find(const tests::TemporaryStore& store, const SearchMeans& means,
                      std::int32_t depth = 4, std::int32_t limit = usualLimit) {
        DictationList hits;
        search({store.directory(), {}, true, depth, limit}, hits, means);
        return pathsOf(hits);
    }
};

} // namespace ov::modDictation
