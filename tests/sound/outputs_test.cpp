// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Which of two outputs hears it. Skipped where no sound server can be started.

#include "playback/modMultimedia.h"
#include "sound/output/output_choice.h"
#include "tests/run_program.h"
#include "tests/sound_server.h"
#include "tests/sound_signal.h"
#include "tests/wave_files.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace ov::sound {
namespace {

using namespace modMultimedia;

constexpr const char* alias = "PBWave";

class SoundOutputs : public ::testing::Test {
protected:
    void SetUp() override {
        server_.emplace();
        if (!server_->isRunning())
            GTEST_SKIP() << "no sound server can be started";
        plugIn();
        nowhere_.emplace();
        std::vector<float> tone;
        for (int i = 0; i < seconds * 8000; ++i)
            tone.push_back(static_cast<float>(0.5 * std::sin(2 * M_PI * 440 * i / 8000)));
        tests::writeWave(store_.native("tone.WAV"), {}, tone);
        open();
    }
    void TearDown() override {
        MciCloseAll();
        OutputChoice::instance().choose({});
    }
    void plugIn() {
        ASSERT_TRUE(tests::SoundServer::plugIn("Elsewhere"));
        elsewhere_.emplace("elsewhere");
    }
    void pullOut() {
        elsewhere_.reset();
        ASSERT_TRUE(tests::SoundServer::pullOut());
    }
    void open() {
        MciClose(alias);
        ASSERT_EQ(MciOpen(alias, store_.path("tone.WAV"), "waveaudio"), "");
    }
    static void waitUntil(const std::function<bool()>& state) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!state() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        EXPECT_TRUE(state());
    }
    static void waitForPosition(std::int32_t milliseconds) {
        waitUntil([=] { return MciGetPosition(alias) >= milliseconds; });
    }
    // Of sound, in all that was recorded.
    static double heard(const tests::Recorder& recorder) {
        double all = 0;
        const std::vector<float> samples = recorder.samples(0, recorder.count());
        for (const auto piece : tests::soundsOf(samples, tests::SoundServer::rate / 200))
            all += static_cast<double>(piece.size()) / tests::SoundServer::rate;
        return all;
    }

    static constexpr int seconds = 4;
    tests::TemporaryStore store_;
    std::optional<tests::SoundServer> server_;
    std::optional<tests::Recorder> nowhere_;
    std::optional<tests::Recorder> elsewhere_;
};

TEST_F(SoundOutputs, AreChangedWhileItPlays) {
    const auto names = soundOutputNames();
    ASSERT_EQ(std::ranges::count(names, "Elsewhere"), 1);
    ASSERT_EQ(names.size(), 2);
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    waitForPosition(1000);
    const std::int32_t moved = MciGetPosition(alias);
    OutputChoice::instance().choose("Elsewhere");
    waitForPosition(2500);
    const std::int32_t movedBack = MciGetPosition(alias);
    OutputChoice::instance().choose({});
    waitUntil([] { return MciGetMode(alias) != "playing"; });
    EXPECT_EQ(MciGetPosition(alias), seconds * 1000) << "it went on to its end";
    nowhere_->waitForMore(tests::SoundServer::rate / 2);
    EXPECT_NEAR(heard(*elsewhere_), (movedBack - moved) / 1000.0, 0.25);
    EXPECT_NEAR(heard(*nowhere_) + heard(*elsewhere_), seconds, 0.3) << "all of it, once";
}

TEST_F(SoundOutputs, AreReplacedWhileTheyAreGone) {
    OutputChoice& choice = OutputChoice::instance();
    choice.choose("Elsewhere");
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    waitForPosition(500);
    EXPECT_EQ(choice.missing(), "");
    EXPECT_EQ(heard(*nowhere_), 0);
    pullOut();
    waitUntil([] { return MciGetMode(alias) == "ERROR"; });
    ASSERT_EQ(MciPlay(alias, -1, -1, -1), "");
    EXPECT_EQ(choice.missing(), "Elsewhere");
    waitForPosition(seconds * 500);
    EXPECT_GT(heard(*nowhere_), 0.3);

    plugIn();
    open();
    const double before = heard(*nowhere_);
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    EXPECT_EQ(choice.missing(), "");
    waitForPosition(1000);
    EXPECT_GT(heard(*elsewhere_), 0.5);
    EXPECT_NEAR(heard(*nowhere_), before, 0.3) << "what was still on its way";
}

TEST_F(SoundOutputs, AreNamedInTheTerminal) {
    tests::ProgramRun run;
    run.arguments = {"devices", "--format=jsonl"};
    const std::string listed = tests::runProgram(OV_SEARCH_PROGRAM, run).output;
    EXPECT_PRED2(tests::holds, listed, R"("name":"Elsewhere"})");
    run.arguments = {"devices"};
    EXPECT_PRED2(tests::holds, tests::runProgram(OV_SEARCH_PROGRAM, run).output, "  Elsewhere\n");
    run.arguments = {"play", "--to", "1", "--device", "else", store_.native("tone.WAV")};
    const tests::ProgramResult played = tests::runProgram(OV_SEARCH_PROGRAM, run);
    EXPECT_EQ(played.exitCode, 0) << played.errors;
    EXPECT_NEAR(heard(*elsewhere_), 1, 0.2);
    EXPECT_EQ(heard(*nowhere_), 0);
}

} // namespace
} // namespace ov::sound
