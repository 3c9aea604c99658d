// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/file_replacement.h"
#include "platform/program_end.h"
#include "tests/child_process.h"
#include "tests/platform/files_fixture.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/mman.h>

namespace ov::platform {
namespace {

using namespace std::string_literals;

TEST_F(Files, ReplacesKeepingRightsAndLinks) {
    store_.addFolder("sub").add("old", "1").addLink("link", "sub/target");
    store_.addLink("chain", store_.native("link"));
    setMode("old", 0640);
    EXPECT_TRUE(replaceFile(store_.path("old"), "2\0"s).ok());
    EXPECT_EQ(content("old"), "2\0"s);
    EXPECT_EQ(mode("old"), 0640U);
    EXPECT_TRUE(replaceFile(store_.path("chain"), "new").ok()) << "where nothing was yet";
    EXPECT_TRUE(replaceFile(store_.path("chain"), "again").ok());
    EXPECT_EQ(content("sub/target"), "again");
    const mode_t mask = umask(027);
    EXPECT_TRUE(replaceFile(store_.path("made"), "").ok());
    umask(mask);
    EXPECT_EQ(mode("made"), 0640U);
    EXPECT_EQ(names(), (Lines{"chain", "link", "made", "old", "sub"}));
    EXPECT_TRUE(fs::is_symlink(store_.native("link")) && fs::is_symlink(store_.native("chain")));
}

TEST_F(Files, ReplacingRefuses) {
    store_.addFolder("folder").addPipe("pipe").addLink("loop", "loop").add("f", "1");
    for (const auto& [name, error] : {std::pair("folder", EISDIR),
                                      {"pipe", EINVAL},
                                      {"loop", ELOOP},
                                      {"none\\f", ENOENT},
                                      {"f\\g", ENOTDIR}})
        EXPECT_EQ(replaceFile(store_.path(name), "2").number(), error) << name;
    EXPECT_EQ(names(), (Lines{"f", "folder", "loop", "pipe"}));
    EXPECT_EQ(content("f"), "1");
}

TEST_F(Files, FailedReplacementLeavesTheOldFile) {
    store_.addFolder("sub").add("sub/f", "old").add("sub/readonly", "old");
    setMode("", 0755);
    setMode("sub/f", 0666);
    setMode("sub/readonly", 0444);
    const std::string path = store_.path("sub/f");
    const auto refused = [](const std::string& file, int error) {
        return [file, error] {
            return replaceFile(file, std::string(100'000, 'x')).number() == error;
        };
    };
    EXPECT_TRUE(tests::isTrueWithFileLimit(5000, refused(path, EFBIG)));
    EXPECT_TRUE(tests::isTrueWithFileLimit(5000, refused(store_.path("sub/new"), EFBIG)));
    setMode("sub", 0777);
    EXPECT_TRUE(tests::isTrueUnprivileged(refused(store_.path("sub/readonly"), EACCES)));
    setMode("sub", 0555);
    EXPECT_TRUE(tests::isTrueUnprivileged(refused(path, EACCES)));
    EXPECT_TRUE(tests::isTrueUnprivileged([&] { return appendToFile(path, "+").ok(); }))
        << "the file itself may be written";
    setMode("sub", 0755);
    FileReplacement cut;
    ASSERT_TRUE(cut.open(path).ok() && cut.write("new").ok());
    const std::string unfinished = store_.native("sub/" + names("sub")[0]);
    fs::resize_file(unfinished, 2);
    EXPECT_EQ(cut.commit().number(), EIO) << "what the disk does not hold";
    fs::remove(unfinished);
    EXPECT_EQ(content("sub/f") + content("sub/readonly"), "old+old");
    EXPECT_EQ(names("sub"), (Lines{"f", "readonly"}));
}

// What a signal ends removes its unfinished file; what is killed leaves it to the next writer,
// who removes nothing that may belong to anybody else.
TEST_F(Files, UnfinishedFilesDoNotStay) {
    store_.add("f", "old");
    const tests::TemporaryStore elsewhere;
    const auto writeAndEnd = [&](int signal) {
        return tests::isTrueInChild([&] {
            endWithoutLeftovers();
            for (int i = 0; i < 20; ++i) // more than are written at a time
                EXPECT_TRUE(replaceFile(elsewhere.path("g"), "").ok());
            FileReplacement file;
            FileReplacement second;
            return file.open(store_.path("f")).ok() && file.write("half").ok() &&
                   (signal == SIGKILL || second.open(store_.path("second")).ok()) &&
                   raise(signal) != 0;
        });
    };
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        EXPECT_FALSE(writeAndEnd(signal));
        EXPECT_EQ(names(), Lines{"f"}) << signal;
    }
    EXPECT_FALSE(writeAndEnd(SIGKILL));
    const std::string left = names()[0];
    ASSERT_TRUE(left.starts_with(".ovsearch-")) << left;
    std::vector<std::string> parts; // .ovsearch MACHINE BOOT SPACE PROCESS START NUMBER.part
    for (std::istringstream stream(left); std::getline(stream, parts.emplace_back(), '-');) {
    }
    const auto with = [&](std::size_t part, const std::string& text) {
        std::string name = ".ovsearch";
        for (std::size_t i = 1; i + 1 < parts.size(); ++i)
            name.append("-").append(i == part ? text : parts[i]);
        return name;
    };
    FileReplacement ours;
    ASSERT_TRUE(ours.open(store_.path("f")).ok());
    EXPECT_FALSE(fileExists(store_.path(left)));
    const std::string beside = names()[0] == "f" ? names()[1] : names()[0];
    // Our entry in the system's list of processes changes.
    constexpr std::size_t much = std::size_t{1} << 30U;
    constexpr int unused = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
    void* const more = mmap(nullptr, much, PROT_NONE, unused, -1, 0);
    EXPECT_NE(more, MAP_FAILED);
    EXPECT_TRUE(tests::isTrueInChild([&] { return replaceFile(store_.path("g"), "").ok(); }));
    munmap(more, much);
    EXPECT_TRUE(fileExists(store_.path(beside))) << "we are still writing it";
    fs::remove(store_.native("g"));

    const std::string beforeTheStart = with(2, "1");
    store_.add(beforeTheStart).add(left).add(with(4, std::to_string(getpid())));
    fs::last_write_time(store_.native(beforeTheStart),
                        fs::file_time_type::clock::now() - std::chrono::years(20));
    const Lines kept = {with(1, "1"), with(2, "2"),       with(3, "1"),  with(4, "-"),
                        with(4, "x"), with(6, "0.part~"), left + ".bak", "x" + left};
    for (const std::string& name : kept)
        store_.add(name);
    store_.addFolder(with(6, "7.part"));
    ASSERT_TRUE(replaceFile(store_.path("f"), "new").ok());
    EXPECT_EQ(names().size(), kept.size() + 3) << "and the folder, the file, the one being written";
    for (const std::string& name : kept)
        EXPECT_TRUE(fileExists(store_.path(name))) << name;
    EXPECT_TRUE(ours.commit().ok());
}

} // namespace
} // namespace ov::platform
