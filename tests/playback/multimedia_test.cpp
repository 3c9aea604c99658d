// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/modMultimedia.h"
#include "tests/environment.h"
#include "tests/scripted_media.h"
#include "tests/temporary_store.h"
#include "tests/wave_files.h"

#include <gtest/gtest.h>

// The command layer before the real device, which plays into an output that throws all away.

namespace ov::modMultimedia {
namespace {

using Commands = std::vector<std::string>;

constexpr const char* alias = "PBWave";

class Multimedia : public ::testing::Test {
protected:
    Multimedia() {
        tests::writeWave(store_.native("a long name.WAV"), {}, tests::sweep(8000, 160000));
    }
    void open() {
        ASSERT_EQ(MciOpen(alias, store_.path("a long name.WAV"), "waveaudio"), "");
        media_.takeSent();
    }

    const tests::Environment silent_{"SDL_AUDIODRIVER", "dummy"};
    tests::TemporaryStore store_;
    tests::ScriptedMedia media_;
};

TEST_F(Multimedia, DrivesADevice) {
    EXPECT_EQ(MciOpen(alias, store_.path("gone.WAV"), "waveaudio").substr(0, 30),
              "Cannot find the specified file");
    EXPECT_EQ(MciGetPosition(alias), -1);
    EXPECT_EQ(MciGetMode(alias), "ERROR");
    open();
    EXPECT_EQ(MciGetRate(alias), 1000);
    EXPECT_EQ(MciGetSpeed(alias), -1);
    EXPECT_EQ(MciSeek(alias, 7000), "");
    EXPECT_EQ(MciPlay(alias, 77, -1, -1), "") << "the output's refusal does not count";
    const std::string outOfRange =
        "The specified parameter is out of range for the specified command.";
    EXPECT_EQ(MciPlay(alias, -1, 20, 10), outOfRange);

    MciSeek(alias, 20000);
    MciPlay(alias, -1, -1, 1000);
    EXPECT_EQ(media_.takeSent().back(), "play PBWave from 0 to 1000") << "from the end, over";
    MciPlay(alias, -1, 5, -1);
    EXPECT_EQ(media_.takeSent().back(), "play PBWave from 5 to 20000");
    EXPECT_EQ(MciSeekAndPlay(alias, -1), outOfRange);
    EXPECT_EQ(media_.takeSent(), (Commands{"seek PBWave to -1"})) << "no play after a refusal";
    EXPECT_EQ(MciGetLengthMs(alias), 20000);
    EXPECT_EQ(media_.takeSent().back(), "set PBWave time format frames");
    media_.answers["set PBWave time format ms"].code = 261;
    EXPECT_EQ(MciGetLengthMs(alias), -1);
    EXPECT_EQ(media_.takeSent().size(), 1U) << "without milliseconds, nothing more";
    EXPECT_EQ(MciCloseAll(), "");
    EXPECT_NE(MciPlay(alias, -1, -1, -1), "");
    EXPECT_EQ(media_.sent.back(), "play PBWave from 0 to -1") << "what does not answer";
}

TEST_F(Multimedia, SendsFieldsAndUnderstandsOddAnswers) {
    media_.answers["status PBWave length"] = {0, " 12.5 ms"};
    EXPECT_EQ(MciGetLength(alias), 12) << "half goes to even";
    media_.answers["status PBWave length"] = {0, "none"};
    media_.answers["set PBWave time format ms"] = {};
    EXPECT_EQ(MciGetLength(alias), 0);
    EXPECT_EQ(MciGetRate(alias), -1);
    media_.answers["status PBWave length"] = {0, "1"};
    EXPECT_EQ(MciGetRate(alias), 1000);
    media_.answers["status PBWave mode"] = {0, "not ready"};
    EXPECT_EQ(MciGetMode(alias), "not ready");
    media_.answers["status PBWave mode"] = {0, "playing" + std::string(120, '.') + "y"};
    EXPECT_EQ(MciGetMode(alias), "pla") << "up to the character that the field ends in";
    media_.answers["hello"].code = 9999;
    EXPECT_EQ(MciCommand("hello"), "media error 9999");

    media_.fields.clear();
    for (const std::string& command : {std::string("a"), "ü" + std::string(130, 'x')})
        MciCommand(command);
    EXPECT_EQ(media_.fields, (Commands{"a" + std::string(127, ' '), "ü" + std::string(127, 'x')}));
    EXPECT_NE(MciOpen(alias, std::string(300, 'y'), "waveaudio"), "");
}

TEST_F(Multimedia, TracksOneAlias) {
    open();
    int window = 0;
    trackedAlias() = {alias, &window, 0, 0};
    MciPlay("Other", -1, 1, 2);
    MciPlay(alias, -1, 20000, 900);
    EXPECT_EQ(trackedAlias().from, 0);
    EXPECT_EQ(trackedAlias().to, 900);
    MciClose("Other");
    EXPECT_TRUE(media_.killedTimers.empty());
    MciClose(alias);
    MciClose(alias); // refused now
    EXPECT_EQ(media_.killedTimers, (std::vector<std::pair<void*, std::uint32_t>>{{&window, 999}}));
    trackedAlias() = {};
}

} // namespace
} // namespace ov::modMultimedia
