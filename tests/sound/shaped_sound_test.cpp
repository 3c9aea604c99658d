// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What is heard of sound that is boosted, or that lacks its pauses.

#include "tests/sound/sound_fixture.h"

#include <random>

namespace ov::modMultimedia {
namespace {

// Speech with a peak in it, three times as loud.
TEST_F(Sound, IsBoostedWithoutClipping) {
    const Samples soft = tests::tone(440, 0.1, 1);
    const Samples peak = tests::tone(440, 0.9, 0.5);
    const auto boosted = [this](const Samples& samples) {
        open({}, samples);
        sound::WaveControl::instance().setShape({300, false, false, false});
        const std::size_t start = recorder_->count();
        EXPECT_EQ(MciPlay(alias, -1, 0, -1), "");
        playToEnd();
        return recordedSince(start);
    };
    std::mt19937 random{1};
    std::uniform_real_distribution<float> values(-0.5F, 0.5F);
    Samples noise(4000);
    std::generate(noise.begin(), noise.end(), [&] { return values(random); });
    Samples clipped = tests::tone(1300, 3, 0.5);
    for (float& sample : clipped)
        sample = std::clamp(sample, -1.0F, 1.0F);
    for (const float sample : boosted(tests::joined({noise, clipped})))
        ASSERT_LT(std::fabs(sample), 1) << "between the file's samples";

    const Samples heard = boosted(tests::joined({soft, peak, soft, peak}));
    const auto [least, most] = std::minmax_element(heard.begin(), heard.end());
    EXPECT_NEAR(*most, 0.89, 0.03);
    EXPECT_NEAR(*least, -0.89, 0.03);
    // A clipped sine is flat on top.
    EXPECT_LT(std::count_if(heard.begin(), heard.end(), [](float s) { return s > 0.885; }),
              static_cast<std::ptrdiff_t>(heard.size() / 12));
    std::size_t tripled = 0;
    for (std::size_t i = 0; i + perSecond / 100 < heard.size(); i += perSecond / 100) {
        const auto piece = std::span(heard).subspan(i, perSecond / 100);
        tripled +=
            std::fabs(*std::max_element(piece.begin(), piece.end()) - 0.3F) < 0.02F ? 1U : 0U;
    }
    EXPECT_GT(tripled, 80U) << "what is soft is three times as loud";
}

TEST_F(Sound, SkipsSilenceAndKnowsWhereItIs) {
    const Samples voice = tests::tone(440, 0.5, 1);
    for (const int tempo : {100, 150}) {
        SCOPED_TRACE(tempo);
        open({}, tests::joined({voice, Samples(8000 * 4), voice}));
        ASSERT_EQ(MciCommand("set PBWave tempo " + std::to_string(tempo)), "");
        sound::WaveControl::instance().setShape({100, false, false, true});
        const std::size_t start = recorder_->count();
        ASSERT_EQ(MciPlay(alias, -1, 0, -1), "");
        waitForPosition(5000); // the second voice is heard
        playToEnd();
        EXPECT_EQ(MciGetPosition(alias), 6000);
        const Samples heard = recordedSince(start);
        const auto voices = tests::soundsOf(heard, perSecond / 10);
        ASSERT_EQ(voices.size(), 2U);
        const double pause = static_cast<double>(voices[1].data() - voices[0].data()) / perSecond -
                             static_cast<double>(voices[0].size()) / perSecond;
        EXPECT_NEAR(pause * tempo / 100, 0.35, 0.1);
    }
}

} // namespace
} // namespace ov::modMultimedia
