// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The profile calls where they go beyond one call after the other (profile_recorded_test.cpp):
// other writers, and files that are none.

#include "platform/posix/unfinished_file.h"
#include "platform/profile.h"
#include "platform/threads/errand.h"
#include "tests/child_process.h"
#include "tests/settings_fixture.h"
#include "tests/slow_store.h"

#include <algorithm>
#include <sys/file.h>
#include <thread>

namespace ov::platform {
namespace {

using namespace std::literals;

class Profile : public tests::SettingsTest {
protected:
    bool isThere() const {
        std::string buffer(9, '#');
        return getPrivateProfileString("S", "k", {}, buffer, path("f.ini")) > 0;
    }
    bool set(std::string_view section, std::string_view key, std::string_view text) const {
        return writePrivateProfileString(section, key, text, path("f.ini"));
    }
};

TEST_F(Profile, whatIsNoReadableFileIsKeptAndAFolderThatCannotBeLockedIsNoHindrance) {
    fs::create_directory(folder() / "f.ini");
    EXPECT_FALSE(isThere());
    EXPECT_FALSE(set("S", "k", "v"));
    EXPECT_FALSE(writePrivateProfileString("S", "k", "v", path("f.ini\0x"s)));
    fs::remove(folder() / "f.ini");
    write("f.ini", "[S]\nk=1\n");
    chmod(folder().c_str(), 0733); // may not be listed
    chmod((folder() / "f.ini").c_str(), 0222);
    EXPECT_TRUE(tests::isTrueUnprivileged([this] { return !isThere() && !set("S", "k", "2"); }));
    chmod((folder() / "f.ini").c_str(), 0666);
    EXPECT_TRUE(tests::isTrueUnprivileged([this] { return set("S", "k", "2"); }));
    EXPECT_EQ(read("f.ini"), "[S]\nk=2\n");
}

TEST_F(Profile, manyWritersLoseNothingWithoutAWord) {
    constexpr int writers = 8;
    constexpr int count = 25;
    std::array<pid_t, writers> processes{};
    for (std::size_t writer = 0; writer < processes.size(); ++writer)
        if (processes[writer] = fork(); processes[writer] == 0) {
            int refused = 0;
            for (int i = 0; i < count; ++i)
                refused += set(std::to_string(writer), std::to_string(i), "v") ? 0 : 1;
            _exit(refused);
        }
    int left = writers * count;
    for (const pid_t process : processes) {
        int status = 0;
        EXPECT_EQ(waitpid(process, &status, 0), process);
        left -= WEXITSTATUS(status); // a machine so busy that the wait was too long
    }
    const std::string content = read("f.ini");
    EXPECT_EQ(std::count(content.begin(), content.end(), '='), left);
    EXPECT_GT(left, writers * count / 2);
    EXPECT_EQ(entryCount(), 1U); // no lock and no temporary file
}

// Each wait of its own would hold a window up for as many seconds as there are settings.
TEST_F(Profile, aRowOfSettingsWaitsOnceForAFolderThatIsLocked) {
    constexpr unsigned farLongerThanOneWait = 15;
    constexpr int settings = 60;
    write("f.ini", "[S]\nk=1\n");
    const int holder = open(folder().c_str(), O_RDONLY);
    ASSERT_EQ(flock(holder, LOCK_EX), 0);
    EXPECT_TRUE(tests::isTrueInChild([this] {
        alarm(farLongerThanOneWait);
        for (int i = 0; i < settings; ++i)
            if (set("S", "k", "2") || !set("S", "k", "1"))
                return false;
        return true;
    })) << "and what stands already needs no lock";
    EXPECT_FALSE(set("S", "k", "2"));
    const tests::TemporaryStore elsewhere;
    fs::create_symlink(folder() / "f.ini", elsewhere.folder() / "link.ini");
    EXPECT_FALSE(writePrivateProfileString("S", "k", "2", elsewhere.path("link.ini")))
        << "the same file by another name";
    flock(holder, LOCK_UN);
    EXPECT_TRUE(set("S", "k", "2")) << "free again";
    close(holder);
}

// It would take the place of what another program has written meanwhile.
TEST_F(Profile, aWriteThatIsLeftBehindIsLockedUntilItEnds) {
    const std::string unfinished = unfinishedName("/", 1); // which only writers look at
    tests::TemporaryStore store;
    store.add(unfinished.substr(1));
    tests::SlowStore server(store);
    if (!server.isMounted())
        GTEST_SKIP() << tests::SlowStore::why;
    const std::string file = server.path("f.ini");
    const int other = open(toNativePath(server.directory()).c_str(), O_RDONLY);
    server.hang("look", unfinished);
    EXPECT_FALSE(writePrivateProfileString("S", "k", "1", file));
    EXPECT_TRUE(server.hasCaught());
    EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0);
    server.release();
    while (CalledPlace::isSilent(file))
        std::this_thread::yield();
    EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    close(other);
}

TEST_F(Profile, newFilesAreTheOwnersAlone) {
    const mode_t mask = umask(0);
    for (const mode_t mode : {0600U, 0644U}) { // the second by an administrator
        EXPECT_TRUE(set("S", "k", std::to_string(mode)));
        EXPECT_EQ(fs::status(folder() / "f.ini").permissions(), fs::perms(mode));
        chmod((folder() / "f.ini").c_str(), 0644);
    }
    umask(mask);
}

} // namespace
} // namespace ov::platform
