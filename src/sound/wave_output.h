// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

// The sound output of the desktop, whatever it is.

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
    // Frames that fill() is asked for at a time: 33 ms. The output holds about as much again. With
    // 20 ms sound drops out on a busy machine, with 40 ms the output asks for two chunks before it
    // is heard, and the listener waits for 60 ms in place of 30; bench/sound.cpp measures both.
    static std::size_t chunkFrames(int rate) noexcept;

    // From asking for a chunk until it is heard, as good as one can know, in nanoseconds.
    static std::int64_t latency(int rate) noexcept;

    // Outputs there are. May take a moment when the desktop's sound service is slow.
    static int count();

    // Opens output number `device`, -1 the usual one, and starts to fill it. Nothing when it
    // cannot be opened, which it may find out only after a second when another output of ours is
    // in use. `source` must live longer.
    static std::unique_ptr<WaveOutput> open(int rate, int channels, int device, WaveSource& source);

    // At the end of a thread that has opened or closed an output.
    static void leaveThread() noexcept;

    // Waits until what was filled has been heard or the device is gone; fill() is not called any
    // more after that.
    virtual ~WaveOutput() = default;

    // The device has vanished; what is filled is heard by nobody.
    virtual bool lost() const noexcept = 0;
};

} // namespace ov::sound
