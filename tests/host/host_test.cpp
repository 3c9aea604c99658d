// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/files.h"
#include "tests/run_program.h"
#include "tests/slow_store.h"

// The host program, run without a screen: with the real plug-in, with files that are none, and
// with a scripted one that prints what it sees of the host (plugins/scripted_plugin.cpp).

namespace ov {
namespace {

using namespace std::string_literals;
using tests::holds;
using tests::ProgramResult;
using tests::ProgramRun;
using tests::TemporaryStore;

// What the scripted plug-in prints of its begin and of its end.
const std::string loaded = "control made\n";
const std::string ended = "control gone\nplug-in gone\n";
// Of German and then English, chosen in the menu.
const std::string told = "listener 0 hears LANGUAGE\nlistener 2 hears LANGUAGE\n";
const std::string chosen = told + "speaks 7\n" + told + "speaks 9\n";

// On the smallest screen, with settings of its own.
class Host : public ::testing::Test {
protected:
    Host() {
        place_.add("screen.json", R"({"screens":[{"name":"small","x":0,"y":0,"width":640,)"
                                  R"("height":480,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
    }
    ProgramResult run(const std::vector<std::string>& arguments, const std::string& step = {},
                      ProgramRun how = {}) const {
        how.environment = {
            {"QT_QPA_PLATFORM", "offscreen:configfile=" + place_.native("screen.json")},
            {"XDG_RUNTIME_DIR", place_.native("")},
            {"LANGUAGE", "en"},
            {"OV_TEST_STEP", step}};
        how.arguments = {"--settings", place_.native("settings")};
        how.arguments.insert(how.arguments.end(), arguments.begin(), arguments.end());
        return tests::runProgram(OV_HOST_PROGRAM, how);
    }
    // What the scripted plug-in saw between the load of the window and its end.
    std::string seen(const std::string& step, std::vector<std::string> more = {},
                     const ProgramRun& how = {}) const {
        more.insert(more.end(), {"--self-test", "--plugin", OV_SCRIPTED_PLUGIN});
        const auto [exitCode, output, errors] = run(more, step, how);
        EXPECT_EQ(exitCode, 0) << errors;
        if (!output.starts_with(loaded) || !output.ends_with(ended))
            return "not loaded and ended as agreed:\n" + output;
        return output.substr(loaded.size(), output.size() - loaded.size() - ended.size());
    }

    TemporaryStore place_;
};

TEST_F(Host, LoadsThePlugInShowsItAndEnds) {
    for (const std::string language : {"de", "en"}) {
        const std::string picture = place_.native(language + ".png");
        const ProgramResult result =
            run({"--language", language, "--screenshot", picture, "--store", place_.native("")});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        const std::string size =
            tests::shellOutput("cat '" + picture + "'").substr(16, 8); // high byte first
        EXPECT_EQ(size.substr(0, 4), "\0\0\2\x80"s) << language << ": not 640 wide";
        EXPECT_LT(size.substr(4), "\0\0\1\xE0"s) << language << ": 480 high or more";
    }
    const auto rights = [this](const std::string& made) {
        return static_cast<unsigned>(fs::status(place_.native("settings" + made)).permissions());
    };
    for (const char* folder : {"", "/Orvanta", "/Orvanta/Data/DAss"})
        EXPECT_EQ(rights(folder), 0700U) << folder;
    for (const char* file : {"OVHostWindow.ini", "OVHost.ini"}) // the host's and the plug-in's
        EXPECT_EQ(rights("/Orvanta/"s + file), 0600U) << file;
}

TEST_F(Host, PutsEverythingAwayWhenASignalEndsIt) {
    const ProgramRun how{.interruptAt = loaded};
    const ProgramResult result = run({"--plugin", OV_SCRIPTED_PLUGIN}, {}, how);
    EXPECT_EQ(result.exitCode, -SIGINT) << result.errors;
    EXPECT_EQ(result.output, loaded + ended);
}

TEST_F(Host, SaysWhyItCannotGoOn) {
    place_.add("text.so", "no program");
    // Arguments, the step of the plug-in, exit code, error, output.
    using Case = std::tuple<std::vector<std::string>, const char*, int, const char*, std::string>;
    const auto scripted = [](const char* step, const char* error, const std::string& output) {
        return Case{{"--plugin", OV_SCRIPTED_PLUGIN}, step, 1, error, output};
    };
    const auto refused = [](const std::string& plugIn, const char* error) {
        return Case{{"--plugin", plugIn}, "", 1, error, ""};
    };
    const Case cases[] = {
        {{"--store", ""}, "", 2, "ovhost: ", ""},
        {{"--store", "/no/such/folder"}, "", 2, "ovhost: ", ""},
        refused(place_.native("text.so"), "text.so: the file is no plug-in."),
        refused(place_.native("gone.so"), "gone.so: there is no such file."),
        refused(OV_OTHER_INTERFACE_PLUGIN, "IPlugInLibrary/0; this program needs"),
        refused(OV_OTHER_VERSION_PLUGIN, "version 999 of the interface; this"),
        scripted("no-plug-in", "does not know OVSearch.Connector", ""),
        scripted("refuse-start", "could not be started: no licence (error 7)", ""),
        scripted("no-control", "OVSearch could not create its control", "plug-in gone\n"),
        scripted("refuse-init", "no sound (error 9)", loaded + ended),
        scripted("failing-listener", "refused (Fehler 5)", loaded + chosen + ended)};
    for (auto [arguments, step, exitCode, error, output] : cases) {
        SCOPED_TRACE(arguments.back() + " " + step);
        arguments.emplace_back("--self-test");
        const ProgramResult result = run(arguments, step);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_PRED2(holds, result.errors, error);
        EXPECT_EQ(result.output, output);
    }
}

TEST_F(Host, AnswersThePlugIn) {
    const std::string latin1 = "stor\xE9"; // no UTF-8
    place_.addFolder(latin1);
    const std::string settings = place_.directory("settings") + "Orvanta\\";
    EXPECT_EQ(seen("answers", {"--store", "/" + place_.native(latin1)}), // "//" is no share
              "PI_GetDirectory 204=" + place_.directory(latin1) + "\nPI_GetDirectory 32=" +
                  settings + "Data\\DAss\\\nPI_GetDirectory 7=\nPI_GetLanguage=9\n" +
                  "PI_GetLocalINIFile=" + settings +
                  "OVHost.ini\nPI_GetDirectory=\nPI_ProgressInit=\nPI_NoSuchThing=\n");
}

TEST_F(Host, StartsThoughTheServerOfItsStoreIsDead) {
    tests::SlowStore server(place_);
    if (!server.isMounted())
        GTEST_SKIP() << tests::SlowStore::why;
    server.hang();
    ProgramRun how{.steps = {{"PI_GetDirectory 204=", [&] {
                                  EXPECT_TRUE(server.hasCaught());
                                  EXPECT_FALSE(server.timedOut());
                                  server.release(); // no process ends while a call of it hangs
                              }}}};
    const std::string answers =
        seen("answers", {"--store", platform::toNativePath(server.directory())}, how);
    EXPECT_PRED2(holds, answers, "204=" + server.directory() + "\n");
}

#ifndef __SANITIZE_THREAD__ // which cannot start itself beside so large a stack
TEST_F(Host, StartsThoughNoThreadCanBeHad) {
    const ProgramRun how{.withThreads = false};
    const std::string answers = seen("answers", {"--store", place_.native("")}, how);
    EXPECT_PRED2(holds, answers, "204=" + place_.directory() + "\n");
}
#endif

TEST_F(Host, TellsOnceThatItsSettingsCannotBeKept) {
    place_.add("settings/Orvanta", "a file in the place of the folder");
    EXPECT_EQ(seen("events"), chosen + "The settings cannot be saved: " +
                                  place_.native("settings/Orvanta/OVHostWindow.ini") + "\n");
}

TEST_F(Host, ClosesInTheMiddleOfASearch) {
    const auto [exitCode, output, errors] =
        run({"--self-test", "--plugin", OV_SCRIPTED_PLUGIN}, "search");
    EXPECT_EQ(exitCode, 0) << errors;
    EXPECT_EQ(output, loaded + "control gone\nsearch unwound\nplug-in gone\n");
}

} // namespace
} // namespace ov
