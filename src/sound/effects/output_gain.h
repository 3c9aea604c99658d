// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <span>

// Volume and all that makes sound louder, with a limiter that looks one chunk ahead: no delay, and
// no sample that it raised goes over a decibel below full scale. Gain changes in straight lines
// over a chunk, so that nothing clicks. Used by one thread; never allocates.

namespace ov::sound {

float largestMagnitude(std::span<const float> samples) noexcept;

class OutputGain {
public:
    // Nothing was heard before: this gain at once.
    void startAt(float gain) noexcept;

    // `samples` by `gain` in place, both linear. `peak` is the largest magnitude in samples,
    // `nextPeak` that of the chunk which follows, 0 when that is not known.
    // Returns the new sample of the largest magnitude.
    float apply(std::span<float> samples, float gain, float peak, float nextPeak) noexcept;

private:
    float gain_ = 1;  // at the end of the last chunk
    float limit_ = 1; // the limiter's part of it
};

} // namespace ov::sound
