// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "child_process.h"
#include "platform/locale.h"
#include "recording_interface.h"
#include "settings_fixture.h"
#include "support/log.h"
#include "support/modFilePath.h"

#include <regex>
#include <sys/stat.h>

namespace ov {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

// The log directory is "Log" in the folder and does not exist yet.
class Log : public tests::SettingsTest {
public:
    Log() {
        modFilePath::SetDirectory(modFilePath::directory_id::log, path("Log"));
        platform::setLocale(
            platform::Locale{.dateOrder = platform::DateOrder::dayMonthYear, .dateSeparator = '.'});
        resetLog();
    }
    ~Log() override {
        modFilePath::reset();
        platform::setLocale({});
        resetLog();
    }

protected:
    // The lines of a log file without their time stamps.
    Lines messages(const std::string& fileName = "OVSearch_.log") const {
        static const std::regex line(R"(\d\d\.\d\d\.\d{4} \d\d:\d\d:\d\d - (.*))",
                                     std::regex::optimize);
        Lines found;
        std::string rest = read("Log/" + fileName);
        for (std::size_t end = rest.find("\r\n"); end != std::string::npos;
             end = rest.find("\r\n")) {
            std::smatch parts;
            const std::string text = rest.substr(0, end);
            found.push_back(std::regex_match(text, parts, line) ? parts[1].str() : "?" + text);
            rest.erase(0, end + 2);
        }
        if (!rest.empty())
            found.push_back("without end: " + rest);
        return found;
    }

    tests::RecordingInterface person_;
};

TEST_F(Log, LinesOfErrors) {
    const struct {
        Error error;
        const char* procedure = nullptr;
        const char* description = nullptr;
        const char* expected = nullptr;
    } cases[] = {
        {{53, "File not found"}, "LoadSettings", "", "ERROR (53): LoadSettings - File not found"},
        {{53, "File not found"}, "", "", "ERROR (53): File not found"},
        {{53, "File not found"}, "Load", "Mine", "ERROR (53): Load - Mine"},
        {{-7, ""}, "Load", "", "ERROR (-7): Load - <Unknown>"},
        {{0, ""}, "", "", "ERROR (0): <Unknown>"},
        {platform::Status(2, "/x: gone"), "Load", "", "ERROR (2): Load - /x: gone"}};
    Lines expected;
    for (const auto& tested : cases) {
        EXPECT_TRUE(WriteErrorLog(tested.error, tested.procedure, false, tested.description));
        expected.emplace_back(tested.expected);
    }
    EXPECT_EQ(person_.boxLines(), Lines{});
    EXPECT_TRUE(WriteErrorLog({1, "Two\nlines"}, "Load", true));
    EXPECT_EQ(person_.boxLines(), Lines{"exclamation, OVSearch: ERROR (1): Load - Two\nlines"});
    expected.emplace_back("ERROR (1): Load - Two\\nlines");
    EXPECT_EQ(messages(), expected);
}

TEST_F(Log, MessagesStayOneLine) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a\r\nb\rc\nd", "a\\r\\nb\\rc\\nd"},
        {"tab\there", "tab\there"},
        {"\0\x1B[31m\x7F"s, "\\x00\\x1B[31m\\x7F"},
        {"M\xC3\xBCller C:\\new", "M\xC3\xBCller C:\\new"}};
    Lines expected;
    for (const auto& [message, line] : cases) {
        EXPECT_TRUE(WriteLog(message));
        expected.push_back(line);
    }
    EXPECT_EQ(messages(), expected);
}

TEST_F(Log, DeletesFirstAndTakesAnyFileName) {
    EXPECT_TRUE(WriteLog("1", "other.txt", true)) << "nothing to delete";
    EXPECT_TRUE(WriteLog("2", "other.txt"));
    EXPECT_EQ(messages("other.txt"), (Lines{"1", "2"}));
    EXPECT_TRUE(WriteErrorLog({}, "", false, "3", "other.txt", true));
    EXPECT_EQ(messages("other.txt"), Lines{"ERROR (0): 3"});
    EXPECT_EQ(messages(), Lines{});
}

TEST_F(Log, KeepsTheLast25Lines) {
    EXPECT_EQ(recentLogLines(), Lines{});
    for (int i = 1; i <= 24; ++i)
        WriteLog(std::to_string(i));
    EXPECT_EQ(recentLogLines().size(), 24U);
    for (int i = 25; i <= 60; ++i) {
        WriteLog(std::to_string(i));
        const Lines recent = recentLogLines();
        ASSERT_EQ(recent.size(), recentLogLineCount);
        EXPECT_TRUE(recent.front().ends_with(" - " + std::to_string(i - 24))) << recent.front();
        EXPECT_TRUE(recent.back().ends_with(" - " + std::to_string(i))) << recent.back();
    }
    EXPECT_TRUE(read("Log/OVSearch_.log").ends_with(recentLogLines().back() + "\r\n"));
}

TEST_F(Log, ShowsWhatCannotBeWritten) {
    const std::string native = folder().native();
    tests::fs::create_directories(folder() / "Log/OVSearch_.log");
    EXPECT_FALSE(WriteLog("lost"));
    EXPECT_FALSE(WriteErrorLog({5, "lost"}, "Load", true));
    write("file", "");
    modFilePath::SetDirectory(modFilePath::directory_id::log, path("file\\Log"));
    EXPECT_FALSE(WriteLog("lost", "x.log"));
    EXPECT_EQ(person_.boxLines(),
              (Lines{"information, OVSearch: ERROR (21): WriteErrorLog - " + native +
                         "/Log/OVSearch_.log: Is a directory\r\n\r\n(Log file: " + native +
                         "/Log/OVSearch_.log)",
                     person_.boxLines().at(0), "exclamation, OVSearch: ERROR (5): Load - lost",
                     "information, OVSearch: ERROR (76): WriteErrorLog - " + native +
                         "/file/Log/: cannot be created\r\n\r\n(Log file: " + native +
                         "/file/Log/x.log)"}));
    EXPECT_EQ(recentLogLines(), Lines{}) << "only what was written";
}

TEST_F(Log, UnwritableDirectoryOrFullDisk) {
    EXPECT_TRUE(WriteLog("1"));
    chmod(folder().c_str(), 0755);
    chmod((folder() / "Log").c_str(), 0555);
    const auto losesALine = [this] {
        return !WriteLog("2", "new.log") && person_.boxes.size() == 1;
    };
    EXPECT_TRUE(tests::isTrueUnprivileged(losesALine));
    EXPECT_TRUE(tests::isTrueWithFileLimit(0, losesALine));
    EXPECT_EQ(messages(), Lines{"1"});
}

} // namespace
} // namespace ov
