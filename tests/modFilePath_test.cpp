// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "recording_interface.h"
#include "settings_fixture.h"
#include "support/log.h"
#include "support/modFilePath.h"
#include "support/modWFRoutines.h"

#include <vector>

namespace ov::modFilePath {
namespace {

using Lines = std::vector<std::string>;

std::string escaped(std::string text) {
    for (std::size_t at = text.find('\\'); at != std::string::npos; at = text.find('\\', at + 2))
        text.insert(at, 1, '\\');
    return text;
}

// The per-user data lie in "Orvanta" of the folder, the common ones in "common", the control's
// own file in "module". No directory exists yet.
class Directories : public tests::SettingsTest {
public:
    Directories() : config_("XDG_CONFIG_HOME", folder().native()) { useRegistry(""); }
    ~Directories() override { forget(); }
    Directories(const Directories&) = delete;
    Directories& operator=(const Directories&) = delete;

protected:
    // `more` goes to the end of the shell folders of the machine.
    void useRegistry(const std::string& more) {
        write("registry.reg",
              "REGEDIT4\n[HKEY_LOCAL_MACHINE\\" + std::string(platform::shellFoldersKey) +
                  "]\n\"Common AppData\"=\"" + escaped(path("common")) + "\"\n" + more);
        platform::reloadRegistry();
        forget();
        SetDirectory(directory_id::module, path("module"));
    }
    static void forget() {
        reset();
        resetLog();
        modWFRoutines::reset();
    }
    bool exists(const std::string& name) const { return fs::is_directory(folder() / name); }
    // What was logged, without time stamps and with "@" for the folder.
    Lines logged() const {
        Lines lines = recentLogLines();
        for (std::string& line : lines) {
            line.erase(0, line.find(" - ") + 3);
            for (const std::string& base : {path(""), folder().native() + "/"})
                if (const std::size_t at = line.find(base); at != std::string::npos)
                    line.replace(at, base.size(), "@");
        }
        return lines;
    }

    tests::RecordingInterface person_;

private:
    tests::Environment config_;
};

const std::string workflowKey = "[HKEY_LOCAL_MACHINE\\Software\\Orvanta\\WF\\";

TEST_F(Directories, ByNumber) {
    useRegistry(workflowKey + "Orvanta2000]\n\"NetzPath\"=\"N:\\\\net\"\n" + workflowKey +
                "OV2000]\n\"NetBasePath\"=\"N:\\\\base\"\n");
    const std::pair<std::int32_t, std::string> cases[] = {
        {1, path("module\\")},
        {2, path("Orvanta\\")},
        {3, path("common\\Orvanta\\")},
        {10, path("Orvanta\\Log\\")},
        {11, path("module\\PlugIns\\")},
        {12, path("module\\DRL\\")},
        {30, path("Orvanta\\Data\\")},
        {31, path("Orvanta\\Data\\TServer\\")},
        {32, path("Orvanta\\Data\\DAss\\")},
        {33, path("Orvanta\\Data\\WF\\")},
        {34, path("Orvanta\\Data\\Lumeron\\")},
        {40, path("common\\Orvanta\\Data\\")},
        {41, path("common\\Orvanta\\Data\\TServer\\")},
        {42, path("common\\Orvanta\\Data\\DAss\\")},
        {43, path("common\\Orvanta\\Data\\WF\\")},
        {44, path("common\\Orvanta\\Data\\Lumeron\\")},
        {100, "N:\\net\\"},
        {102, "N:\\net\\Data\\"},
        {103, "N:\\net\\Data\\TServer\\"},
        {104, "N:\\net\\Data\\DAss\\"},
        {105, "N:\\net\\Data\\WF\\"},
        {200, "N:\\base\\"},
        {0, ""},
        {5, ""},
        {101, ""},
        {205, ""},
        {-1, ""},
    };
    for (const auto& [id, expected] : cases)
        EXPECT_EQ(GetDirectory(id), expected) << id;
    EXPECT_EQ(entryCount(), 1U) << "asking makes nothing";
}

TEST_F(Directories, FallBackToTheControlsOwn) {
    useRegistry("\"Common AppData\"=-\n[HKEY_CURRENT_USER\\" +
                std::string(platform::shellFoldersKey) + "]\n\"AppData\"=-\n");
    for (const std::int32_t id : {2, 3, 100})
        EXPECT_EQ(GetDirectory(id), path("module\\")) << id;
    EXPECT_EQ(GetDirectory(10), path("module\\Log\\"));
    EXPECT_EQ(GetDirectory(200), "");
}

TEST_F(Directories, CanBeReplaced) {
    SetDirectory(30, "D:\\data");
    SetDirectory(77, "D:\\");
    EXPECT_EQ(GetDirectory(31), "D:\\data\\TServer\\");
    EXPECT_EQ(GetDirectory(77), "D:\\");
    SetDirectory(directory_id::perUser, path("mine"));
    EXPECT_EQ(GetDirectory(10), path("mine\\Log\\"));
    SetDirectory(directory_id::perUser, "");
    EXPECT_EQ(GetDirectory(10), "") << "child of an empty parent";
    EXPECT_EQ(GetDirectory(10, true), "");
}

TEST_F(Directories, DictationRootIsKeptInTheConfigurationFile) {
    EXPECT_EQ(GetDirectory(204), "");
    EXPECT_FALSE(exists("Orvanta")) << "nothing to keep yet";
    useRegistry(workflowKey + "OV2000]\n\"NetBasePath\"=\"N:\\\\base\"\n");
    EXPECT_EQ(GetDirectory(204), "N:\\base\\");
    EXPECT_EQ(read("Orvanta/OVSearch.cfg"), "[Directories]\r\nDictationDir=N:\\base\\\r\n");
    SetDirectory(200, "N:\\other");
    EXPECT_EQ(GetDirectory(204), "N:\\base\\") << "the file goes first";
    SetDirectory(204, "D:\\dictations");
    EXPECT_EQ(GetDirectory(204), "D:\\dictations\\");
    SetDirectory(204, "");
    EXPECT_EQ(GetDirectory(204), "N:\\other\\") << "empty is as good as missing";
}

TEST_F(Directories, DictationRootComesFromTheIniFileBesideAMarker) {
    fs::create_directory(folder() / "module");
    write("module/reg.ov", "");
    write("Orvanta.ini", "[OV2000]\nNetBasePath=N:\\ini\n");
    EXPECT_EQ(GetDirectory(204), "N:\\ini\\");
    EXPECT_EQ(read("Orvanta/OVSearch.cfg"), "[Directories]\r\nDictationDir=N:\\ini\\\r\n");
}

TEST_F(Directories, DictationRootThatCannotBeKeptIsLogged) {
    fs::create_directories(folder() / "Orvanta/OVSearch.cfg");
    fs::create_directory(folder() / "Orvanta/Log");
    SetDirectory(204, "D:\\x");
    EXPECT_EQ(logged(),
              Lines{"ERROR (0): SetDirectory - @Orvanta\\OVSearch.cfg: cannot be written"});
}

TEST_F(Directories, AreMadeLevelByLevelInTheLog) {
    fs::create_directories(folder() / "Orvanta/Log");
    EXPECT_TRUE(EnsureDirectory(path("a\\b\\c")));
    EXPECT_TRUE(EnsureDirectory(path("a\\b\\c\\"))) << "is there";
    EXPECT_TRUE(exists("a/b/c"));
    EXPECT_EQ(GetDirectory(32, true), path("Orvanta\\Data\\DAss\\"));
    EXPECT_EQ(logged(),
              (Lines{"Create directory: @a\\", "Create directory OK", "Create directory: @a\\b\\",
                     "Create directory OK", "Create directory: @a\\b\\c\\", "Create directory OK",
                     "Create directory: @Orvanta\\Data\\", "Create directory OK",
                     "Create directory: @Orvanta\\Data\\DAss\\", "Create directory OK"}));
    EXPECT_EQ(person_.boxLines(), Lines{});
}

TEST_F(Directories, LogDirectoryIsMadeWithoutAWord) {
    EXPECT_TRUE(EnsureDirectory(path("a\\b")));
    EXPECT_FALSE(exists("Orvanta")) << "nothing is logged, so no log is made";
    EXPECT_EQ(GetDirectory(10, true), path("Orvanta\\Log\\"));
    EXPECT_TRUE(exists("Orvanta/Log"));
    EXPECT_EQ(logged(), Lines{});
    EXPECT_TRUE(WriteLog("first"));
    EXPECT_EQ(logged(), Lines{"first"});
}

TEST_F(Directories, FileInTheWay) {
    write("file", "");
    EXPECT_FALSE(EnsureDirectory(path("file\\a\\b")));
    EXPECT_EQ(logged(), Lines{});
    fs::create_directories(folder() / "Orvanta/Log");
    EXPECT_FALSE(EnsureDirectory(path("file\\a\\b")));
    SetDirectory(77, path("file\\a"));
    EXPECT_EQ(GetDirectory(77), path("file\\a\\"));
    EXPECT_EQ(GetDirectory(77, true), "");
    const Lines twice = {
        "Create directory: @file\\", "ERROR (17): EnsureDirectory - @file/: File exists",
        "Create directory: @file\\", "ERROR (17): EnsureDirectory - @file/: File exists"};
    EXPECT_EQ(logged(), twice);
}

TEST_F(Directories, MissingDriveIsShownUntilThereIsALog) {
    EXPECT_FALSE(EnsureDirectory("E:\\a\\b"));
    EXPECT_FALSE(EnsureDirectory("\\\\server\\share\\a"));
    EXPECT_EQ(person_.boxLines(),
              (Lines{"exclamation, OVSearch: ERROR Create directory: Drive not found (E:)",
                     "exclamation, OVSearch: ERROR Create directory: Drive not found "
                     "(\\\\server\\share)"}));
    fs::create_directories(folder() / "Orvanta/Log");
    EXPECT_FALSE(EnsureDirectory("E:\\"));
    EXPECT_EQ(logged(), Lines{"ERROR Create directory: Drive not found (E:)"});
    EXPECT_EQ(person_.boxes.size(), 2U);
    fs::create_directories(folder() / "drives/e");
    fs::create_directories(folder() / "drives/unc/server/share");
    EXPECT_TRUE(EnsureDirectory("E:\\a\\b"));
    EXPECT_TRUE(EnsureDirectory("\\\\server\\share\\a"));
    EXPECT_TRUE(exists("drives/e/a/b") && exists("drives/unc/server/share/a"));
}

TEST(FilePath, Parts) {
    const struct {
        const char* path;
        const char* withBackslash;
        const char* directory;
        const char* name;
    } cases[] = {
        {"", "", "", ""},
        {"\\", "\\", "\\", ""},
        {"a", "a\\", "", "a"},
        {"D:\\a\\b.WAV", "D:\\a\\b.WAV\\", "D:\\a\\", "b.WAV"},
        {"D:\\a\\", "D:\\a\\", "D:\\a\\", ""},
        {"a/b", "a/b\\", "", "a/b"},
    };
    for (const auto& tested : cases) {
        EXPECT_EQ(AddBackslash(tested.path), tested.withBackslash);
        EXPECT_EQ(directoryPart(tested.path), tested.directory);
        EXPECT_EQ(namePart(tested.path), tested.name);
    }
}

} // namespace
} // namespace ov::modFilePath
