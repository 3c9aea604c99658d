// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/cli/cli_fixture.h"

// How a run ends: what a script learns of a search and of what it did not look at.

namespace ov::cli {
namespace {

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
    const std::string unread = "left out: 1 folder that cannot be read";
    const std::string odd = ", 2 names with a backslash";
    const std::string deep = "left out: 1 folder below --max-depth";
    const std::string limit = "the limit of 1 was reached, there may be more";
    const std::string old = settings_.add("old").native("old");
    fs::last_write_time(old, fs::file_time_type::clock::now() - std::chrono::hours(1));
    const std::string closed = store_.native("part/closed/x.WAV");
    // The root in the store, options, the exit code, and the summary without the program's name;
    // where it is empty nothing is said at all.
    const std::tuple<std::string, Texts, int, std::string> cases[] = {
        {"all", {"--strict"}, 0, ""},
        {"all", {"-c", "author is nobody"}, 1, ""},
        {"all", {"--limit", "1"}, 0, limit},
        {"all", {"--limit", "1", "--strict"}, 3, limit},
        {"all", {"--limit", "2"}, 0, ""},
        {"all", {"--limit", "1", "--strict", "--sort", "path"}, 3, limit},
        {"all", {"--limit", "2", "--strict", "--sort", "path"}, 0, ""},
        {"all", {"--limit", "2", "--newer", old}, 0, ""},
        {"all", {"--limit", "1", "--newer", old}, 0, limit},
        {"all", {"--newer", closed, "--explain"}, 3, "--newer: " + closed + ": Permission denied"},
        {"all", {"--max-depth", "0"}, 0, deep},
        {"all", {"--max-depth", "1", "-c", "status = MAI"}, 1, deep},
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
        {"missing", {"--no-messages", "--quiet"}, 3, store_.native("missing") + "/: No such file"}};
    for (const auto& [root, options, exitCode, summary] : cases) {
        const Texts arguments = plus({"find", store_.native(root)}, options);
        const ProgramResult result = run(arguments, unprivileged_);
        EXPECT_EQ(result.exitCode, exitCode) << joined(arguments) << result.errors;
        const Texts told = split(result.errors, '\n');
        const std::string last = told.empty() ? "" : told.back();
        EXPECT_TRUE(summary.empty() ? last.empty() : last.starts_with("ovsearch: " + summary))
            << joined(arguments) << "\n"
            << result.errors;
        if (joined(options).starts_with("--no-messages")) {
            EXPECT_EQ(told.size(), 1U) << result.errors;
        }
        if (holds(joined(options), "--quiet")) {
            EXPECT_EQ(result.output, "");
        }
    }
    expectRefused({"show", closed}, 3, ": Permission denied", unprivileged_);
    const std::string part = store_.native("part");
    const std::string denied = part + "/closed/: Permission denied";
    expectRefused({"find", part + "/closed"}, 3, denied, unprivileged_);
    EXPECT_PRED2(holds, run({"find", part}, unprivileged_).errors, denied);
    const std::string list = settings_.native("l.csv");
    const Texts exported{"export", "--strict", list};
    expectRefused(plus(exported, {part}), 3, "l.csv was not written", unprivileged_);
    expectRefused(plus(exported, {store_.native("all"), "--limit", "1", "--sort", "path"}), 3,
                  "l.csv was not written");
    EXPECT_FALSE(fs::exists(list));
}

} // namespace
} // namespace ov::cli
