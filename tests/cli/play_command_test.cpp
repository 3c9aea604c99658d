// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/play/list_player.h"
#include "cli/terminal_interface.h"
#include "tests/cli/cli_fixture.h"
#include "tests/environment.h"
#include "tests/failing_reads.h"
#include "tests/scripted_media.h"
#include "tests/wave_files.h"

// `ovsearch play`, into an output that throws everything away.

namespace ov::cli {
namespace {

class PlayCommand : public Cli {
protected:
    PlayCommand() {
        tests::writeWave(store_.native("short.WAV"), {}, std::vector<float>(2400)); // silent
        tests::writeWave(store_.native("long one.WAV"), {}, tests::sweep(8000, 800000));
        store_.add("text.WAV", "no sound");
    }
    ProgramRun playing(const std::string& name, const char* driver = "dummy") const {
        ProgramRun run;
        run.arguments = {"play", store_.native(name)};
        run.environment = {{"SDL_AUDIODRIVER", driver}, {"LC_ALL", "C"}};
        return run;
    }
    static ProgramResult run(const ProgramRun& how) {
        return tests::runProgram(OV_SEARCH_PROGRAM, how);
    }
};

TEST_F(PlayCommand, PlaysInSilenceOrTellsWhyNot) {
    const ProgramResult played = run(playing("short.WAV"));
    EXPECT_EQ(played.output + played.errors + std::to_string(played.exitCode), "0");
    for (const auto& [how, reason] : {std::pair(playing("text.WAV"), "cannot be played"),
                                      {playing("gone.WAV"), "Cannot find the specified file"},
                                      {playing("short.WAV", "no such output"), "No wave device"}}) {
        const ProgramResult result = run(how);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_TRUE(result.errors.starts_with("ovsearch: " + how.arguments.back() + ": "))
            << result.errors;
        EXPECT_PRED2(holds, result.errors, reason);
    }
}

TEST_F(PlayCommand, TellsThatTheFileCannotBeReadOn) {
    const tests::Environment silent("SDL_AUDIODRIVER", "dummy");
    const std::string file = store_.native("long one.WAV");
    const tests::FailingReads bad(file, tests::FailingReads::How::fail, 10000);
    tests::ScriptedMedia media;
    ::testing::internal::CaptureStderr();
    TerminalInterface terminal;
    EXPECT_EQ(ListPlayer({file}, {}, terminal).play(), ExitCode::unreadable);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "ovsearch: " + file +
                  ": Cannot read the specified file. Make sure the file is still present, or check "
                  "your disk or network connection.\n");
    EXPECT_EQ(media.sent.at(2) + ", " + media.sent.at(4),
              "set Player output -1, play Player from 0 to 100000");
}

// In a shell that tells afterwards how the terminal was left.
TEST_F(PlayCommand, ShowsPositionAndEndsAsAskedFor) {
    ProgramRun how = playing("long one.WAV");
    how.onTerminal = true;
    how.arguments = {"-c",
                     "before=$(stty -g); \"$0\" play \"$1\"; echo \"code $?\"; "
                     "test \"$before\" = \"$(stty -g)\" && echo restored",
                     OV_SEARCH_PROGRAM, how.arguments.back()};
    how.typeAt = "#"; // the level
    for (const auto& [key, code] : {std::pair("q", "code 0"), {"\x03", "code 130"}}) {
        how.typed = key;
        const ProgramResult result = tests::runProgram("/bin/sh", how);
        for (const char* text : {"0:00:00 / 0:01:40", code, "restored"})
            EXPECT_PRED2(holds, result.output, text);
    }
    how = playing("long one.WAV");
    how.onTerminal = true;
    how.typeAt = "0:00:01 / 0:01:40";
    how.typed = " ";
    how.interruptAt = "paused";
    EXPECT_EQ(run(how).exitCode, -SIGINT);
    // Who ignored Ctrl-C goes on doing so.
    how.interruptAt = "0:00:00 / 0:00:00";
    how.arguments = {"-c", "trap '' INT; exec \"$0\" play \"$1\"", OV_SEARCH_PROGRAM,
                     store_.native("short.WAV")};
    const ProgramResult whole = tests::runProgram("/bin/sh", how);
    EXPECT_EQ(whole.exitCode, 0);
    EXPECT_FALSE(holds(whole.output, "#")) << "silence has no level";
}

} // namespace
} // namespace ov::cli
