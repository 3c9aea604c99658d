// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

// Shortens long pauses of what is read from a file, and knows which frame of the file each frame
// is that is heard. Used by one thread.

namespace ov::sound {

class SilenceSkipper {
public:
    SilenceSkipper(int rate, int channels);

    // What comes begins with this frame of the file; heard frames are counted from it on.
    void start(double frame);
    // From now on; nothing is skipped at first.
    void setSkips(bool skips) noexcept { skips_ = skips; }

    // Takes what follows in the file, interleaved.
    void put(std::span<const float> samples);
    // Nothing follows.
    void finish();

    // Frames that can be taken.
    std::size_t ready() const noexcept { return ready_.size() / channels_; }
    std::size_t take(std::span<float> samples);

    // One more than the last frame that is heard, of all that were put.
    double heardEnd() const noexcept { return heardEnd_; }
    // Of the file, for a heard frame that is not before the one asked for last.
    double placeOf(double heard);

private:
    using Slice = std::vector<float>;
    struct Join { // from here on
        double heard = 0;
        double place = 0;
    };

    void putSlice(std::span<const float> slice);
    bool isSilent(std::span<const float> slice) noexcept;
    void hear(std::span<const float> slice);
    void hearHeld();
    double framesOf(std::span<const float> slice) const noexcept {
        return static_cast<double>(slice.size() / channels_);
    }

    std::size_t channels_;
    std::size_t sliceSamples_;
    bool skips_ = false;
    float floor_; // how loud the least is
    std::size_t silentSlices_ = 0;
    Slice begun_;            // of which not all is there yet
    std::deque<Slice> held_; // the end of a pause
    std::vector<float> ready_;
    std::deque<Join> joins_;
    double heardEnd_ = 0;
    double place_ = 0; // of the file: the next frame to hear
};

} // namespace ov::sound
