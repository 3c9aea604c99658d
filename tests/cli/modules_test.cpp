// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/run_program.h"
#include "tests/temporary_store.h"
#include "tests/wave_files.h"

// Where the program takes its modules from, and what it says when they cannot be had.

namespace ov::cli {
namespace {

class Modules : public ::testing::Test {
protected:
    Modules() {
        tests::writeWave(place_.native("2$ROH.WAV"), {}, std::vector<float>(800));
        for (const char* folder : {"a/b/bin", "bin"}) {
            place_.addFolder(folder);
            fs::copy_file(OV_SEARCH_PROGRAM, place_.native(std::string(folder) + "/ovsearch"));
        }
    }
    void install(const std::string& module) {
        const std::string name = fs::path(module).filename().native();
        place_.add(installed(name));
        fs::copy_file(module, place_.native(installed(name)), fs::copy_options::overwrite_existing);
    }
    static std::string installed(const std::string& name) { return OV_MODULE_FOLDER "/" + name; }

    // Its exit code and what it says in vain.
    std::string ran(const std::string& folder, std::vector<std::string> arguments) const {
        for (std::string& argument : arguments)
            if (argument.starts_with("@"))
                argument = place_.native(argument.substr(1));
        const auto result = tests::runProgram(
            place_.native(folder + "/bin/ovsearch"),
            {.arguments = arguments,
             .environment = {{"SDL_AUDIODRIVER", "dummy"}, {"LC_ALL", "C.UTF-8"}}});
        return std::to_string(result.exitCode) + " " + result.errors;
    }

    tests::TemporaryStore place_;
};

TEST_F(Modules, AreThoseOfTheInstallation) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {OV_SOUND_MODULE, {"play", "@2$ROH.WAV"}},
        {OV_SOUND_MODULE, {"demo", "@demo", "--count", "1"}},
        {OV_SHEET_MODULE, {"export", "--force", "@l.xlsx", "@"}},
#ifdef OV_PDF_MODULE
        {OV_PDF_MODULE, {"export", "--force", "@l.pdf", "@"}},
#endif
    };
    for (const auto& [module, arguments] : cases) {
        const std::string name = fs::path(module).filename().native();
        install(module);
        // One in a folder above is somebody else's.
        const std::string missing = ran("a/b", arguments);
        EXPECT_TRUE(missing.starts_with("3 ovsearch: ")) << missing;
        EXPECT_PRED2(tests::holds, missing,
                     place_.native("a/b/bin/" + name) + ": cannot open shared object file");
        fs::remove_all(place_.native("demo"));
        EXPECT_TRUE(ran(".", arguments).starts_with("0 ")) << name;
        fs::copy_file(OV_OTHER_VERSION_MODULE, place_.native(installed(name)),
                      fs::copy_options::overwrite_existing);
        fs::remove_all(place_.native("demo"));
        EXPECT_PRED2(tests::holds, ran(".", arguments),
                     name + ": is of another version than the program");
    }
    const std::string found = ran("a/b", {"find", "@", "-c", "status = ROH"});
    EXPECT_TRUE(found.starts_with("0 ") && !tests::holds(found, "libOVSearch"))
        << "what needs none goes without: " << found;
    const std::string unsorted = ran("a/b", {"find", "@", "--sort", "author"});
    EXPECT_TRUE(unsorted.starts_with("0 ")) << unsorted;
    EXPECT_PRED2(tests::holds, unsorted, "libOVSearchLocale.so: cannot open shared object file");
}

} // namespace
} // namespace ov::cli
