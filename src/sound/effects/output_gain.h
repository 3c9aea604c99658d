// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <span>

// Volume and all that makes sound louder, with a limiter that looks one chunk ahead: no delay, and
// nothing that it raised goes over a decibel below full scale. Gain changes in straight lines
// over a chunk, so that nothing clicks. Used by one thread; never allocates.

namespace ov::sound {

float largestMagnitude(std::span<const float> samples) noexcept;

// The largest magnitudes of a chunk.
struct ChunkPeaks {
    float ofSamples = 0;
    float between = 0; // of the curve through them, which outputs of other rates play
};

class OutputGain {
public:
    // Nothing was heard before: this gain at once.
    void startAt(float gain) noexcept;

    // `samples` by `gain` in place, both linear. `peaks` are theirs, `next` those of the chunk
    // which follows, 0 when that is not known. Returns the new sample of the largest magnitude.
    float apply(std::span<float> samples, float gain, const ChunkPeaks& peaks,
                const ChunkPeaks& next) noexcept;

private:
    float gain_ = 1;  // at the end of the last chunk
    float limit_ = 1; // the limiter's part of it
};

} // namespace ov::sound
