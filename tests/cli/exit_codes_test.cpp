// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/cli/cli_fixture.h"

// What a script learns of a search: how it ended, and what it did not look at.

namespace ov::cli {
namespace {

struct Ended {
    std::string root; // in the store
    Texts options;
    int exitCode;
    std::string summary; // without the program's name; empty: nothing is said at all
};

class ExitCodes : public Cli {
protected:
    ExitCodes() {
        for (const char* name :
             {"all/2$ROH.WAV", "all/deep/er/2$ROH.WAV", "part/2$ROH.WAV", "part/closed/x.WAV",
              "part/odd/back\\slash.WAV", "part/odd/back\\dir/x.WAV", "part/deep/er/est/x.WAV"})
            store_.add(name);
        fs::permissions(store_.folder() / "part/closed", fs::perms::none);
        unprivileged_.withRights = false;
    }
    ~ExitCodes() override {
        fs::permissions(store_.folder() / "part/closed", fs::perms::owner_all);
    }
    void SetUp() override {
        if (geteuid() == 0 && prctl(PR_CAPBSET_READ, CAP_SETPCAP) != 1)
            GTEST_SKIP() << "this root cannot give up its rights";
    }

    ProgramRun unprivileged_;
};

TEST_F(ExitCodes, TellWhatWasLeftOut) {
    const Texts nobody{"-c", "author is nobody"};
    const std::string unread = "left out: 1 folder that cannot be read";
    const std::string odd = ", 2 names with a backslash";
    const std::string limit = "the limit of 1 was reached, there may be more";
    fs::last_write_time(settings_.add("old").native("old"),
                        fs::file_time_type::clock::now() - std::chrono::hours(1));
    const std::vector<Ended> cases = {
        {"all", {}, 0, ""},
        {"all", {"--strict"}, 0, ""},
        {"all", nobody, 1, ""},
        {"all", {"--limit", "1"}, 0, limit},
        {"all", {"--limit", "1", "--strict"}, 3, limit},
        {"all", {"--limit", "2"}, 0, ""},
        {"all", {"--limit", "1", "--strict", "--sort", "path"}, 3, limit},
        {"all", {"--limit", "2", "--strict", "--sort", "path"}, 0, ""},
        {"all", {"--limit", "2", "--newer", settings_.native("old")}, 0, ""},
        {"all", {"--limit", "1", "--newer", settings_.native("old")}, 0, limit},
        {"all",
         {"--newer", store_.native("part/closed/x.WAV"), "--explain"},
         3,
         "--newer: " + store_.native("part/closed/x.WAV") + ": Permission denied"},
        {"all", {"--max-depth", "0"}, 0, "left out: 1 folder below --max-depth"},
        {"all",
         {"--max-depth", "1", "-c", "status = MAI"},
         1,
         "left out: 1 folder below --max-depth"},
        {"part", {}, 0, unread + odd},
        {"part", {"--strict"}, 3, unread + odd},
        {"part", {"--explain"}, 0, unread + odd},
        {"part", {"--explain", "-c", "author is nobody"}, 3, unread + odd},
        {"all", {"--explain", "-c", "author is nobody"}, 0, ""},
        {"part", {"--no-messages", "-c", "status = MAI"}, 3, unread + odd},
        {"part", {"--max-depth", "2"}, 0, unread + ", 1 folder below --max-depth" + odd},
        {"part", {"--max-depth", "0"}, 0, "left out: 3 folders below --max-depth"},
        {"all", {"--quiet"}, 0, ""},
        {"all", {"--quiet", "-c", "author is nobody"}, 1, ""},
        {"part", {"--quiet", "--strict"}, 3, unread + odd},
        {"missing", {"--no-messages", "--quiet"}, 3, store_.native("missing") + "/: No such file"},
    };
    for (const Ended& c : cases) {
        Texts arguments{"find", store_.native(c.root)};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const ProgramResult result = run(arguments, unprivileged_);
        EXPECT_EQ(result.exitCode, c.exitCode) << joined(arguments) << result.errors;
        const Texts told = split(result.errors, '\n');
        const std::string last = told.empty() ? "" : told.back();
        EXPECT_TRUE(c.summary.empty() ? last.empty() : last.starts_with("ovsearch: " + c.summary))
            << joined(arguments) << "\n"
            << result.errors;
        if (joined(c.options).starts_with("--no-messages")) {
            EXPECT_EQ(told.size(), 1U) << result.errors;
        }
        if (joined(c.options).find("--quiet") != std::string::npos) {
            EXPECT_EQ(result.output, "");
        }
    }
    expectRefused({"show", store_.native("part/closed/x.WAV")}, 3, ": Permission denied",
                  unprivileged_);
    const Texts exported{"export", "--strict", settings_.native("l.csv"), store_.native("part")};
    expectRefused(exported, 3, "l.csv was not written", unprivileged_);
    expectRefused({"export", "--strict", "--sort", "path", "--limit", "1",
                   settings_.native("l.csv"), store_.native("all")},
                  3, "l.csv was not written");
    EXPECT_FALSE(fs::exists(settings_.native("l.csv")));
}

} // namespace
} // namespace ov::cli
