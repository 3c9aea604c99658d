// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "environment.h"
#include "platform/files.h"
#include "platform/known_folders.h"
#include "platform/registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

// What the tests of settings files share: an empty folder, files in it, and the environment.

namespace ov::tests {

namespace fs = std::filesystem;

// An empty folder that is also the Windows directory and the per-user folder.
class SettingsTest : public ::testing::Test {
public:
    SettingsTest() : folder_(makeFolder()), windowsDirectory_("OV_WINDIR", folder_.native()) {
        platform::setPerUserFolder(path(""));
    }
    ~SettingsTest() override {
        platform::setPerUserFolder({});
        fs::permissions(folder_, fs::perms::owner_all);
        fs::remove_all(folder_);
    }
    SettingsTest(const SettingsTest&) = delete;
    SettingsTest& operator=(const SettingsTest&) = delete;

protected:
    const fs::path& folder() const { return folder_; }
    // The path text of a file of the folder; "" is the folder with a "\" at its end.
    std::string path(const std::string& name) const {
        return platform::fromNativePath(folder_.native()) + "\\" + name;
    }
    void write(const std::string& name, std::string_view bytes) const {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
    }
    // Empty for what is no file.
    std::string read(const std::string& name) const {
        if (!fs::is_regular_file(folder_ / name))
            return {};
        std::ifstream file(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::size_t entryCount() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

private:
    static fs::path makeFolder() {
        std::string pattern = (fs::temp_directory_path() / "ovsearch-settings-XXXXXX").native();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        return fs::canonical(pattern);
    }

    fs::path folder_;
    Environment windowsDirectory_;
};

} // namespace ov::tests
