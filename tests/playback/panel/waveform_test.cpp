// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/failing_reads.h"
#include "tests/playback/panel/player_fixture.h"

namespace ov {
namespace {

// The picture of the seek slider, which stands at the start, with the shape of the sound in it.
class Waveform : public Player {
protected:
    Waveform() {
        plain_ = picture();
        writeWave(store.native("two.WAV"), {}, std::vector<float>(800000, 0.9F));
    }
    QImage picture() { return seek().grab().toImage(); }
    // Loads it without a sound, and waits for a picture that is not one of these.
    QImage openAndSee(const char* name, const std::vector<QImage>& others) {
        panel_->PlayerStop();
        EXPECT_EQ(picture(), plain_);
        panel_->PlayerOpenFile(store.path(name));
        waitFor([&] { return std::count(others.begin(), others.end(), picture()) == 0; });
        return picture();
    }
    QImage plain_;
};

TEST_F(Waveform, IsThatOfTheFileAsItIsNow) {
    const QImage two = openAndSee("two.WAV", {plain_});
    const QImage one = openAndSee("one.WAV", {plain_, two});
    EXPECT_EQ(openAndSee("one.WAV", {plain_}), one);
    const std::string loud = readBytes(store.native("one.WAV"));
    store.add("one.WAV", readBytes(store.native("two.WAV")));
    EXPECT_EQ(openAndSee("one.WAV", {plain_}), two) << "of the same size, later";
    const auto time = fs::last_write_time(store.native("one.WAV"));
    store.add("one.WAV", loud.substr(0, loud.size() / 2));
    fs::last_write_time(store.native("one.WAV"), time);
    EXPECT_NE(openAndSee("one.WAV", {plain_}), two) << "of the same time, shorter";
}

TEST_F(Waveform, IsNotWaitedForWhenTheDiskStalls) {
    const QImage two = openAndSee("two.WAV", {plain_});
    const FailingReads stalled(store.native("one.WAV"), FailingReads::How::stall, 4 * 65536);
    panel_->PlayerStop();
    panel_->PlayerOpenFile(store.path("one.WAV"));
    FailingReads::waitUntilMet();
    EXPECT_EQ(openAndSee("two.WAV", {plain_}), two);
    panel_->PlayerOpenFile(store.path("one.WAV"));
    FailingReads::waitUntilMet();
    panel_ = nullptr;
    EXPECT_FALSE(FailingReads::keptSomebody());
}

} // namespace
} // namespace ov
