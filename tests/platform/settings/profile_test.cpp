// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The profile calls where they go beyond what was recorded: bytes that are kept, encodings,
// refusals, other writers, and files that are none.

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
using OptionalText = std::optional<std::string_view>;
constexpr OptionalText none;

class Profile : public tests::SettingsTest {
protected:
    std::string value(std::string_view section, OptionalText key, OptionalText fallback = "(none)",
                      std::size_t size = 256) const {
        std::string buffer(size, '#');
        buffer.resize(getPrivateProfileString(section, key, fallback, buffer, path("f.ini")));
        return buffer;
    }
    bool set(OptionalText section, OptionalText key, OptionalText text) const {
        return writePrivateProfileString(section, key, text, path("f.ini"));
    }
};

TEST_F(Profile, editsLeaveEveryOtherByteOrAreRefused) {
    const std::string start = "; head\r\n\r\n[S]\r\n\t; c1\r\n a = 1 \r\n\n";
    const std::string entry = "  k = \"old\" ; t\r\n";
    const std::string tail = "\r\n; tail\r\n";
    const std::string last = "\r\n[T] ; note\r\nx=1\r\n\r\n";
    const std::string whole = start + entry + tail + last;
    // What is there; section, key and text; what is there then.
    using Edit = std::tuple<std::string, OptionalText, OptionalText, OptionalText, std::string>;
    const Edit cases[] = {
        {whole, "S", "k", "new", start + "k=new\r\n" + tail + last},
        {whole, "s", "New", "1", start + entry + tail + "New=1\r\n" + last},
        {whole, "U", "y", "1", whole + "[U]\r\ny=1\r\n"},
        {whole, "S", none, none, "; head\r\n\r\n[T] ; note\r\nx=1\r\n\r\n"},
        {whole, "S", "K", none, start + tail + last},
        {whole, "S", "A", " 1", whole},
        {"\xEF\xBB\xBF", "S", "k", "1", "\xEF\xBB\xBF[S]\r\nk=1\r\n"},
        // UTF-16 with half a surrogate pair, in the other byte order, with half a character.
        {"\xFF\xFE[\0S\0]\0\n\0\x00\xD8=\0\n\0k\0=\0\xE4\0\n\0"s, "S", "k", "€",
         "\xFF\xFE[\0S\0]\0\n\0\x00\xD8=\0\n\0k\0=\0\xAC\x20\n\0"s},
        {"\xFE\xFF\0[\0S\0]"s, "S", "k", "ä", "\xFE\xFF\0[\0S\0]\0\r\0\n\0k\0=\0\xE4\0\r\0\n"s},
        {"\xFF\xFE[\0S\0]\0\n\0k"s, "S", "l", "1", "\xFF\xFE[\0S\0]\0\n\0l\0=\0001\0\r\0\n\0"s},
        // Windows-1252, unless that cannot hold the text or would read as UTF-8.
        {"[S]\nk=\xE4\n", "Ü", "ö", "€", "[S]\nk=\xE4\n[\xDC]\r\n\xF6=\x80\r\n"},
        {"[S]\nk=\xE4\n", "S", "l", "α", "[S]\nk=\xE4\nl=α\r\n"},
        {"[S]\nk=\xE4\n", "S", "l", "Ã¤", "[S]\nk=\xE4\nl=Ã¤\r\n"},
        {"[S]\n", "S", "k", "\xE4", "[S]\nk=ä\r\n"},
        {"[S]\n\xE4x=1\n", "S", "äX", "2", "[S]\n\xE4x=2\n"},
        // Refused: they would damage the file.
        {"[S]\nk=1\n", none, "k", "v", ""},
        {"[S]\nk=1\n", "S", "k", "a\rb", ""},
        {"[S]\nk=1\n", "S", "k", "a\0b"sv, ""},
        {"[S]\nk=1\n", "a\nb", "k", "v", ""},
        {"[S]\nk=1\n", "S", "a=b", "v", ""},
        {"[S]\nk=1\n", "S", "[T", "v]", ""},
        {"[S]\n[T=1\n", "S", "[T", "v]", ""},
        {"[\xE4]\n", "", "ÿþ", "v", ""}, // the beginning would be a byte-order mark
        {"a=1\n\xFF\xFE=2\n", "", "a", none, ""}};
    for (const auto& [before, section, key, text, after] : cases) {
        SCOPED_TRACE(before + " -> " + after);
        write("f.ini", before);
        EXPECT_EQ(set(section, key, text), !after.empty());
        EXPECT_EQ(read("f.ini"), after.empty() ? before : after);
    }
}

TEST_F(Profile, readsEachValueInItsOwnEncodingAndCutsBetweenCharacters) {
    write("f.ini", "[\xD6l]\na=ä\nb=\xE4\n\xFC=\xE4\xC3\xA4\n[S]\n;c=1\n ; d=2\nk=a€\n€=1\n[]\n");
    EXPECT_EQ(value("ÖL", "a") + value("Öl", "b") + value("Öl", "ü"), "äääÃ¤");
    EXPECT_EQ(value("S", none, none, 7), "k\0€"s);
    EXPECT_EQ(value("S", none, none, 6), "k\0"s);
    EXPECT_EQ(value("S", "k", none, 4), "a");
}

TEST_F(Profile, whatIsNoReadableFileIsKeptAndAFolderThatCannotBeLockedIsNoHindrance) {
    fs::create_directory(folder() / "f.ini");
    EXPECT_EQ(value("S", "k"), "(none)");
    EXPECT_FALSE(set("S", "k", "v"));
    EXPECT_FALSE(writePrivateProfileString("S", "k", "v", path("f.ini\0x"s)));
    fs::remove(folder() / "f.ini");
    write("f.ini", "[S]\nk=1\n");
    chmod(folder().c_str(), 0733); // may not be listed
    chmod((folder() / "f.ini").c_str(), 0222);
    EXPECT_TRUE(tests::isTrueUnprivileged(
        [this] { return value("S", "k") == "(none)" && !set("S", "k", "2"); }));
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

TEST_F(Profile, defaultLosesItsQuotesLikeAValue) {
    write("f.ini", "[T]\nk\n");
    for (const auto& [fallback, expected] :
         {std::pair("\"\"d\"\"", "\"d\""), {"'d'  ", "d"}, {"\"d'", "\"d'"}})
        for (const OptionalText key : {OptionalText("k"), none})
            EXPECT_EQ(value("S", key, fallback), expected);
}

} // namespace
} // namespace ov::platform
