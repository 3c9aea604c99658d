// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/directories.h"
#include "platform/file_replacement.h"
#include "platform/program_end.h"
#include "tests/child_process.h"
#include "tests/temporary_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>

namespace ov::platform {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
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

// What `call` makes of each.
template <typename Call>
Lines each(Lines texts, Call call) {
    for (std::string& text : texts)
        text = call(text);
    return texts;
}

TEST_F(Files, PathsToAndFromTheSystem) {
    setDriveFolder("/drives");
    EXPECT_EQ(each({"\\", "\\home\\x\\", "", "a\\b.WAV", "A:\\x\\", "z:", "Z:x", "1:\\x",
                    "\\\\s\\h\\", "\\a\\..\\.\\b", "\\M\xFC\xC3\xBC", "\\a\0b"s},
                   toNativePath),
              (Lines{"/", "/home/x/", "", "a/b.WAV", "/drives/a/x/", "/drives/z", "/drives/z/x",
                     "1:/x", "/drives/unc/s/h/", "/a/.././b", "/M\xFC\xC3\xBC", ""}));
    const std::string here = fs::current_path().native();
    std::string current = here;
    std::replace(current.begin(), current.end(), '/', '\\');
    EXPECT_EQ(each({"/", "/a/b/", "//server///share", "/a/./b/../c/.", "/../../a", "/..a/b../...",
                    "", "x/../y", "D:", here},
                   fromNativePath),
              (Lines{"\\", "\\a\\b", "\\server\\share", "\\a\\c", "\\a", "\\..a\\b..\\...", current,
                     current + "\\y", current + "\\D:", current}));
}

TEST_F(Files, Drives) {
    store_.addFolder("drives/d/x").addFolder("drives/unc/server/share");
    store_.addLink("drives/l", "../drives/d").add("drives/f");
    const Lines there = {"D:\\x\\y", "L:\\", "\\\\server\\share\\x", "\\\\server", "\\no\\such",
                         "relative", ""};
    const Lines missing = {"E:\\x", "F:\\", "\\\\server\\other\\"}; // F: is a file
    const auto drive = [](const std::string& path) { return std::string(driveOf(path)); };
    EXPECT_EQ(each(there, drive),
              (Lines{"D:", "L:", "\\\\server\\share", "\\\\server", "", "", ""}));
    EXPECT_EQ(each(missing, drive), (Lines{"E:", "F:", "\\\\server\\other"}));
    for (const std::string& path : there)
        EXPECT_TRUE(driveExists(path)) << path;
    for (const std::string& path : missing)
        EXPECT_FALSE(driveExists(path)) << path;
}

TEST_F(Files, Kinds) {
    store_.add("x.wav").addFolder("sub").addPipe("pipe").add("M\xFC.wav");
    store_.addLink("to file", "x.wav").addLink("to folder", "sub").addLink("to pipe", "pipe");
    store_.addLink("nowhere", "missing").addLink("loop", "loop");
    const std::pair<FileKind, Lines> cases[] = {
        {FileKind::file, {"x.wav", "to file", "M\xFC.wav"}},
        {FileKind::directory, {"sub", "sub\\", ".", "to folder\\"}},
        {FileKind::other, {"pipe", "to pipe"}},
        {FileKind::missing, {"X.WAV", "x.wav\\", "none\\x", "nowhere", "loop", "x.wav\0"s}}};
    for (const auto& [kind, names] : cases)
        for (const std::string& name : names) {
            const std::string path = store_.directory() + name;
            EXPECT_EQ(fileKind(path), kind) << name;
            EXPECT_EQ(fileExists(path), kind == FileKind::file) << name;
            EXPECT_EQ(directoryExists(path), kind == FileKind::directory) << name;
        }
}

TEST_F(Files, ReadsWholeFilesUpToALimit) {
    store_.add("f", "a\0b\r\n"s).add("empty").addPipe("pipe");
    EXPECT_EQ(content("f") + content("empty"), "a\0b\r\n"s);
    const std::string status = "\\proc\\self\\status"; // says that it is empty, and is not
    const std::tuple<std::string, std::uint64_t, int> cases[] = {{store_.path("f"), 5, 0},
                                                                 {store_.path("f"), 4, EFBIG},
                                                                 {store_.path("none"), 5, ENOENT},
                                                                 {store_.directory(), 5, EISDIR},
                                                                 {store_.path("pipe"), 5, EINVAL},
                                                                 {status, defaultReadLimit, 0},
                                                                 {status, 5, EFBIG}};
    for (const auto& [path, limit, error] : cases) {
        std::string bytes = "old";
        const Status read = readFile(path, bytes, limit);
        EXPECT_EQ(read.number(), error) << path;
        EXPECT_TRUE(read.description().starts_with(read.ok() ? "" : toNativePath(path)));
        EXPECT_EQ(bytes.empty(), !read.ok()) << path;
    }
}

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
    const auto writeAndEnd = [this](int signal) {
        return tests::isTrueInChild([&] {
            endWithoutLeftovers();
            FileReplacement file;
            return file.open(store_.path("f")).ok() && file.write("half").ok() &&
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

TEST_F(Files, AppendsMakesAndRemoves) {
    store_.addFolder("sub").addPipe("pipe").addLink("link", "log");
    for (const auto& [name, error] : {std::pair("log", 0),
                                      {"link", 0},
                                      {"none/log", ENOENT},
                                      {"sub", EISDIR},
                                      {"pipe", ENXIO}}) // nobody reads
        EXPECT_EQ(appendToFile(store_.path(name), "1\r\n").number(), error) << name;
    EXPECT_EQ(content("log"), "1\r\n1\r\n");
    EXPECT_TRUE(createDirectory(store_.directory("d")).ok());
    EXPECT_EQ(createDirectory(store_.directory("d")).description(),
              store_.native("d/: File exists"));
    EXPECT_EQ(createDirectory(store_.directory("a/b")).number(), ENOENT);
    EXPECT_EQ(removeFile(store_.path("d")).number(), EISDIR);
    EXPECT_TRUE(removeFile(store_.path("link")).ok());
    EXPECT_EQ(removeFile(store_.path("link")).number(), ENOENT);
    EXPECT_EQ(names(), (Lines{"d", "log", "pipe", "sub"}));
}

class Directories : public Files {
protected:
    // "<kind> <name>", sorted; "->" behind the kind of a link.
    Lines entries(const std::string& directory) {
        Lines lines;
        EXPECT_TRUE(reader_.open(directory).ok());
        for (DirectoryEntry entry; reader_.next(entry);) {
            constexpr const char* kinds[] = {"missing", "file", "directory", "other"};
            lines.push_back(kinds[static_cast<std::size_t>(entry.kind)] +
                            std::string(entry.isLink ? "-> " : " ") + std::string(entry.name));
        }
        EXPECT_TRUE(reader_.status().ok());
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    DirectoryReader reader_;
};

TEST_F(Directories, TellKindsAndLinks) {
    store_.add("f").add(".hidden").add("..dots").add("bad\xFF").add("back\\slash");
    store_.addFolder("d").addPipe("p");
    store_.addLink("l-f", "f").addLink("l-d", "d").addLink("l-p", "p");
    store_.addLink("l-none", "none").addLink("l-loop", "l-loop").addLink("l-l-d", "l-d");
    EXPECT_EQ(entries(store_.directory()),
              (Lines{"directory d", "directory-> l-d", "directory-> l-l-d", "file ..dots",
                     "file .hidden", "file back\\slash", "file bad\xFF", "file f", "file-> l-f",
                     "missing-> l-loop", "missing-> l-none", "other p", "other-> l-p"}));
    EXPECT_EQ(entries(store_.directory("d")), Lines{}) << "opened again";
    const DirectoryId id = reader_.stamp().id;
    EXPECT_EQ(entries(store_.directory("l-l-d")), Lines{});
    EXPECT_EQ(reader_.stamp().id, id) << "however it is reached";
    ASSERT_TRUE(reader_.open(store_.directory()).ok());
    EXPECT_NE(reader_.stamp().id, id);
}

TEST_F(Directories, OfManyNamesAreListedWhole) {
    Lines expected;
    for (int i = 1000; i < 2000; ++i)
        store_.add(expected.emplace_back(std::to_string(i) + std::string(200, 'x')));
    EXPECT_EQ(names(), expected);
}

TEST_F(Directories, ThatVanishOrCannotBeOpened) {
    store_.add("f").addPipe("p").addFolder("d");
    ASSERT_TRUE(reader_.open(store_.directory("d")).ok());
    fs::remove(store_.native("d"));
    DirectoryEntry entry;
    EXPECT_FALSE(reader_.next(entry));
    EXPECT_EQ(reader_.status().number(), ENOENT) << "nobody knows what it held";
    for (const auto& [name, error] : {std::pair("none", ENOENT), {"p", ENOTDIR}, {"f", ENOTDIR}}) {
        EXPECT_EQ(reader_.open(store_.path(name)).number(), error) << name;
        EXPECT_EQ(reader_.status().number(), error) << name;
        EXPECT_FALSE(reader_.next(entry)) << name;
    }
    EXPECT_EQ(entries(store_.directory()).size(), 2U) << "the reader is still good";
}

TEST(ModuleDirectory, IsThatOfTheProgram) {
    const fs::path program = fs::read_symlink("/proc/self/exe");
    EXPECT_EQ(moduleDirectory(), fromNativePath(program.parent_path().native()) + "\\");
}

} // namespace
} // namespace ov::platform
