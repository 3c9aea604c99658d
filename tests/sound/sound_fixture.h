// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/modMultimedia.h"
#include "sound/wave_control.h"
#include "tests/sound_server.h"
#include "tests/sound_signal.h"
#include "tests/wave_files.h"

#include <gtest/gtest.h>

#include <functional>

// A dictation that is played into a sound server and recorded.

namespace ov::modMultimedia {

using tests::WaveKind;
using Samples = std::vector<float>;

constexpr std::size_t perSecond = tests::SoundServer::rate;
constexpr const char* alias = "PBWave";

// Skipped where no server can be started. `Base` is a fixture, of windows or of none.
template <typename Base>
class SoundTest : public Base {
protected:
    void SetUp() override {
        server_.emplace();
        if (!server_->isRunning())
            GTEST_SKIP() << "no sound server can be started";
        recorder_.emplace();
    }
    void TearDown() override {
        MciCloseAll();
        sound::WaveControl::instance().setShape({});
        waitUntil([] { return sound::WaveControl::instance().peak() == 0; }); // the next one asks
    }

    void open(const WaveKind& kind, const Samples& samples) {
        tests::writeWave(sounds_.native("a dictation.WAV"), kind, samples);
        MciClose(alias);
        ASSERT_EQ(MciOpen(alias, sounds_.path("a dictation.WAV"), "waveaudio"), "");
    }
    // A tone whose height tells the place.
    void openRising(const WaveKind& kind, double seconds) {
        open(kind, tests::tone(lowest, 0.7, seconds, kind.channels, kind.rate, rises));
    }

    static void waitUntil(const std::function<bool()>& state) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!state()) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "the state never comes";
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    static void waitForPosition(std::int32_t milliseconds) {
        waitUntil([=] { return MciGetPosition(alias) >= milliseconds; });
    }
    // A fifth of a second of silence was recorded from now on.
    void waitForSilence() {
        const std::size_t start = recorder_->count();
        waitUntil([this, start] {
            const std::size_t end = recorder_->count();
            if (end < start + perSecond / 5)
                return false;
            const Samples recent = recorder_->samples(end - perSecond / 5, end);
            return tests::startOfSound(recent) == recent.size();
        });
    }
    void playToEnd() {
        waitUntil([] { return MciGetMode(alias) != "playing"; });
        waitForSilence();
    }
    Samples recordedSince(std::size_t start) const {
        return recorder_->samples(start, recorder_->count());
    }

    // Whether it is what lies in the file from there to there, in milliseconds. A machine that is
    // busy makes gaps and loses some sound: most pieces of what is between must be heard, each
    // behind the one before.
    static void expectHeard(const Samples& heard, std::int32_t from, std::int32_t to) {
        constexpr double length = 40;
        constexpr std::size_t size = perSecond / 25;
        std::vector<double> places;
        double next = from;
        for (auto rest : tests::soundsOf(heard, perSecond / 200)) {
            rest = rest.subspan(std::min(rest.size(), perSecond / 200)); // a start may ring
            for (; rest.size() >= size; rest = rest.subspan(size)) {
                const double middle =
                    (tests::frequencyOf(rest.first(size), perSecond) - lowest) / rises * 1000;
                const double place = middle - length / 2;
                if (place < next - 100 || place > next + 1000)
                    continue;
                places.push_back(place);
                next = place + length;
            }
        }
        ASSERT_FALSE(places.empty());
        EXPECT_NEAR(places.front(), from, 100);
        EXPECT_NEAR(next, to, 100);
        EXPECT_GT(static_cast<double>(places.size()) * length, 0.75 * (to - from));
    }

    static constexpr double lowest = 300; // what openRising() begins with
    static constexpr double rises = 300;  // by so many Hz a second
    tests::TemporaryStore sounds_;
    std::optional<tests::SoundServer> server_;
    std::optional<tests::Recorder> recorder_;
};

using Sound = SoundTest<::testing::Test>;

} // namespace ov::modMultimedia
