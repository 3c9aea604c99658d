// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/posix/watch/mount_watch.h"
#include "platform/terminal/folder_watch.h"
#include "tests/child_process.h"
#include "tests/platform/files_fixture.h"
#include "tests/wave_files.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ov::platform {
namespace {

using namespace std::string_literals;
// What `call` makes of each.
template <typename Call>
Lines each(Lines texts, Call call) {
    for (std::string& text : texts)
        text = call(text);
    return texts;
}

TEST_F(Files, PathsToAndFromTheSystem) {
    setDriveFolder("/drives");
    EXPECT_EQ(each({"\\", "\\home\\x\\", "", "a\\b.WAV", "A:\\x\\", "a:", "Z:x", "z:", "1:\\x",
                    "\\\\s\\h\\", "\\a\\..\\.\\b", "\\M\xFC\xC3\xBC", "\\a\0b"s},
                   toNativePath),
              (Lines{"/", "/home/x/", "", "a/b.WAV", "/drives/a/x/", "/drives/a", "/drives/z/x",
                     "/drives/z", "1:/x", "/drives/unc/s/h/", "/a/.././b", "/M\xFC\xC3\xBC", ""}));
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
    // The system hands out what it makes up in pieces of a page.
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        raise(SIGSTOP);
        _exit(0);
    }
    waitpid(child, nullptr, WUNTRACED);
    const std::string process = std::to_string(child);
    std::string maps;
    EXPECT_TRUE(readFile("\\proc\\" + process + "\\maps", maps).ok());
    EXPECT_EQ(maps, tests::readBytes("/proc/" + process + "/maps"));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
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

// Who goes on for months would come to the system's limit.
TEST_F(Files, TellsOnceThatSomethingIsMounted) {
    const std::string odd = store_.addFolder("back\\slash").native("back\\slash");
    if (!tests::isTrueInChild([] { return tests::hasOwnMounts(); }))
        GTEST_SKIP() << "needs the right to mount";
    EXPECT_TRUE(tests::isTrueInChild([&] {
        if (!tests::hasOwnMounts())
            return false;
        MountWatch watch(true);
        watch.add(odd);
        return tests::mountEmpty(odd) && watch.hasChanged() && !watch.hasChanged();
    }));
}

TEST_F(Files, WatchesNoFolderThatWasMovedAway) {
    const tests::TemporaryStore elsewhere;
    store_.add("ward/a/b/one.WAV");
    const auto watches = [] {
        int count = 0;
        for (const auto& entry : fs::directory_iterator("/proc/self/fdinfo")) {
            std::ifstream info(entry.path());
            for (std::string line; std::getline(info, line);)
                count += line.starts_with("inotify wd") ? 1 : 0;
        }
        return count;
    };
    FolderWatch watch;
    Status why;
    for (const char* name : {"", "ward", "ward/a", "ward/a/b"})
        EXPECT_EQ(watch.add(store_.directory(name), why), FolderWatch::Added::now);
    EXPECT_EQ(watches(), 4);
    fs::rename(store_.folder() / "ward", elsewhere.folder() / "ward");
    while (!watch.wait(std::chrono::milliseconds(100)).empty())
        ;
    EXPECT_EQ(watches(), 1);
}

} // namespace
} // namespace ov::platform
