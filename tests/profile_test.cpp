// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The profile calls where they go beyond what was recorded: bytes that are kept, encodings,
// refusals, other writers, and files that are none.

#include "child_process.h"
#include "platform/profile.h"
#include "platform/profile_edit.h"
#include "platform/profile_encoding.h"
#include "platform/profile_text.h"
#include "settings_fixture.h"

#include <algorithm>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <vector>

namespace ov::platform {
namespace {

using namespace std::literals;
namespace fs = std::filesystem;
using OptionalText = std::optional<std::string_view>;
constexpr OptionalText none;

class Profile : public tests::SettingsTest {
protected:
    std::string value(std::string_view section, std::string_view key) const {
        std::string buffer(256, '#');
        buffer.resize(getPrivateProfileString(section, key, "(none)", buffer, path("f.ini")));
        return buffer;
    }
    bool set(OptionalText section, OptionalText key, OptionalText text) const {
        return writePrivateProfileString(section, key, text, path("f.ini"));
    }
};

TEST_F(Profile, editsLeaveEveryOtherByte) {
    const std::string start = "; head\r\n\r\n[S]\r\n\t; c1\r\n a = 1 \r\n\n";
    const std::string key = "  k = \"old\" ; t\r\n";
    const std::string tail = "\r\n; tail\r\n";
    const std::string last = "\r\n[T] ; note\r\nx=1\r\n\r\n";
    const std::string whole = start + key + tail + last;
    const struct {
        const char* rule;
        std::string before;
        const char* section;
        OptionalText key, text;
        std::string after;
    } cases[] = {
        {"value replaced", whole, "S", "k", "new", start + "k=new\r\n" + tail + last},
        {"new key", whole, "s", "New", "1", start + key + tail + "New=1\r\n" + last},
        {"new section", whole, "U", "y", "1", whole + "[U]\r\ny=1\r\n"},
        {"section removed", whole, "S", none, none, "; head\r\n\r\n[T] ; note\r\nx=1\r\n\r\n"},
        {"key removed", whole, "S", "K", none, start + tail + last},
        {"same value with a blank before it", whole, "S", "A", " 1", whole},
        {"line behind one without end", "[S]\nk=1", "S", "l", "2", "[S]\nk=1\r\nl=2\r\n"},
        {"only a UTF-8 mark", "\xEF\xBB\xBF", "S", "k", "1", "\xEF\xBB\xBF[S]\r\nk=1\r\n"},
        {"UTF-16, lone surrogate stays", "\xFF\xFE[\0S\0]\0\n\0\x00\xD8=\0\n\0k\0=\0\xE4\0\n\0"s,
         "S", "k", "€", "\xFF\xFE[\0S\0]\0\n\0\x00\xD8=\0\n\0k\0=\0\xAC\x20\n\0"s},
        {"UTF-16, other byte order", "\xFE\xFF\0[\0S\0]"s, "S", "k", "ä",
         "\xFE\xFF\0[\0S\0]\0\r\0\n\0k\0=\0\xE4\0\r\0\n"s},
        {"UTF-16 with half a character at its end", "\xFF\xFE[\0S\0]\0\n\0k"s, "S", "l", "1",
         "\xFF\xFE[\0S\0]\0\n\0l\0=\0001\0\r\0\n\0"s},
        {"1252", "[S]\nk=\xE4\n", "Ü", "ö", "€", "[S]\nk=\xE4\n[\xDC]\r\n\xF6=\x80\r\n"},
        {"not in 1252", "[S]\nk=\xE4\n", "S", "l", "α", "[S]\nk=\xE4\nl=α\r\n"},
        {"in 1252 like UTF-8", "[S]\nk=\xE4\n", "S", "l", "Ã¤", "[S]\nk=\xE4\nl=Ã¤\r\n"},
        {"bytes that are no text", "[S]\n", "S", "k", "\xE4", "[S]\nk=ä\r\n"},
        {"key keeps its bytes", "[S]\n\xE4x=1\n", "S", "äX", "2", "[S]\n\xE4x=2\n"},
    };
    for (const auto& edit : cases) {
        SCOPED_TRACE(edit.rule);
        write("f.ini", edit.before);
        EXPECT_TRUE(set(edit.section, edit.key, edit.text));
        EXPECT_EQ(read("f.ini"), edit.after);
    }
}

TEST_F(Profile, refusesWhatWouldDamageTheFile) {
    const struct {
        const char* rule;
        std::string before;
        OptionalText section, key, text;
    } cases[] = {
        {"no section", "[S]\nk=1\n", none, "k", "v"},
        {"carriage return in the value", "[S]\nk=1\n", "S", "k", "a\rb"},
        {"line feed in the value", "[S]\nk=1\n", "S", "k", "a\n[T]"},
        {"zero byte in the value", "[S]\nk=1\n", "S", "k", "a\0b"sv},
        {"line feed in the key", "[S]\nk=1\n", "S", "a\nb", "v"},
        {"line feed in the section", "[S]\nk=1\n", "a\nb", "k", "v"},
        {"equals sign in the key", "[S]\nk=1\n", "S", "a=b", "v"},
        {"key and value that are a header", "[S]\nk=1\n", "S", "[T", "v]"},
        {"old key that becomes a header", "[S]\n[T=1\n", "S", "[T", "v]"},
        {"key that looks like a byte-order mark", "[\xE4]\n", "", "ÿþ", "v"},
        {"line before one that looks like a mark", "a=1\n\xFF\xFE=2\n", "", "a", none},
    };
    for (const auto& edit : cases) {
        SCOPED_TRACE(edit.rule);
        write("f.ini", edit.before);
        EXPECT_FALSE(set(edit.section, edit.key, edit.text));
        EXPECT_EQ(read("f.ini"), edit.before);
    }
}

TEST_F(Profile, readsEachValueInItsOwnEncoding) {
    write("f.ini", "[\xD6l]\na=ä\nb=\xE4\n\xFC=\xE4\xC3\xA4\n");
    EXPECT_EQ(value("ÖL", "a"), "ä");
    EXPECT_EQ(value("Öl", "b"), "ä");
    EXPECT_EQ(value("Öl", "ü"), "äÃ¤");
}

TEST_F(Profile, listsAreCutBetweenCharacters) {
    write("f.ini", ";o=0\n[S]\n;c=1\n ; d=2\nk=a€\n€=1\n[]\n");
    std::string keys(7, '#');
    EXPECT_EQ(getPrivateProfileString("S", {}, {}, keys, path("f.ini")), 5U);
    EXPECT_EQ(keys, "k\0€\0\0"s);
    keys.resize(6);
    EXPECT_EQ(getPrivateProfileString("S", {}, {}, keys, path("f.ini")), 2U);
    EXPECT_EQ(keys.substr(0, 4), "k\0\0\0"s);
    keys.resize(4);
    EXPECT_EQ(getPrivateProfileString("S", "k", {}, keys, path("f.ini")), 1U);
}

TEST_F(Profile, whatIsNoReadableFileIsEmpty) {
    std::filesystem::create_directory(folder() / "f.ini");
    EXPECT_EQ(value("S", "k"), "(none)");
    EXPECT_FALSE(set("S", "k", "v"));
    std::filesystem::remove(folder() / "f.ini");
    ASSERT_EQ(mkfifo((folder() / "f.ini").c_str(), 0600), 0);
    EXPECT_EQ(value("S", "k"), "(none)");
    EXPECT_FALSE(set("S", "k", "v"));
    EXPECT_FALSE(writePrivateProfileString("S", "k", "v", path("f.ini\0x"s)));
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(Profile, unreadableFileIsKeptAndAFolderThatCannotBeLockedIsNoHindrance) {
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
    for (int writer = 0; writer < writers; ++writer)
        if (fork() == 0) {
            int refused = 0;
            for (int i = 0; i < count; ++i)
                refused += set(std::to_string(writer), std::to_string(i), "v") ? 0 : 1;
            _exit(refused);
        }
    int left = writers * count;
    for (int status = 0; wait(&status) > 0;)
        left -= WEXITSTATUS(status); // a machine so busy that the wait was too long
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
    flock(holder, LOCK_UN);
    EXPECT_TRUE(set("S", "k", "2")) << "free again";
    close(holder);
}

TEST_F(Profile, newFilesAreTheOwnersAlone) {
    const mode_t mask = umask(0);
    EXPECT_TRUE(set("S", "k", "1"));
    EXPECT_EQ(fs::status(folder() / "f.ini").permissions(), fs::perms(0600));
    chmod((folder() / "f.ini").c_str(), 0644); // by an administrator
    EXPECT_TRUE(set("S", "k", "2"));
    EXPECT_EQ(fs::status(folder() / "f.ini").permissions(), fs::perms(0644));
    umask(mask);
}

TEST_F(Profile, defaultLosesItsQuotesLikeAValue) {
    const std::pair<const char*, const char*> cases[] = {
        {"\"d\"", "d"},         {"'d'  ", "d"},   {"\" d \"", " d "}, {"\"\"", ""},
        {"\"\"d\"\"", "\"d\""}, {"\"d'", "\"d'"}, {" 'd'", " 'd'"},   {"\"", "\""}};
    write("f.ini", "[T]\nk\n");
    for (const auto& [fallback, expected] : cases)
        for (const OptionalText key : {OptionalText("k"), none}) {
            std::string buffer(16, '#');
            buffer.resize(getPrivateProfileString("S", key, fallback, buffer, path("f.ini")));
            EXPECT_EQ(buffer, expected) << fallback;
        }
}

TEST_F(Profile, windowsDirectoryComesFromTheEnvironment) {
    EXPECT_EQ(windowsDirectory(), path(""));
    const tests::Environment unset("OV_WINDIR", "");
    EXPECT_EQ(profilePath("Orvanta.ini"), "\\etc\\orvanta\\Orvanta.ini");
    EXPECT_EQ(profilePath(".\\x.ini"), ".\\x.ini");
}

std::vector<std::string> linesOf(const std::string& content) {
    std::vector<std::string> lines;
    for (SettingsLines at(content); at.next();)
        lines.push_back(content.substr(at.begin(), at.end() - at.begin()));
    return lines;
}

// How many lines stand in both, from the beginning and from the end.
std::ptrdiff_t sharedLines(const std::vector<std::string>& a, const std::vector<std::string>& b) {
    const auto front = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    const auto back = std::mismatch(a.rbegin(), std::make_reverse_iterator(front.first), b.rbegin(),
                                    std::make_reverse_iterator(front.second));
    return (front.first - a.begin()) + (back.first - a.rbegin());
}

bool isWithoutOneLine(const std::string& content, const std::string& before) {
    for (SettingsLines at(before); at.next();)
        if (content == before.substr(0, at.begin()) + before.substr(at.end()))
            return true;
    return false;
}

// Whatever the bytes: an edit that is not refused is read back and touches one line.
TEST(ProfileContent, anyBytesSurviveAnEdit) {
    // clang-format off
    const std::vector<std::string> pieces = {
        "[", "]", "=", ";", "\"", "\r", "\n", "\r\n", "S", "k", "[S]\n", "[S]\r\n", "k=", " ", "x", "\xE4",
        "\xFF", "\xFE", "\xEF\xBB\xBF", "\t", "=", "\n", "\0"s, "\0[\0S\0]\0\n\0k\0=\0"s};
    // clang-format on
    const std::vector<const char*> keys = {"k", "K ", "new", "ä", ";k", "]", "[S"};
    int changes = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::string content;
        for (auto left = random() % 40; left > 0; --left)
            content += pieces[random() % pieces.size()];
        const std::string before = content;
        const std::string key = keys[random() % keys.size()];
        if (setProfileValue(content, "S", key, "vö") != ProfileEdit::changed) {
            EXPECT_EQ(content, before);
            continue;
        }
        ++changes;
        EXPECT_EQ(profileValue(content, "S", key), "vö");
        const auto old = linesOf(before);
        EXPECT_GE(sharedLines(old, linesOf(content)), std::ssize(old) - 1);
        EXPECT_EQ(setProfileValue(content, "S", key, "vö"), ProfileEdit::unchanged);

        const std::string written = content;
        EXPECT_EQ(removeProfileKey(content, "S", key), ProfileEdit::changed);
        EXPECT_TRUE(isWithoutOneLine(content, written));
    }
    EXPECT_GT(changes, 1000);
}

} // namespace
} // namespace ov::platform
