// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

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
    // Frames that fill() is asked for at a time: 33 ms. The output holds about as much again. With
    // 20 ms sound drops out on a busy machine, with 40 ms the output asks for two chunks before it
    // is heard, and the listener waits for 60 ms in place of 30; bench/sound.cpp measures both.
    static constexpr std::size_t chunkFrames(int rate) noexcept {
        constexpr int chunksPerSecond = 30;
        return static_cast<std::size_t>(rate / chunksPerSecond);
    }

    // From asking for a chunk until it is heard, as good as one can know, in nanoseconds: the
    // chunk that is being heard while the next one is asked for.
    static constexpr std::int64_t latency(int rate) noexcept {
        return static_cast<std::int64_t>(chunkFrames(rate)) * 1'000'000'000 / rate;
    }

    // Waits until what was filled has been heard or the device is gone; fill() is not called any
    // more after that.
    virtual ~WaveOutput() = default;

    // The device has vanished; what is filled is heard by nobody.
    virtual bool lost() const noexcept = 0;
};

} // namespace ov::sound
