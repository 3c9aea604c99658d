// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/play/list_player.h"
#include "cli/play/outputs.h"
#include "cli/play/play_keys.h"
#include "cli/play/play_span.h"
#include "cli/terminal_interface.h"
#include "tests/cli/cli_fixture.h"
#include "tests/environment.h"
#include "tests/failing_reads.h"
#include "tests/scripted_media.h"
#include "tests/wave_files.h"

#include <tuple>

namespace ov::cli {
namespace {

TEST(PlayKeys, AreThoseOfThePlayer) {
    using enum PlayKey;
    const std::pair<std::string, std::vector<PlayKey>> cases[] = {
        {" saq", {pause, stop, again, quit}},
        {"pn", {previous, next}},
        {"lgt", {mark, goTo, timeStamp}},
        {"\x0C\n\x14\r", {mark, goTo, timeStamp}},
        {"+=-_", {faster, faster, slower, slower}},
        {"\x1B[D\x1B[C", {back, on}},
        {"\x1BOD\x1B[1;5C", {back, on}},
        {"\x1B[18~\x1B[3~\x1B[A", {again}}, // F7, Del and Up
        {"\x1Bq\x1B\x1B[Cx", {quit, on}},
        {"\x03", {interrupt}},
        {"xD[C~", {}}};
    for (const auto& [typed, keys] : cases) {
        PlayKeys meanings;
        std::vector<PlayKey> found;
        for (const char one : typed)
            if (const auto key = meanings.take(one))
                found.push_back(*key);
        EXPECT_EQ(found, keys) << typed;
    }
}

TEST(PlaySpan, LiesWithinTheFile) {
    constexpr std::int32_t length = 100'000;
    const std::tuple<const char*, const char*, std::optional<PlaySpan>> cases[] = {
        {"", "", PlaySpan{0, length}},           {"10", "", PlaySpan{10'000, length}},
        {"-0:30", "", PlaySpan{70'000, length}}, {"-500", "1:00", PlaySpan{0, 60'000}},
        {"10", "+5", PlaySpan{10'000, 15'000}},  {"+10", "-5", PlaySpan{10'000, 95'000}},
        {"", "9:00:00", PlaySpan{0, length}},    {"1:40", "", std::nullopt},
        {"9999:00:00", "", std::nullopt},        {"50", "50", std::nullopt}};
    for (const auto& [from, to, span] : cases) {
        EXPECT_EQ(spanOf({readTypedTime(from), readTypedTime(to)}, length), span)
            << from << " to " << to;
    }
    EXPECT_EQ(spanOf({}, 0), (PlaySpan{0, 0}));
}

TEST(Outputs, AreMeantByNameNumberOrPart) {
    const std::vector<std::string> names = {"Speakers", "USB Headset", "Usb headset 2", "3", "Öl"};
    const std::pair<const char*, const char*> cases[] = {
        {"Speakers", "Speakers"},       {"2", "USB Headset"},           {"3", "3"},
        {"usb HEADSET", "USB Headset"}, {"headset 2", "Usb headset 2"}, {"öl", "Öl"}};
    for (const auto& [typed, name] : cases)
        EXPECT_EQ(meantOutput(names, typed), name) << typed;
    for (const char* nothing : {"headset", "0", "6", "nothing"})
        EXPECT_EQ(meantOutput(names, nothing), std::nullopt) << nothing;
}

// The program, into an output that throws all away.
class PlayList : public Cli {
protected:
    PlayList() {
        const std::vector<float> sound = tests::sweep(8000, 800000);
        for (const char* name : {"2$ROH@@14$Zeh@@15$knee.WAV", "2$ROH@@14$Öztürk.WAV"})
            tests::writeWave(store_.native(name), {}, sound);
        tests::writeWave(store_.native("short.WAV"), {}, std::vector<float>(2400)); // silent
        tests::writeWave(store_.native("empty.WAV"), {}, {});
        store_.add("text.WAV", "no sound");
    }
    std::string file(const char* name) const { return store_.native(name); }
    static ProgramRun silent(bool onTerminal = false, const std::string& typed = {}) {
        return {.environment = {{"SDL_AUDIODRIVER", "dummy"}},
                .typeAt = "#", // something is heard
                .typed = typed,
                .onTerminal = onTerminal};
    }
    const std::string zeh_ = file("2$ROH@@14$Zeh@@15$knee.WAV");
    const std::string oeztuerk_ = file("2$ROH@@14$Öztürk.WAV");
};

TEST_F(PlayList, ObeysKeysOnATerminal) {
    const std::pair<std::string, Texts> cases[] = {
        {"nq", {"1 of 2", "2 of 2", "Öztürk"}},
        {"npnnx", {"1 of 2", "2 of 2"}},
        {"\x1B[C\x1B[C q", {"0:00:10 / 0:01:40", "paused"}},
        {"\x1B[Csq", {"0:00:05 / 0:01:40", "paused"}},
        {"++n-q", {"110 %", "125 %", "2 of 2"}},
        {"g1:15\nt q", {"[00:01:15]", "paused"}},
        {"g1:15\x1Btg0:30x\x7F\rg1:200\x7F\r q",
         {"[00:00:00]", "go to 0:30x", "go to 1:2", "0:01:20 /"}},
        {"\x1B[Cg1:41\rtg1m\rtg+9:00\r t q",
         {"1:41 lies beyond the end, 0:01:40", "\"1m\" is no time; say", "[00:00:05]",
          "[00:01:39]"}},
        {"\r\n1:15\rt q", {"[00:01:15]"}}, // Enter is not Ctrl-J
        {"ll q", {"too short"}},
        {"\x1B[Cl\x1B[C\x1B[Cltlq", {"0:00:05 to 0:00:15", "[00:00:05]", "no longer"}}};
    for (const auto& [typed, shown] : cases) {
        const ProgramResult played = run({"play", zeh_, oeztuerk_}, silent(true, typed));
        EXPECT_EQ(played.exitCode, 0) << typed;
        for (const std::string& text : shown)
            EXPECT_PRED2(holds, played.output, text) << typed;
    }
    const std::string back = run({"play", zeh_, oeztuerk_, zeh_}, silent(true, "nnpq")).output;
    EXPECT_EQ(back.substr(back.rfind(" of 3") - 1, 6), "2 of 3");
    for (const char* typed : {"  q", " aq", "aq"}) {
        const std::string goesOn = run({"play", zeh_}, silent(true, typed)).output;
        EXPECT_FALSE(holds(goesOn.substr(goesOn.rfind(" / ")), "paused")) << goesOn;
    }
    const ProgramResult fast = run({"play", "--speed=150", "--from=-0:20", "--loop", zeh_},
                                   silent(true, "\x1B[C\x1B[C\x1B[C\x1B[C\x1B[C q"));
    EXPECT_PRED2(holds, fast.output, "0:01:20 / 0:01:40");
    EXPECT_PRED2(holds, fast.output, "150 %");
    EXPECT_EQ(run({"play", zeh_}, silent(true, "\x03")).exitCode, -SIGINT);
}

// As the level tells, a mark of which is 2.5 dB.
TEST_F(PlayList, PlaysSoftVoicesLouder) {
    std::vector<float> voice(20000);
    for (std::size_t i = 0; i < voice.size(); ++i)
        voice[i] = 0.01F * std::sin(static_cast<float>(i)); // at -40 dB
    tests::writeWave(file("soft.WAV"), {}, voice);
    const std::pair<Texts, std::size_t> cases[] = {
        {{}, 4}, {{"--boost=300"}, 7}, {{"--even-out"}, 12}};
    for (const auto& [options, marks] : cases) {
        const Texts arguments = plus({"play", file("soft.WAV")}, options);
        const std::string shown = run(arguments, silent(true, "x")).output;
        EXPECT_PRED2(holds, shown, "[" + std::string(marks, '#'));
        EXPECT_FALSE(holds(shown, std::string(marks + 3, '#'))) << shown;
    }
}

TEST_F(PlayList, PlaysWhatIsFoundAfterTheFiles) {
    const ProgramResult found = run({"play", file("short.WAV"), "-c", "status = ROH", "--not", "-c",
                                     "author contains Zeh", "--root", root(), "--sort", "author"},
                                    silent(true, "q"));
    EXPECT_PRED2(holds, found.output, "1 of 2");
    EXPECT_PRED2(holds, found.output, "2 of 2");
    EXPECT_PRED2(holds, found.output, "Öztürk");
    EXPECT_FALSE(holds(found.output, "knee"));

    const std::tuple<Texts, int, std::string> cases[] = {
        {{file("short.WAV"), file("short.WAV")}, 0, ""},
        {{"--from=-0:01", "--to=+0:01", file("short.WAV")}, 0, ""},
        {{"-c", "author is Nobody", "--root", root()}, 1, ""},
        {{"-c", "author is Nobody", "--root", root(), file("short.WAV")}, 0, ""},
        {{"--root", file("gone")}, 3, "gone"},
        {{file("text.WAV"), file("short.WAV")}, 3, "ovsearch: " + file("text.WAV") + ": "},
        {{file("gone.WAV")}, 3, "Cannot find the specified file"},
        {{"--from=0:01", file("short.WAV")}, 3, "nothing between --from and --to"},
        {{"--loop", file("empty.WAV")}, 0, ""},
        {{"--device=nothing of that kind", file("short.WAV")}, 3, "there is no output"},
        {{}, 2, "FILE or a criterion is missing"},
        {{"-c", "auther is Zeh"}, 2, "author"},
        {{"--speed=40", zeh_}, 2, "from 50 to 200"},
        {{"--boost=301", zeh_}, 2, "from 100 to 300"},
        {{"--from=1m", zeh_}, 2, "\"1m\" is no time"},
        {{""}, 2, "must not be empty"}};
    for (const auto& [arguments, code, message] : cases)
        expectRefused(plus({"play"}, arguments), code, message, silent());
    EXPECT_EQ(run({"play", file("short.WAV")}, silent()).errors, "");
    const ProgramResult bad = run({"play", "--loop", file("text.WAV"), file("text.WAV")}, silent());
    EXPECT_EQ(bad.exitCode, 3);
    EXPECT_EQ(split(bad.errors, '\n').size(), 2U) << bad.errors;
    const ProgramRun noOutput{.environment = {{"SDL_AUDIODRIVER", "no such output"}}};
    expectRefused({"play", file("short.WAV")}, 3, file("short.WAV") + ": No wave device", noOutput);
}

using PlayCommand = PlayList;

TEST_F(PlayCommand, TellsThatTheFileCannotBeReadOn) {
    const tests::Environment noSound("SDL_AUDIODRIVER", "dummy");
    const tests::FailingReads bad(zeh_, tests::FailingReads::How::fail, 10000);
    tests::ScriptedMedia media;
    ::testing::internal::CaptureStderr();
    TerminalInterface terminal;
    EXPECT_EQ(ListPlayer({zeh_}, {}, terminal).play(), ExitCode::unreadable);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "ovsearch: " + zeh_ +
                  ": Cannot read the specified file. Make sure the file is still present, or check "
                  "your disk or network connection.\n");
    EXPECT_EQ(media.sent.at(2) + ", " + media.sent.at(4),
              "set Player output -1, play Player from 0 to 100000");
}

// In a shell that tells afterwards how the terminal was left.
TEST_F(PlayCommand, ShowsPositionAndEndsAsAskedFor) {
    const std::string script =
        "ulimit -c 0; before=$(stty -g); sh -c 'echo $$ >\"$2\"; exec \"$0\" play \"$1\"' \"$@\"; "
        "echo \"code $?\"; test \"$before\" = \"$(stty -g)\" && echo restored";
    // By what is no key.
    const std::map<std::string, int> signals = {{"x", SIGTERM}, {"X", SIGHUP}, {"z", SIGQUIT}};
    for (const auto& [key, code] : {std::pair("q", "code 0"),
                                    {"\x03", "code 130"},
                                    {"z", "code 131"},
                                    {"x", "code 143"},
                                    {"X", "code 129"}}) {
        ProgramRun how = silent(true, key);
        how.arguments = {"-c", script, "", OV_SEARCH_PROGRAM, zeh_, file("pid")};
        if (const auto known = signals.find(key); known != signals.end())
            how.steps = {{"0:00:00 / 0:01:40", [this, signal = known->second] {
                              kill(std::stoi(tests::readBytes(file("pid"))), signal);
                          }}};
        const ProgramResult result = tests::runProgram("/bin/sh", how);
        for (const char* text : {"0:00:00 / 0:01:40", code, "restored"})
            EXPECT_PRED2(holds, result.output, text);
    }
    ProgramRun how = silent(true, " ");
    how.typeAt = "0:00:01 / 0:01:40";
    how.interruptAt = "paused";
    EXPECT_EQ(run({"play", zeh_}, how).exitCode, -SIGINT);
    // Who ignored Ctrl-C goes on doing so.
    how.interruptAt = "0:00:00 / 0:00:00";
    how.arguments = {"-c", "trap '' INT; exec \"$0\" play \"$1\"", OV_SEARCH_PROGRAM,
                     file("short.WAV")};
    const ProgramResult whole = tests::runProgram("/bin/sh", how);
    EXPECT_EQ(whole.exitCode, 0);
    EXPECT_FALSE(holds(whole.output, "#")) << "silence has no level";
}

} // namespace
} // namespace ov::cli
