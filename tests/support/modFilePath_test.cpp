// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/log.h"
#include "support/modFilePath.h"
#include "support/modWFRoutines.h"
#include "tests/recording_interface.h"
#include "tests/settings_fixture.h"

namespace ov::modFilePath {
namespace {

using Lines = std::vector<std::string>;

// The per-user data lie in "Orvanta" of the folder, which is not there yet, and the control's own
// file in "module".
class ControlDirectories : public tests::SettingsTest {
public:
    ControlDirectories() : config_("XDG_CONFIG_HOME", folder().native()) {
        platform::setPerUserFolder({});
        forget();
    }
    ~ControlDirectories() override { forget(); }

protected:
    void useRegistry(const std::string& keys) {
        write("Orvanta/registry.reg", "REGEDIT4\n" + keys);
        forget();
    }
    void forget() {
        platform::reloadRegistry();
        modWFRoutines::reset();
        resetLog();
        reset();
        SetDirectory(directory_id::module, path("module"));
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

const std::string baseSetting =
    "[HKEY_LOCAL_MACHINE\\Software\\Orvanta\\WF\\OV2000]\n\"NetBasePath\"=\"N:\\\\base\"\n";

TEST_F(ControlDirectories, ByNumber) {
    useRegistry(baseSetting + "[HKEY_LOCAL_MACHINE\\Software\\Orvanta\\WF\\Orvanta2000]\n"
                              "\"NetzPath\"=\"N:\\\\net\"\n");
    std::string found;
    for (const std::int32_t id : {1,  11, 12, 2,  10,  30,  31,  32,  33,  34,  3,  40,
                                  41, 42, 43, 44, 100, 102, 103, 104, 105, 106, 200}) {
        std::string directory = GetDirectory(id);
        if (directory.starts_with(path("")))
            directory.replace(0, path("").size(), "@");
        found.append(directory).append(" ");
    }
    EXPECT_EQ(found, R"(@module\ @module\PlugIns\ @module\DRL\ @Orvanta\ @Orvanta\Log\ )"
                     R"(@Orvanta\Data\ @Orvanta\Data\TServer\ @Orvanta\Data\DAss\ )"
                     R"(@Orvanta\Data\WF\ @Orvanta\Data\Lumeron\ \etc\xdg\Orvanta\ )"
                     R"(\etc\xdg\Orvanta\Data\ \etc\xdg\Orvanta\Data\TServer\ )"
                     R"(\etc\xdg\Orvanta\Data\DAss\ \etc\xdg\Orvanta\Data\WF\ )"
                     R"(\etc\xdg\Orvanta\Data\Lumeron\ N:\net\ N:\net\Data\ N:\net\Data\TServer\ )"
                     R"(N:\net\Data\DAss\ N:\net\Data\WF\  N:\base\ )");
    for (const std::int32_t unknown : {0, 13, 101, 205, -1})
        EXPECT_EQ(GetDirectory(unknown, true), "") << unknown;
    EXPECT_EQ(entryCount(), 1U) << "asking makes nothing";
}

TEST_F(ControlDirectories, FallBackToTheControlsOwnAndCanBeReplaced) {
    const std::string key = std::string(platform::shellFoldersKey) + "]\n";
    useRegistry("[HKEY_LOCAL_MACHINE\\" + key + "\"Common AppData\"=-\n[HKEY_CURRENT_USER\\" + key +
                "\"AppData\"=-\n");
    for (const std::int32_t id : {2, 3, 100})
        EXPECT_EQ(GetDirectory(id), path("module\\")) << id;
    EXPECT_EQ(GetDirectory(200), "");
    SetDirectory(30, "D:\\data");
    EXPECT_EQ(GetDirectory(31), "D:\\data\\TServer\\");
    SetDirectory(directory_id::perUser, path("mine"));
    EXPECT_EQ(GetDirectory(10), path("mine\\Log\\"));
    SetDirectory(directory_id::perUser, "");
    EXPECT_EQ(GetDirectory(10, true), "") << "child of an empty parent";
}

TEST_F(ControlDirectories, DictationRootIsKeptInTheConfigurationFile) {
    EXPECT_EQ(GetDirectory(204), "");
    useRegistry(baseSetting);
    EXPECT_EQ(GetDirectory(204), "N:\\base\\");
    EXPECT_EQ(read("Orvanta/OVSearch.cfg"), "[Directories]\r\nDictationDir=N:\\base\\\r\n");
    SetDirectory(200, "N:\\other");
    EXPECT_EQ(GetDirectory(204), "N:\\base\\") << "the file goes first";
    SetDirectory(204, "");
    EXPECT_EQ(GetDirectory(204), "N:\\other\\") << "empty is as good as missing";
    // Whatever its bytes are.
    for (const char* any : {"\\M\xFCller\\100% \xC3\xBC: x\\", "d:\\\xE4:\\", "\\\\server\\\xE4\\",
                            "\\a\n\\", "\\50%41\\"}) {
        SetDirectory(204, any);
        EXPECT_EQ(GetDirectory(204), any);
    }
    EXPECT_EQ(read("Orvanta/OVSearch.cfg"), "[Directories]\r\nDictationDir=\\50%41\\\r\n");
    fs::remove(folder() / "Orvanta/OVSearch.cfg");
    fs::create_directory(folder() / "Orvanta/OVSearch.cfg");
    fs::create_directory(folder() / "Orvanta/Log");
    SetDirectory(204, "D:\\x");
    EXPECT_EQ(logged(), Lines{"ERROR (0): WriteIniString - @Orvanta/OVSearch.cfg: [Directories] "
                              "DictationDir cannot be written"});
}

TEST_F(ControlDirectories, AreMadeLevelByLevelInTheLog) {
    write("file", "");
    EXPECT_FALSE(EnsureDirectory(path("file\\a\\b")));
    EXPECT_EQ(logged(), Lines{}) << "not while there is no log";
    fs::create_directories(folder() / "Orvanta/Log");
    EXPECT_TRUE(EnsureDirectory(path("a\\b")));
    EXPECT_TRUE(EnsureDirectory(path("a\\b\\"))) << "is there";
    EXPECT_TRUE(exists("a/b"));
    EXPECT_EQ(GetDirectory(30, true), path("Orvanta\\Data\\"));
    SetDirectory(77, path("file\\a"));
    EXPECT_EQ(GetDirectory(77), path("file\\a\\"));
    EXPECT_EQ(GetDirectory(77, true), "");
    EXPECT_EQ(
        logged(),
        (Lines{"Create directory: @a\\", "Create directory OK", "Create directory: @a\\b\\",
               "Create directory OK", "Create directory: @Orvanta\\Data\\", "Create directory OK",
               "Create directory: @file\\", "ERROR (17): EnsureDirectory - @file/: File exists"}));
    EXPECT_EQ(person_.boxLines(), Lines{});
}

TEST_F(ControlDirectories, ThoseOfTheUsersOwnAreTheUsersAlone) {
    const mode_t mask = umask(0);
    SetDirectory(10, path("logs\\mine"));
    SetDirectory(77, path("net\\store"));
    for (const std::int32_t id : {77, 32, 10})
        EXPECT_NE(GetDirectory(id, true), "") << id;
    EXPECT_EQ(logged(), Lines{}) << "there was no log to tell of its making";
    umask(mask);
    EXPECT_TRUE(WriteLog("line"));
    for (const auto& [name, expected] :
         {std::pair("Orvanta", 0700U), std::pair("Orvanta/Data", 0700U),
          std::pair("Orvanta/Data/DAss", 0700U), std::pair("logs", 0700U),
          std::pair("logs/mine", 0700U), std::pair("logs/mine/OVSearch_.log", 0600U),
          std::pair("net/store", 0777U)})
        EXPECT_EQ(static_cast<unsigned>(fs::status(folder() / name).permissions()), expected);
}

TEST_F(ControlDirectories, MissingDriveIsShownUntilThereIsALog) {
    EXPECT_FALSE(EnsureDirectory("E:\\a\\b"));
    EXPECT_EQ(person_.boxLines(),
              Lines{"exclamation, OVSearch: ERROR Create directory: Drive not found (E:)"});
    fs::create_directories(folder() / "Orvanta/Log");
    EXPECT_FALSE(EnsureDirectory("E:\\"));
    EXPECT_TRUE(logged().size() == 1 && person_.boxes.size() == 1);
    fs::create_directories(folder() / "Orvanta/drives/e");
    fs::create_directories(folder() / "Orvanta/drives/unc/server/share");
    EXPECT_TRUE(EnsureDirectory("E:\\a\\b"));
    EXPECT_TRUE(EnsureDirectory("\\\\server\\share\\a"));
    EXPECT_TRUE(exists("Orvanta/drives/e/a/b") && exists("Orvanta/drives/unc/server/share/a"));
}

} // namespace
} // namespace ov::modFilePath
