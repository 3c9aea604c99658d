// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace ov {
namespace fs = std::filesystem;
} // namespace ov

// A folder of files for one test, removed at its end. Names are native and relative to the
// folder: "ward/2$ROH@@5$HOCH.WAV"; the folders above a name are made with it. What is there
// already is replaced (links) or kept (folders).

namespace ov::tests {

class TemporaryStore {
public:
    TemporaryStore() : folder_(makeFolder()) {}
    ~TemporaryStore() {
        std::error_code ignored; // a destructor may not throw
        fs::permissions(folder_, fs::perms::owner_all, ignored);
        fs::remove_all(folder_, ignored);
    }
    TemporaryStore(const TemporaryStore&) = delete;
    TemporaryStore& operator=(const TemporaryStore&) = delete;

    // The folder as the operating system writes it, without a separator at its end.
    const fs::path& folder() const { return folder_; }
    std::string native(const std::string& name) const { return (folder_ / name).native(); }

    // The same as path text. directory("") is the folder itself; a directory ends in "\".
    std::string path(const std::string& name) const {
        return platform::fromNativePath(native(name));
    }
    std::string directory(const std::string& name = {}) const {
        return platform::fromNativePath(name.empty() ? folder_.native() : native(name)) + "\\";
    }

    TemporaryStore& add(const std::string& name, std::string_view content = {}) {
        makeParents(name);
        std::ofstream file(folder_ / name, std::ios::binary);
        if (!(file << content).flush())
            throw std::runtime_error("cannot write " + native(name));
        return *this;
    }
    TemporaryStore& addFolder(const std::string& name) {
        fs::create_directories(folder_ / name);
        return *this;
    }
    // `target` is stored as it is: relative to the link, absolute, or leading nowhere.
    TemporaryStore& addLink(const std::string& name, const std::string& target) {
        makeParents(name);
        fs::remove(folder_ / name);
        fs::create_symlink(target, folder_ / name);
        return *this;
    }
    TemporaryStore& addPipe(const std::string& name) {
        makeParents(name);
        if (mkfifo(native(name).c_str(), 0600) != 0)
            throw std::runtime_error("cannot make " + native(name));
        return *this;
    }
    // `depth` folders, one in the other, and one file in each: "1/2/3/...".
    TemporaryStore& addDeep(int depth, const std::string& fileName) {
        std::string at;
        for (int level = 1; level <= depth; ++level) {
            at.append(std::to_string(level)).append("/");
            add(at + fileName);
        }
        return *this;
    }

private:
    static fs::path makeFolder() {
        std::string pattern = (fs::temp_directory_path() / "ovsearch-store-XXXXXX").native();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        return fs::canonical(pattern);
    }
    void makeParents(const std::string& name) const {
        fs::create_directories((folder_ / name).parent_path());
    }

    fs::path folder_;
};

// A few folders, each linked three times from the one before: more ways than any walk ends.
inline void addEndlessTree(TemporaryStore& store) {
    for (int level = 0; level < 30; ++level) {
        const std::string folder = "_" + std::to_string(level) + "/";
        store.add(folder + "x.WAV");
        for (const char* link : {"a", "b", "c"})
            store.addLink(folder + link, "../_" + std::to_string(level + 1));
    }
    store.add("_30/x.WAV").addLink("start", "_0");
}

} // namespace ov::tests
