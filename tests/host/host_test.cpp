// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/files.h"
#include "tests/run_program.h"
#include "tests/slow_store.h"
#include "tests/temporary_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <vector>

// The host program, run without a screen: with the real plug-in, with files that are none, and
// with a scripted one that prints what it sees of the host (plugins/scripted_plugin.cpp).

namespace ov {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using tests::holds;
using tests::ProgramResult;
using tests::ProgramRun;
using tests::TemporaryStore;

std::string contentOf(const std::string& file) {
    return tests::shellOutput("cat '" + file + "'");
}

// On the smallest screen.
class Host : public ::testing::Test {
protected:
    Host() {
        place_.add("screen.json", R"({"screens":[{"name":"small","x":0,"y":0,"width":640,)"
                                  R"("height":480,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
    }
    ProgramResult run(std::vector<std::string> arguments, const std::string& steps = {},
                      ProgramRun how = {}) const {
        how.environment = {
            {"QT_QPA_PLATFORM", "offscreen:configfile=" + place_.native("screen.json")},
            {"XDG_RUNTIME_DIR", place_.native("")},
            {"OV_TEST_STEPS", steps}};
        how.arguments = std::move(arguments);
        return tests::runProgram(OV_HOST_PROGRAM, how);
    }
    // The self-test, with settings of its own.
    ProgramResult selfTest(const std::string& plugIn, std::vector<std::string> more = {},
                           const std::string& steps = {}) const {
        more.insert(more.end(), {"--self-test", "--settings", place_.native("settings")});
        if (!plugIn.empty())
            more.insert(more.end(), {"--plugin", plugIn});
        return run(more, steps);
    }
    // What the scripted plug-in saw between the load of the window and its end.
    std::string seen(const std::string& steps, std::vector<std::string> more = {}) const {
        if (std::find(more.begin(), more.end(), "--language") == more.end())
            more.insert(more.end(), {"--language", "en"});
        const ProgramResult result = selfTest(OV_SCRIPTED_PLUGIN, more, steps);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return between(result.output);
    }
    static std::string between(const std::string& output) {
        const std::string start = "window event 1 of 1\n";
        const std::string end = "window event 4 of 1\ncontrol gone\nplug-in gone\n";
        if (!output.starts_with(start) || !output.ends_with(end))
            return "not loaded and ended as agreed:\n" + output;
        return output.substr(start.size(), output.size() - start.size() - end.size());
    }

    TemporaryStore place_;
};

TEST_F(Host, LoadsThePlugInShowsItAndEnds) {
    for (const std::string language : {"de", "en"}) {
        const std::string picture = place_.native(language + ".png");
        const ProgramResult result = selfTest(
            {}, {"--language", language, "--screenshot", picture, "--store", place_.native("")});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        const std::string size = contentOf(picture).substr(16, 8); // high byte first
        EXPECT_EQ(size.substr(0, 4), "\0\0\2\x80"s) << language << ": not 640 wide";
        EXPECT_LT(size.substr(4), "\0\0\1\xE0"s) << language << ": 480 high or more";
    }
    const auto rights = [this](const std::string& name) {
        return static_cast<unsigned>(fs::status(place_.native(name)).permissions());
    };
    for (const char* made : {"settings", "settings/Orvanta", "settings/Orvanta/Data/DAss"})
        EXPECT_EQ(rights(made), 0700U) << made;
    for (const char* made : {"OVHostWindow.ini", "OVHost.ini"}) // the host's and the plug-in's
        EXPECT_EQ(rights("settings/Orvanta/" + std::string(made)), 0600U) << made;
}

TEST_F(Host, PutsEverythingAwayWhenASignalEndsIt) {
    ProgramRun how;
    how.interruptAt = "window event 1 of 1\n";
    const ProgramResult result =
        run({"--plugin", OV_SCRIPTED_PLUGIN, "--settings", place_.native("settings")}, {}, how);
    EXPECT_EQ(result.exitCode, -SIGINT) << result.errors;
    EXPECT_EQ(between(result.output), "");
}

TEST_F(Host, RefusesFilesItCannotUseAndSaysWhy) {
    place_.add("text.so", "no program");
    for (const auto& [file, reason] : std::vector<std::pair<std::string, std::string>>{
             {place_.native("text.so"), "the file is no plug-in."},
             {place_.native("missing.so"), "there is no such file."},
             {OV_OTHER_INTERFACE_PLUGIN, "the plug-in has the interface OVSearch.IPlugInLibrary/0; "
                                         "this program needs OVSearch.IPlugInLibrary/1."},
             {OV_OTHER_VERSION_PLUGIN,
              "the plug-in has version 999 of the interface; this program needs 1."}}) {
        const ProgramResult result = selfTest(file, {"--language", "en"});
        EXPECT_EQ(result.exitCode, 1) << file;
        const std::string message = "ovhost: " + file + ": " + reason;
        EXPECT_PRED2(holds, result.errors, message);
        EXPECT_EQ(result.output, ""); // no code of the file ran
    }
}

TEST_F(Host, TellsWhatThePlugInFailedWith) {
    for (const auto& [steps, error, output] : std::vector<std::array<std::string, 3>>{
             {"refuse-start", "could not be started: no licence (error 7)", "plug-in gone\n"},
             {"no-plug-in", "does not know OVSearch.Connector", ""},
             {"refuse-init", "no sound (error 9)",
              "window event 1 of 1\ncontrol gone\nwindow event 4 of 1\nplug-in gone\n"},
             {"no-control", "Scripted could not create its control",
              "window event 1 of 1\nwindow event 4 of 1\nplug-in gone\n"},
             {"failing-sink", "refused (Fehler 5)",
              "window event 1 of 1\nfirst hears 2 LANGUAGE\nthird hears 2 LANGUAGE\n"
              "window event 4 of 1\ncontrol gone\nplug-in gone\n"}}) {
        const ProgramResult result = selfTest(OV_SCRIPTED_PLUGIN, {"--language", "en"}, steps);
        EXPECT_EQ(result.exitCode, 1) << steps;
        EXPECT_PRED2(holds, result.errors, error);
        EXPECT_EQ(result.output, output) << steps;
    }
}

TEST_F(Host, AnswersThePlugIn) {
    const std::string latin1 = "stor\xE9"; // no UTF-8
    place_.addFolder(latin1);
    const std::string settings = place_.directory("settings") + "Orvanta\\";
    EXPECT_EQ(seen("answers", {"--store", "/" + place_.native(latin1)}), // "//" is no share
              "PI_GetLanguage=9\nPI_GetSubLanguage=0\nPI_GetLocalINIFile=" + settings +
                  "OVHost.ini\nPI_NoSuchThing=\nPI_GetDirectory 204=" + place_.directory(latin1) +
                  "\nPI_GetDirectory 32=" + settings +
                  "Data\\DAss\\\nPI_GetDirectory 7=\nPI_GetDirectory=\n");
    EXPECT_TRUE(fs::is_directory(place_.native("settings/Orvanta/Data/DAss")));
}

TEST_F(Host, BeginsWithOneButtonThatChoosesTheFolder) {
    EXPECT_EQ(seen("first-folder"), "&Choose the dictation folder…\n\\\n");
}

TEST_F(Host, StartsThoughTheServerOfItsStoreIsDead) {
    tests::SlowStore server(place_);
    if (!server.isMounted())
        GTEST_SKIP() << tests::SlowStore::why;
    server.hang();
    ProgramRun how;
    how.actAt = "PI_GetDirectory 204=";
    how.act = [&] {
        EXPECT_TRUE(server.hasCaught());
        EXPECT_FALSE(server.timedOut());
        server.release(); // no process ends while a call of it hangs
    };
    const ProgramResult result =
        run({"--self-test", "--plugin", OV_SCRIPTED_PLUGIN, "--settings", place_.native("settings"),
             "--store", platform::toNativePath(server.directory())},
            "answers", how);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_PRED2(holds, result.output, "204=" + server.directory() + "\n");
}

#ifndef __SANITIZE_THREAD__ // which cannot start itself beside so large a stack
TEST_F(Host, StartsThoughNoThreadCanBeHad) {
    ProgramRun how;
    how.withThreads = false;
    const ProgramResult result = run({"--self-test", "--plugin", OV_SCRIPTED_PLUGIN, "--settings",
                                      place_.native("settings"), "--store", place_.native("")},
                                     "answers", how);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_PRED2(holds, result.output, "204=" + place_.directory() + "\n");
}
#endif

TEST_F(Host, RemembersWhatIsChosenButNotWhatIsGivenForOneRun) {
    place_.addFolder("old & new").addFolder("last");
    place_.add("settings/Orvanta/OVHostWindow.ini",
               "[General]\nlanguage=7\nrecentFolders=" + place_.native("last") + ", " +
                   place_.native("old & new") + "\n");
    const auto language = [&] { // of this run
        return seen("answers", {"--language", "de"}).substr(0, 17);
    };
    EXPECT_EQ(language(), "PI_GetLanguage=7\n");
    EXPECT_EQ(seen("events"),
              "first hears 2 LANGUAGE\nthird hears 2 LANGUAGE\n"
              "7, &Zuletzt verwendete Verzeichnisse\n"
              "first hears 2 LANGUAGE\nthird hears 2 LANGUAGE\n9, &Recent folders\n"
              "first hears 2 DIR_NETDICTATIONTREE\nthird hears 2 DIR_NETDICTATIONTREE\n");
    EXPECT_EQ(language(), "PI_GetLanguage=7\n");

    const std::string answers = selfTest(OV_SCRIPTED_PLUGIN, {}, "answers").output;
    EXPECT_PRED2(holds, answers, "PI_GetLanguage=9\n");
    EXPECT_PRED2(holds, answers, "204=" + place_.directory("old & new") + "\n");
    EXPECT_PRED2(holds, contentOf(place_.native("settings/Orvanta/OVHostWindow.ini")),
                 "recentFolders=" + place_.native("old & new") + ", " + place_.native("last"));
}

TEST_F(Host, ShowsProgressAndLogAndTellsOnceThatItsSettingsCannotBeKept) {
    place_.add("settings/Orvanta", "a file in the place of the folder");
    const std::string lines = seen("events,window"); // both languages are chosen
    EXPECT_TRUE(lines.ends_with("folders\nfilling: 40 of 40\n"
                                "Working…: -1 of 0\nlatin-1=kept\nline 1\nline 2\n"
                                "The settings cannot be saved: " +
                                place_.native("settings/Orvanta/OVHostWindow.ini") + "\n"))
        << lines;
}

TEST_F(Host, ShowsWhatTheControlOffersInAMenu) {
    EXPECT_EQ(seen("offer"), "offered in Vie&w\n");
}

TEST_F(Host, ClosesInTheMiddleOfASearch) {
    const ProgramResult result = selfTest(OV_SCRIPTED_PLUGIN, {}, "search");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output, "window event 1 of 1\nwindow event 4 of 1\ncontrol gone\n"
                             "search unwound\nplug-in gone\n");
}

TEST_F(Host, RefusesWrongOptions) {
    const std::vector<std::vector<std::string>> wrong = {
        {"--frobnicate"}, {"folder"},      {"--language", "fr"}, {"--language"},
        {"--store"},      {"--store", ""}, {"--settings", ""},   {"--store", "/no/such/folder"}};
    for (const auto& arguments : wrong) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments.front();
        EXPECT_PRED2(holds, result.errors, "ovhost: ") << arguments.front();
        EXPECT_EQ(result.output, "");
    }
}

} // namespace
} // namespace ov
