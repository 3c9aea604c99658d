// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "bench/sound/recording.h"

#include "tests/sound_signal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace ov::bench {

double milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

void pause(int time) {
    std::this_thread::sleep_for(std::chrono::milliseconds(time));
}

std::size_t waitForSound(const Recorder& recorder, std::size_t from) {
    for (;;) {
        const Samples heard = recorder.samples(from, recorder.count());
        const std::size_t found = tests::startOfSound(heard);
        if (found < heard.size())
            return from + found;
        pause(1);
    }
}

std::size_t waitForSilence(const Recorder& recorder, std::size_t from) {
    for (;;) {
        const Samples heard = recorder.samples(from, recorder.count());
        std::size_t last = heard.size();
        while (last > 0 && std::fabs(heard[last - 1]) < 1e-3F)
            --last;
        if (heard.size() > last + perSecond / 10)
            return from + last;
        pause(1);
    }
}

std::vector<float> resampled(const std::vector<float>& samples, int from, int to) {
    std::vector<float> result;
    for (std::size_t i = 0;; ++i) {
        const double place = static_cast<double>(i) * from / to;
        const auto left = static_cast<std::size_t>(place);
        if (left + 1 >= samples.size())
            return result;
        const auto part = static_cast<float>(place - static_cast<double>(left));
        result.push_back(samples[left] * (1 - part) + samples[left + 1] * part);
    }
}

Match findPiece(std::span<const float> piece, std::span<const float> whole, std::size_t first,
                std::size_t last) {
    Match best;
    for (std::size_t at = first; at <= last && at + piece.size() <= whole.size(); ++at) {
        // Coarse and quick, then exact where it looks promising.
        double both = 0;
        double ofPiece = 0;
        double there = 0;
        for (std::size_t i = 0; i < piece.size(); i += 16) {
            both += static_cast<double>(piece[i]) * whole[at + i];
            ofPiece += static_cast<double>(piece[i]) * piece[i];
            there += static_cast<double>(whole[at + i]) * whole[at + i];
        }
        if (both <= 0 || both * both < 0.5 * ofPiece * there)
            continue;
        const double found = tests::correlation(piece, whole.subspan(at, piece.size()));
        if (found > best.correlation)
            best = {at, found};
    }
    return best;
}

} // namespace ov::bench
