// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/effects/output_gain.h"
#include "sound/wave_feeder.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

// Sound that is decoded and waits to be played. One thread writes, one reads, neither waits.

namespace ov::sound {

struct WaveBlock {
    std::uint64_t run = 0; // which play it belongs to
    WaveFeeder::Piece piece;
    std::vector<float> samples; // of piece.frames, then whatever was there
    ChunkPeaks peaks;
    float gain = 1; // by which they are as loud as everything else
};

class WaveRing {
public:
    explicit WaveRing(std::size_t samplesPerBlock) {
        for (WaveBlock& block : blocks_)
            block.samples.resize(samplesPerBlock);
    }

    static constexpr std::size_t size() noexcept { return count; }

    // The block to write next, nullptr unless more than `reserve` are free; commit() hands it over.
    WaveBlock* writable(std::size_t reserve = 0) noexcept {
        const std::size_t end = end_.load(std::memory_order_relaxed);
        const std::size_t used = end - begin_.load(std::memory_order_acquire);
        return used + reserve >= count ? nullptr : &blocks_[end % count];
    }
    void commit() noexcept { end_.fetch_add(1, std::memory_order_release); }

    // The block to read next, or the one `ahead` of it, nullptr while there is none; release()
    // gives it back.
    const WaveBlock* readable(std::size_t ahead = 0) const noexcept {
        const std::size_t begin = begin_.load(std::memory_order_relaxed);
        const std::size_t there = end_.load(std::memory_order_acquire) - begin;
        return ahead < there ? &blocks_[(begin + ahead) % count] : nullptr;
    }
    void release() noexcept { begin_.fetch_add(1, std::memory_order_release); }

private:
    static constexpr std::size_t count = 32; // more than a second

    std::array<WaveBlock, count> blocks_;
    std::atomic<std::size_t> begin_{0};
    std::atomic<std::size_t> end_{0};
};

} // namespace ov::sound
