// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/sound_server.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <span>
#include <stop_token>
#include <thread>
#include <utility>
#include <vector>

// What comes out of the sound server, and when; times in milliseconds.

namespace ov::bench {

using Clock = std::chrono::steady_clock;
using Samples = std::vector<float>;

constexpr std::size_t perSecond = tests::SoundServer::rate;

constexpr int twoHours = 7200; // in seconds: as long as the longest dictations

double milliseconds(Clock::duration time);

template <typename Work>
double timed(Work work) {
    const auto start = Clock::now();
    work();
    return milliseconds(Clock::now() - start);
}

void pause(int time);

// Knows when each sample came.
class Recorder : public tests::Recorder {
public:
    Recorder() : thread_([this](const std::stop_token& stop) { watch(stop); }) {}

    // As long as that sample has come.
    Clock::time_point arrival(std::size_t sample) const {
        for (;; std::this_thread::sleep_for(std::chrono::milliseconds(1))) {
            const std::lock_guard<std::mutex> lock(mutex_);
            const auto found =
                std::find_if(arrivals_.begin(), arrivals_.end(),
                             [&](const auto& entry) { return entry.first > sample; });
            if (found != arrivals_.end())
                return found->second;
        }
    }

private:
    void watch(const std::stop_token& stop) {
        for (std::size_t last = 0; !stop.stop_requested();) {
            if (const std::size_t now = count(); now > last) {
                const std::lock_guard<std::mutex> lock(mutex_);
                arrivals_.emplace_back(last = now, Clock::now());
            }
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    }

    mutable std::mutex mutex_; // guards arrivals
    std::vector<std::pair<std::size_t, Clock::time_point>> arrivals_;
    std::jthread thread_;
};

// Of several measurements of the same thing.
struct Figures {
    std::vector<double> values;
    void print(const char* name, const char* limit) {
        std::sort(values.begin(), values.end());
        std::printf("%-34s median %6.1f  worst %6.1f ms   (%s)\n", name, values[values.size() / 2],
                    values.back(), limit);
    }
};

std::size_t waitForSound(const Recorder& recorder, std::size_t from);
// The sample after the last that is no silence, once a tenth of a second of it has come.
std::size_t waitForSilence(const Recorder& recorder, std::size_t from);

// Straight lines between samples; good enough for what lies far below the file's rate.
std::vector<float> resampled(const std::vector<float>& samples, int from, int to);

struct Match {
    std::size_t place = 0;
    double correlation = 0;
};

// Where `piece` lies best in `whole`, looked for from `first` to `last`.
Match findPiece(std::span<const float> piece, std::span<const float> whole, std::size_t first,
                std::size_t last);

} // namespace ov::bench
