// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is really heard when a pedal goes down and comes up: a player with its window plays into a
// sound server that is recorded. Skipped where no server can be started.

#include "tests/playback/panel/pedal/pedals_fixture.h"
#include "tests/playback/panel/player_fixture.h"
#include "tests/sound/sound_fixture.h"

namespace ov {
namespace {

using modMultimedia::perSecond;

class PedalSound : public modMultimedia::SoundTest<WindowTest> {
protected:
    void SetUp() override {
        SoundTest::SetUp();
        if (IsSkipped())
            return;
        const WaveKind kind{SF_FORMAT_PCM_16, 16000};
        write(kind, rising(kind, 20));
        panel_.emplace(nullptr);
        panel_->setSelection([this] { return SoundTest::path(); });
        panel_->createMixer();
        panel_->PlayerInitControls();
        panel_->show();
        pedals_.desk->setAssignments(PedalAssignments("5;1234:abcd 30=1"));
        pedals_.plugIn();
    }
    // The output must not outlive its server: other tests want another one.
    void TearDown() override {
        panel_.reset();
        SoundTest::TearDown();
        const char* isClosed = "test -z \"$(pactl list short sink-inputs)\"";
        waitUntil([&] { return !server_->isRunning() || std::system(isClosed) == 0; });
    }
    void passTime() override { QTest::qWait(1); }

    // Until something is heard of what comes from there on; where in the file its first 40 ms lie.
    double placeHeard(std::size_t start) {
        std::vector<float> heard;
        std::size_t begin = 0;
        waitUntil([&] {
            heard = recordedSince(start);
            begin = startOfSound(heard) + perSecond / 100; // a start may ring
            return heard.size() > begin + perSecond / 25;
        });
        return placeOf(std::span(heard).subspan(begin, perSecond / 25));
    }

    FakePedals pedals_;
    std::optional<PlayerPanel> panel_;
};

TEST_F(PedalSound, IsHeardWhileThePedalIsHeld) {
    double rest = 0;
    for (const bool isPulledOut : {false, true, false}) {
        SCOPED_TRACE(rest);
        const std::size_t start = recorder_->count();
        pedals_.down(KEY_A);
        EXPECT_NEAR(placeHeard(start), rest, 100) << "from where it was left";
        waitUntil([&] { return recorder_->count() > start + 3 * perSecond / 2; });
        if (isPulledOut)
            pedals_.inputs.pullOut("event3");
        else
            pedals_.up(KEY_A);
        waitForSilence();
        const double before = std::exchange(rest, modMultimedia::MciGetPosition("PBWave"));
        EXPECT_GT(rest, before + 500);
        if (isPulledOut)
            pedals_.plugIn();
    }
}

} // namespace
} // namespace ov
