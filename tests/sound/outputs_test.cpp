// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Which of two outputs hears it. Skipped where no sound server can be started.

#include "sound/output/output_choice.h"
#include "tests/run_program.h"
#include "tests/sound/sound_fixture.h"

namespace ov::sound {
namespace {

using namespace modMultimedia;

class SoundOutputs : public Sound {
protected:
    void SetUp() override {
        Sound::SetUp();
        if (IsSkipped())
            return;
        plugIn();
        openTone();
    }
    void TearDown() override {
        Sound::TearDown();
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
    void openTone() { open({}, tests::tone(440, 0.5, seconds)); }
    // Of sound, in all that was recorded.
    static double heard(const tests::Recorder& recorder) {
        double all = 0;
        const std::vector<float> samples = recorder.samples(0, recorder.count());
        for (const auto piece : tests::soundsOf(samples, perSecond / 200))
            all += static_cast<double>(piece.size()) / perSecond;
        return all;
    }

    static constexpr int seconds = 4;
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
    recorder_->waitForMore(perSecond / 2);
    EXPECT_NEAR(heard(*elsewhere_), (movedBack - moved) / 1000.0, 0.25);
    EXPECT_NEAR(heard(*recorder_) + heard(*elsewhere_), seconds, 0.3) << "all of it, once";
}

TEST_F(SoundOutputs, AreReplacedWhileTheyAreGone) {
    OutputChoice& choice = OutputChoice::instance();
    choice.choose("Elsewhere");
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    waitForPosition(500);
    EXPECT_EQ(choice.missing(), "");
    EXPECT_EQ(heard(*recorder_), 0);
    pullOut();
    waitUntil([] { return MciGetMode(alias) == "ERROR"; });
    ASSERT_EQ(MciPlay(alias, -1, -1, -1), "");
    EXPECT_EQ(choice.missing(), "Elsewhere");
    waitForPosition(seconds * 500);
    EXPECT_GT(heard(*recorder_), 0.3);

    plugIn();
    openTone();
    const double before = heard(*recorder_);
    ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
    EXPECT_EQ(choice.missing(), "");
    waitForPosition(1000);
    EXPECT_GT(heard(*elsewhere_), 0.5);
    EXPECT_NEAR(heard(*recorder_), before, 0.3) << "what was still on its way";
}

TEST_F(SoundOutputs, AreNamedInTheTerminal) {
    const auto run = [](const std::vector<std::string>& arguments) {
        return tests::runProgram(OV_SEARCH_PROGRAM, {.arguments = arguments});
    };
    EXPECT_PRED2(tests::holds, run({"devices", "--format=jsonl"}).output, R"("name":"Elsewhere"})");
    const std::string table = run({"devices"}).output;
    EXPECT_TRUE(table.starts_with("NUMBER  NAME\n1       ")) << table;
    EXPECT_PRED2(tests::holds, table, "  Elsewhere\n");
    const tests::ProgramResult played =
        run({"play", "--to", "1", "--device", "else", sounds_.native("a dictation.WAV")});
    EXPECT_EQ(played.exitCode, 0) << played.errors;
    EXPECT_NEAR(heard(*elsewhere_), 1, 0.2);
    EXPECT_EQ(heard(*recorder_), 0);
}

} // namespace
} // namespace ov::sound
