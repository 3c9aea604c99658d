// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/locale.h"
#include "support/log.h"
#include "support/modFilePath.h"
#include "tests/child_process.h"
#include "tests/recording_interface.h"
#include "tests/settings_fixture.h"

#include <regex>

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
        static const std::regex stamp(R"(^\d\d\.\d\d\.\d{4} \d\d:\d\d:\d\d - )");
        Lines found;
        std::istringstream file(read("Log/" + fileName));
        for (std::string line; std::getline(file, line);) {
            EXPECT_TRUE(line.ends_with('\r') && std::regex_search(line, stamp)) << line;
            line.pop_back();
            found.push_back(std::regex_replace(line, stamp, ""));
        }
        return found;
    }

    tests::RecordingInterface person_;
};

TEST_F(Log, EachMessageAndErrorIsOneLine) {
    EXPECT_TRUE(WriteErrorLog({53, "File not found"}, ""));
    EXPECT_TRUE(WriteErrorLog({53, "File not found"}, "Load", false, "Mine"));
    EXPECT_TRUE(WriteErrorLog({-7, ""}, "Load"));
    EXPECT_TRUE(WriteErrorLog(platform::Status(2, "/x", "gone"), "Load"));
    EXPECT_EQ(person_.boxLines(), Lines{});
    EXPECT_TRUE(WriteErrorLog({1, "Two\nlines"}, "Load", true));
    EXPECT_EQ(person_.boxLines(), Lines{"exclamation, OVSearch: ERROR (1): Load - Two\nlines"});
    for (const std::string& message :
         {""s, "a\r\nb\rc\tM\xC3\xBCller C:\\new"s, "\0\x1B[31m\x1F\x7F"s})
        EXPECT_TRUE(WriteLog(message));
    EXPECT_EQ(messages(),
              (Lines{"ERROR (53): File not found", "ERROR (53): Load - Mine",
                     "ERROR (-7): Load - <Unknown>", "ERROR (2): Load - /x: gone",
                     "ERROR (1): Load - Two\\nlines", "", "a\\r\\nb\\rc\tM\xC3\xBCller C:\\new",
                     "\\x00\\x1B[31m\\x1F\\x7F"}));
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
    for (std::size_t i = 1; i <= 60; ++i) {
        WriteLog(std::to_string(i));
        const Lines recent = recentLogLines();
        ASSERT_EQ(recent.size(), std::min<std::size_t>(i, 25));
        EXPECT_TRUE(recent.front().ends_with(" - " + std::to_string(i - recent.size() + 1)));
    }
}

TEST_F(Log, ShowsWhatCannotBeWritten) {
    const std::string native = folder().native();
    fs::create_directories(folder() / "Log/OVSearch_.log");
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
    modFilePath::SetDirectory(modFilePath::directory_id::log, path(""));
    EXPECT_TRUE(tests::isTrueWithFileLimit(0, [] { return !WriteLog("lost"); })) << "full disk";
}

} // namespace
} // namespace ov
