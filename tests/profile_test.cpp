// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The profile calls where they go beyond what was recorded: bytes that are kept, encodings,
// refusals, other writers, and files that are none.

#include "platform/profile.h"
#include "platform/profile_encoding.h"
#include "settings_fixture.h"

#include <csignal>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace ov::platform {
namespace {

using namespace std::string_literals;
using OptionalText = std::optional<std::string_view>;

class Profile : public tests::SettingsTest {
protected:
    std::string value(std::string_view section, std::string_view key,
                      std::size_t size = 256) const {
        std::string buffer(size, '#');
        buffer.resize(getPrivateProfileString(section, key, "(none)", buffer, path("f.ini")));
        return buffer;
    }
    bool set(OptionalText section, OptionalText key, OptionalText text) const {
        return writePrivateProfileString(section, key, text, path("f.ini"));
    }
};

// Runs `work` in a process of its own; without rights on other people's files if so asked.
template <typename Work>
pid_t startProcess(bool unprivileged, Work work) {
    const pid_t process = fork();
    if (process == 0) {
        constexpr uid_t nobody = 65534;
        if (unprivileged && geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(2);
        _exit(work() ? 0 : 1);
    }
    return process;
}

int exitCode(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

struct EditCase {
    const char* name;
    std::string before;
    const char* section;
    OptionalText key;
    OptionalText text;
    std::string after;
};

class ProfileEdits : public Profile, public ::testing::WithParamInterface<EditCase> {};

TEST_P(ProfileEdits, leavesEveryOtherByte) {
    const EditCase& edit = GetParam();
    write("f.ini", edit.before);
    EXPECT_TRUE(set(edit.section, edit.key, edit.text));
    EXPECT_EQ(read("f.ini"), edit.after);
}

const std::string commented = "; head\r\n\r\n[S]\r\n\t; c1\r\n a = 1 \r\n\n  k = \"old\" ; t\r\n"
                              "\r\n; tail\r\n\r\n[T] ; note\r\nx=1\r\n\r\n";

const EditCase editCases[] = {
    {"value replaced among comments", commented, "S", "k", "new",
     "; head\r\n\r\n[S]\r\n\t; c1\r\n a = 1 \r\n\nk=new\r\n"
     "\r\n; tail\r\n\r\n[T] ; note\r\nx=1\r\n\r\n"},
    {"new key stands before the blank lines", commented, "s", "New", "1",
     "; head\r\n\r\n[S]\r\n\t; c1\r\n a = 1 \r\n\n  k = \"old\" ; t\r\n"
     "\r\n; tail\r\nNew=1\r\n\r\n[T] ; note\r\nx=1\r\n\r\n"},
    {"new section stands behind the blank lines", commented, "U", "y", "1",
     commented + "[U]\r\ny=1\r\n"},
    {"section removed with its comments",
     commented,
     "S",
     {},
     {},
     "; head\r\n\r\n[T] ; note\r\nx=1\r\n\r\n"},
    {"key removed", commented, "T", "X", {}, commented.substr(0, commented.size() - 7) + "\r\n"},
    {"same value with a blank before it", commented, "S", "A", " 1", commented},
    {"line feeds stay", "[S]\nk=1\n\n\nl=2\n", "S", "k", "3", "[S]\nk=3\n\n\nl=2\n"},
    {"carriage returns stay", "[S]\rk=1\rl=2\r", "S", "l", "3", "[S]\rk=1\rl=3\r"},
    {"last line without end", "[S]\nk=1", "S", "k", "2", "[S]\nk=2"},
    {"line behind one without end", "[S]\nk=1", "S", "l", "2", "[S]\nk=1\r\nl=2\r\n"},
    {"only the first of two keys", "[S]\nk=1\nk=2\n", "S", "k", {}, "[S]\nk=2\n"},
    {"only the first of two sections", "[S]\na=1\n[s]\nb=2\n", "S", "b", "3",
     "[S]\na=1\nb=3\r\n[s]\nb=2\n"},
    {"zero byte in another line", "[S]\nk=1\0x\nl=2\n"s, "S", "l", "3", "[S]\nk=1\0x\nl=3\n"s},
    {"UTF-8 mark", "\xEF\xBB\xBF[S]\nk=\xC3\xA4\n", "S", "l", "\xC3\xB6",
     "\xEF\xBB\xBF[S]\nk=\xC3\xA4\nl=\xC3\xB6\r\n"},
    {"only a UTF-8 mark", "\xEF\xBB\xBF", "S", "k", "1", "\xEF\xBB\xBF[S]\r\nk=1\r\n"},
    {"UTF-16, lone surrogate stays", "\xFF\xFE[\0S\0]\0\n\0\x00\xD8=\0\n\0k\0=\0\xE4\0\n\0"s, "S",
     "k", "\xE2\x82\xAC", "\xFF\xFE[\0S\0]\0\n\0\x00\xD8=\0\n\0k\0=\0\xAC\x20\n\0"s},
    {"UTF-16, other byte order", "\xFE\xFF\0[\0S\0]"s, "S", "k", "\xC3\xA4",
     "\xFE\xFF\0[\0S\0]\0\r\0\n\0k\0=\0\xE4\0\r\0\n"s},
    {"UTF-16 with half a character at its end", "\xFF\xFE[\0S\0]\0\n\0k"s, "S", "l", "1",
     "\xFF\xFE[\0S\0]\0\n\0l\0=\0001\0\r\0\n\0"s},
    {"UTF-8 without mark", "[S]\nk=\xC3\xA4\n", "S", "l", "\xC3\xB6",
     "[S]\nk=\xC3\xA4\nl=\xC3\xB6\r\n"},
    {"Windows-1252", "[S]\nk=\xE4\n", "\xC3\x9C", "\xC3\xB6", "\xE2\x82\xAC",
     "[S]\nk=\xE4\n[\xDC]\r\n\xF6=\x80\r\n"},
    {"character that Windows-1252 has not", "[S]\nk=\xE4\n", "S", "l", "\xCE\xB1",
     "[S]\nk=\xE4\nl=\xCE\xB1\r\n"},
    {"text whose Windows-1252 bytes are UTF-8", "[S]\nk=\xE4\n", "S", "l", "\xC3\x83\xC2\xA4",
     "[S]\nk=\xE4\nl=\xC3\x83\xC2\xA4\r\n"},
    {"bytes that are no text are taken as Windows-1252", "[S]\n", "S", "k", "\xE4",
     "[S]\nk=\xC3\xA4\r\n"},
    {"key keeps its bytes", "[S]\n\xE4x=1\n", "S", "\xC3\xA4X", "2", "[S]\n\xE4x=2\n"},
};

INSTANTIATE_TEST_SUITE_P(Case, ProfileEdits, ::testing::ValuesIn(editCases));

void PrintTo(const EditCase& edit, std::ostream* out) {
    *out << edit.name;
}

struct RefusedCase {
    const char* name;
    std::string before;
    OptionalText section, key, text;
};

class ProfileRefusals : public Profile, public ::testing::WithParamInterface<RefusedCase> {};

TEST_P(ProfileRefusals, leavesTheFile) {
    const RefusedCase& edit = GetParam();
    write("f.ini", edit.before);
    EXPECT_FALSE(set(edit.section, edit.key, edit.text));
    EXPECT_EQ(read("f.ini"), edit.before);
    EXPECT_EQ(entryCount(), 1U);
}

constexpr std::string_view zeroInside("a\0b", 3);

const RefusedCase refusedCases[] = {
    {"no section", "[S]\nk=1\n", {}, "k", "v"},
    {"carriage return in the value", "[S]\nk=1\n", "S", "k", "a\rb"},
    {"line feed in the value", "[S]\nk=1\n", "S", "k", "a\n[T]"},
    {"zero byte in the value", "[S]\nk=1\n", "S", "k", zeroInside},
    {"line feed in the key", "[S]\nk=1\n", "S", "a\nb", "v"},
    {"line feed in the section", "[S]\nk=1\n", "a\nb", "k", "v"},
    {"equals sign in the key", "[S]\nk=1\n", "S", "a=b", "v"},
    {"key that is a header", "[S]\nk=1\n", "S", "[T]", "v"},
    {"key and value that are a header", "[S]\nk=1\n", "S", "[T", "v]"},
    {"old key that becomes a header", "[S]\n[T=1\n", "S", "[T", "v]"},
    {"key that looks like a byte-order mark", "[\xE4]\n", "", "\xC3\xBF\xC3\xBE", "v"},
    {"line before one that looks like a mark", "a=1\n\xFF\xFE=2\n", "", "a", {}},
};

INSTANTIATE_TEST_SUITE_P(Case, ProfileRefusals, ::testing::ValuesIn(refusedCases));

void PrintTo(const RefusedCase& edit, std::ostream* out) {
    *out << edit.name;
}

TEST_F(Profile, readsEachValueInItsOwnEncoding) {
    write("f.ini", "[\xD6l]\na=\xC3\xA4\nb=\xE4\n\xFC=\xE4\xC3\xA4\n");
    EXPECT_EQ(value("\xC3\x96L", "a"), "\xC3\xA4");
    EXPECT_EQ(value("\xC3\x96l", "b"), "\xC3\xA4");
    EXPECT_EQ(value("\xC3\x96l", "\xC3\xBC"), "\xC3\xA4\xC3\x83\xC2\xA4");
}

TEST_F(Profile, cutsBetweenCharacters) {
    write("f.ini", "[S]\nk=a\xE2\x82\xAC\n\xE2\x82\xAC=1\n");
    EXPECT_EQ(value("S", "k", 5), "a\xE2\x82\xAC");
    EXPECT_EQ(value("S", "k", 4), "a");
    std::string keys(7, '#');
    EXPECT_EQ(getPrivateProfileString("S", {}, {}, keys, path("f.ini")), 5U);
    EXPECT_EQ(keys, "k\0\xE2\x82\xAC\0\0"s);
    keys.resize(6);
    EXPECT_EQ(getPrivateProfileString("S", {}, {}, keys, path("f.ini")), 2U);
    EXPECT_EQ(keys.substr(0, 4), "k\0\0\0"s);
}

TEST_F(Profile, listsNoComments) {
    write("f.ini", ";o=0\n[S]\n;c=1\n ; d=2\na;b=3\n[]\n");
    std::string keys(99, '#');
    keys.resize(getPrivateProfileString("S", {}, {}, keys, path("f.ini")) + 1);
    EXPECT_EQ(keys, "a;b\0\0"s);
}

TEST_F(Profile, keepsALinkAndTheRightsOfItsFile) {
    std::filesystem::create_directory(folder() / "real");
    write("real/f.ini", "[S]\nk=1\n");
    chmod((folder() / "real/f.ini").c_str(), 0640);
    std::filesystem::create_symlink("real/f.ini", folder() / "f.ini");
    EXPECT_TRUE(set("S", "k", "2"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder() / "f.ini"));
    EXPECT_EQ(read("real/f.ini"), "[S]\nk=2\n");
    struct stat info {};
    stat((folder() / "real/f.ini").c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777U, 0640U);
}

TEST_F(Profile, whatIsNoReadableFileIsEmpty) {
    std::filesystem::create_directory(folder() / "f.ini");
    EXPECT_EQ(value("S", "k"), "(none)");
    EXPECT_FALSE(set("S", "k", "v"));
    std::filesystem::remove(folder() / "f.ini");
    ASSERT_EQ(mkfifo((folder() / "f.ini").c_str(), 0600), 0);
    EXPECT_EQ(value("S", "k"), "(none)");
    EXPECT_FALSE(set("S", "k", "v"));
    EXPECT_TRUE(std::filesystem::is_fifo(folder() / "f.ini"));
    EXPECT_FALSE(writePrivateProfileString("S", "k", "v", path("f.ini\0x"s)));
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(Profile, rightsAreRespected) {
    write("f.ini", "[S]\nk=1\n");
    chmod(folder().c_str(), 0777);
    chmod((folder() / "f.ini").c_str(), 0);
    EXPECT_EQ(exitCode(startProcess(
                  true, [this] { return value("S", "k") == "(none)" && !set("S", "k", "2"); })),
              0);
    chmod((folder() / "f.ini").c_str(), 0444);
    EXPECT_EQ(exitCode(startProcess(
                  true, [this] { return value("S", "k") == "1" && !set("S", "k", "2"); })),
              0);
    // A folder that others may write to but not list cannot be locked; writing goes on.
    chmod((folder() / "f.ini").c_str(), 0666);
    chmod(folder().c_str(), 0733);
    EXPECT_EQ(exitCode(startProcess(true, [this] { return set("S", "k", "2"); })), 0);
    chmod(folder().c_str(), 0700);
    EXPECT_EQ(read("f.ini"), "[S]\nk=2\n");
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(Profile, hugeLinesAndManyLines) {
    const std::string megabytes(std::size_t{8} * 1024 * 1024, 'x');
    std::string blanks(megabytes.size(), '\n');
    write("f.ini", "[" + megabytes + "\n" + megabytes + "=1\n[" + blanks + "[S]\nk=" + megabytes);
    EXPECT_EQ(value("S", "k"), megabytes.substr(0, 255));
    EXPECT_TRUE(set("S", "k", "1"));
    EXPECT_EQ(value("S", "k"), "1");
    EXPECT_EQ(value("", megabytes), "1");
}

// Whatever the bytes: what was written is read back, and once it is removed the file is as before,
// with perhaps a line end or the section's header behind it.
TEST_F(Profile, anyBytesSurviveAWrite) {
    const std::vector<std::string> pieces = {
        "[",       "]",  "=", ";", "\"",   "\r",   "\n",   "\r\n",         "S",  "k", "[S]\n",
        "[S]\r\n", "k=", " ", "x", "\xE4", "\xFF", "\xFE", "\xEF\xBB\xBF", "\t", "=", "\n",
        "\0"s};
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::string before;
        for (auto left = random() % 40; left > 0; --left)
            before += pieces[random() % pieces.size()];
        write("f.ini", before);
        const std::string old = value("S", "new");
        ASSERT_TRUE(set("S", "new", "v\xC3\xB6"));
        EXPECT_EQ(value("S", "new"), "v\xC3\xB6");
        EXPECT_TRUE(set("S", "new", {}));
        EXPECT_EQ(value("S", "new"), old);
        if (isUtf16(settingsEncoding(before)))
            before.resize(before.size() / 2 * 2);
        const std::string after = read("f.ini");
        EXPECT_TRUE(after.starts_with(before))
            << ::testing::PrintToString(before) << "\nbecame " << ::testing::PrintToString(after);
        EXPECT_LE(after.size(), before.size() + 14);
    }
}

TEST_F(Profile, twoWritersLoseNothing) {
    constexpr int count = 200;
    const auto writer = [this](const std::string& prefix) {
        return [this, prefix] {
            bool allWritten = true;
            for (int i = 0; i < count; ++i)
                allWritten = set("S", prefix + std::to_string(i), prefix) && allWritten;
            return allWritten;
        };
    };
    const pid_t first = startProcess(false, writer("a"));
    const pid_t second = startProcess(false, writer("b"));
    EXPECT_EQ(exitCode(first), 0);
    EXPECT_EQ(exitCode(second), 0);
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(value("S", "a" + std::to_string(i)), "a");
        EXPECT_EQ(value("S", "b" + std::to_string(i)), "b");
    }
    EXPECT_EQ(entryCount(), 1U); // no lock and no temporary file
}

TEST_F(Profile, fullDiskKeepsTheOldFile) {
    const std::string before = "[S]\nk=" + std::string(20000, 'x') + "\n";
    write("f.ini", before);
    EXPECT_EQ(exitCode(startProcess(false,
                                    [this] {
                                        signal(SIGXFSZ, SIG_IGN);
                                        const rlimit limit{16384, 16384};
                                        setrlimit(RLIMIT_FSIZE, &limit);
                                        return !set("S", "l", "1");
                                    })),
              0);
    EXPECT_EQ(read("f.ini"), before);
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(Profile, windowsDirectoryComesFromTheEnvironment) {
    EXPECT_EQ(windowsDirectory(), path(""));
    const tests::Environment unset("OV_WINDIR", "");
    EXPECT_EQ(windowsDirectory(), "\\etc\\orvanta\\");
    EXPECT_EQ(profilePath("Orvanta.ini"), "\\etc\\orvanta\\Orvanta.ini");
    EXPECT_EQ(profilePath(".\\x.ini"), ".\\x.ini");
}

} // namespace
} // namespace ov::platform
