// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is really heard when a pedal goes down and comes up: a player with its window plays into a
// sound server that is recorded. Skipped where no server can be started.

#include "tests/playback/panel/pedal/pedals_fixture.h"
#include "tests/playback/panel/player_fixture.h"
#include "tests/sound_server.h"
#include "tests/sound_signal.h"

namespace ov {
namespace {

constexpr std::size_t perSecond = SoundServer::rate;
constexpr double lowest = 300; // Hz, and by so many more a second: the height tells the place
constexpr int rate = 16000;

class PedalSound : public WindowTest {
protected:
    void SetUp() override {
        server_.emplace();
        if (!server_->isRunning())
            GTEST_SKIP() << "no sound server can be started";
        recorder_.emplace();
        std::vector<float> tone;
        for (int i = 0; i < 20 * rate; ++i) {
            const double time = static_cast<double>(i) / rate;
            tone.push_back(
                static_cast<float>(0.7 * std::sin(2 * M_PI * lowest * (1 + time / 2) * time)));
        }
        writeWave(store.native("one.WAV"), {SF_FORMAT_PCM_16, rate}, tone);
        panel_.emplace(nullptr);
        panel_->setSelection([this] { return store.path("one.WAV"); });
        panel_->createMixer();
        panel_->PlayerInitControls();
        panel_->show();
        pedals_.desk->setAssignments(PedalAssignments("5;1234:abcd 30=1"));
        pedals_.plugIn();
    }
    // The output must not outlive its server: other tests want another one.
    void TearDown() override {
        panel_.reset();
        modMultimedia::MciCloseAll();
        const char* isClosed = "test -z \"$(pactl list short sink-inputs)\"";
        while (server_->isRunning() && std::system(isClosed) != 0)
            QTest::qWait(10);
    }

    void waitForRecorded(double seconds) {
        const std::size_t end =
            recorder_->count() + static_cast<std::size_t>(seconds * static_cast<double>(perSecond));
        EXPECT_TRUE(QTest::qWaitFor([&] { return recorder_->count() >= end; }, 60000));
    }
    bool isSilentSince(std::size_t start) {
        const auto heard = recorder_->samples(start, recorder_->count());
        return startOfSound(heard) == heard.size();
    }
    // Until something is heard of what comes from there on; where in the file its first 40 ms lie,
    // in seconds.
    double placeHeard(std::size_t start) {
        std::vector<float> heard;
        std::size_t begin = 0;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                heard = recorder_->samples(start, recorder_->count());
                begin = startOfSound(heard) + perSecond / 100; // a start may ring
                return heard.size() > begin + perSecond / 25;
            },
            60000));
        const auto piece = std::span(heard).subspan(begin, perSecond / 25);
        return frequencyOf(piece, static_cast<double>(perSecond)) / lowest - 1 - 0.03;
    }
    void waitForSilence() {
        std::size_t start = recorder_->count();
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                if (!isSilentSince(start))
                    start = recorder_->count();
                return recorder_->count() > start + perSecond / 5;
            },
            60000));
    }

    std::optional<SoundServer> server_;
    std::optional<Recorder> recorder_;
    FakePedals pedals_;
    std::optional<PlayerPanel> panel_;
};

TEST_F(PedalSound, IsHeardWhileThePedalIsHeld) {
    std::size_t start = recorder_->count();
    pedals_.down(KEY_A);
    EXPECT_NEAR(placeHeard(start), 0, 0.1);
    waitForRecorded(1.5);
    pedals_.up(KEY_A);
    waitForSilence();
    const double rest = modMultimedia::MciGetPosition("PBWave") / 1000.0;
    EXPECT_GT(rest, 1);
    start = recorder_->count();
    pedals_.down(KEY_A);
    EXPECT_NEAR(placeHeard(start), rest, 0.1) << "from where it was left";
    pedals_.inputs.pullOut("event3");
    waitForSilence();
    PlayerChoices choices = panel_->choices();
    choices.backUpSeconds = 1;
    panel_->setChoices(choices);
    pedals_.plugIn();
    pedals_.down(KEY_A);
    waitForRecorded(1);
    pedals_.up(KEY_A);
    waitForSilence();
    const double backedUp = modMultimedia::MciGetPosition("PBWave") / 1000.0;
    start = recorder_->count();
    pedals_.down(KEY_A);
    EXPECT_NEAR(placeHeard(start), backedUp, 0.1);
    pedals_.up(KEY_A);
}

} // namespace
} // namespace ov
