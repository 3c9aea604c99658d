// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/threads/this_thread.h"

#include <cstddef>
#include <cstdint>
#include <span>

// The sound output of the desktop, whatever it is. SoundLibraries opens one.

namespace ov::sound {

// Fills buffers from a thread of the output's own.
class WaveSource {
public:
    virtual ~WaveSource() = default;

    // Interleaved, full scale is 1; zeros are silence. Must not wait.
    virtual void fill(std::span<float> samples) noexcept = 0;
};

class WaveOutput {
public:
    // Frames that fill() is asked for at a time. The output holds as much again, sometimes twice,
    // and a foot that leaves its pedal should hear silence within 50 ms: 26 ms. Where our thread
    // cannot go before others that drops out on a busy machine: 33 ms there. With 40 ms the output
    // always asks for two chunks before the first is heard. bench/sound/device.cpp and
    // bench/sound/pedal.cpp measure all of this.
    static std::size_t chunkFrames(int rate) noexcept {
        static const int chunksPerSecond = platform::mayStepForward() ? 38 : 30;
        return static_cast<std::size_t>(rate / chunksPerSecond);
    }

    // From asking for a chunk until it is heard, as good as one can know, in nanoseconds: the
    // chunk that is being heard while the next one is asked for.
    static std::int64_t latency(int rate) noexcept {
        return static_cast<std::int64_t>(chunkFrames(rate)) * 1'000'000'000 / rate;
    }

    // Waits until what was filled has been heard or the device is gone; fill() is not called any
    // more after that.
    virtual ~WaveOutput() = default;

    // The device has vanished; what is filled is heard by nobody.
    virtual bool lost() const noexcept = 0;
    // Another one is wanted by now.
    virtual bool isOutdated() const noexcept { return false; }
};

} // namespace ov::sound
