// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/known_folders.h"
#include "platform/registry.h"
#include "tests/environment.h"
#include "tests/temporary_store.h"

#include <gtest/gtest.h>

#include <iterator>

// What the tests of settings files share: an empty folder, files in it, and the environment.

namespace ov::tests {

// An empty folder that is also the Windows directory and the per-user folder.
class SettingsTest : public ::testing::Test {
public:
    SettingsTest() { platform::setPerUserFolder(path("")); }
    ~SettingsTest() override { platform::setPerUserFolder({}); }

protected:
    const fs::path& folder() const { return store_.folder(); }
    // The path text of a file of the folder; "" is the folder with a "\" at its end.
    std::string path(const std::string& name) const { return store_.directory() + name; }
    void write(const std::string& name, std::string_view bytes) { store_.add(name, bytes); }
    // Empty for what is no file.
    std::string read(const std::string& name) const {
        if (!fs::is_regular_file(folder() / name))
            return {};
        std::ifstream file(folder() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::size_t entryCount() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder()), fs::directory_iterator()));
    }

private:
    TemporaryStore store_;
    Environment windowsDirectory_{"OV_WINDIR", store_.folder().native()};
};

} // namespace ov::tests
