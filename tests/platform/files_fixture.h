// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/directories.h"
#include "tests/temporary_store.h"

#include <gtest/gtest.h>

#include <vector>

namespace ov::platform {

using Lines = std::vector<std::string>;

constexpr mode_t permissionBits = 07777;

class Files : public ::testing::Test {
public:
    Files() { setDriveFolder(store_.native("drives")); }
    ~Files() override { setDriveFolder({}); }

protected:
    std::string content(const std::string& name) const {
        std::string bytes;
        const Status read = readFile(store_.path(name), bytes);
        return read.ok() ? bytes : "(" + read.description() + ")";
    }
    mode_t mode(const std::string& name) const {
        struct stat info {};
        return stat(store_.native(name).c_str(), &info) == 0 ? info.st_mode & permissionBits : 0;
    }
    void setMode(const std::string& name, mode_t bits) const {
        ASSERT_EQ(chmod(store_.native(name).c_str(), bits), 0);
    }
    Lines names(const std::string& directory = {}) const {
        Lines found;
        EXPECT_TRUE(listNames(store_.directory(directory), found).ok());
        return found;
    }

    tests::TemporaryStore store_;
};

} // namespace ov::platform
