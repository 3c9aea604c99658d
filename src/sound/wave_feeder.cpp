// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/wave_feeder.h"

#include <algorithm>
#include <cmath>

namespace ov::sound {

namespace {

constexpr std::size_t inputFrames = 1024; // given to the stretcher at a time
constexpr std::size_t mostReads = 32;     // of a pause that is skipped, before somebody may stop it

} // namespace

WaveFeeder::WaveFeeder(WaveFile& file)
    : file_(file), skipper_(file.layout().rate, file.channels()) {}
WaveFeeder::~WaveFeeder() = default;

void WaveFeeder::start(double from, double to, int tempo) {
    const auto first = std::min(static_cast<std::int64_t>(std::llround(from)), file_.frames());
    const auto last = std::min(static_cast<std::int64_t>(std::llround(to)), file_.frames());
    failed_ = !file_.seek(first);
    left_ = failed_ ? 0 : std::max<std::int64_t>(last - first, 0);
    // Beyond what is there the place is kept.
    position_ = first < file_.frames() ? static_cast<double>(first) : from;
    end_ = left_ > 0 ? std::min(to, static_cast<double>(last)) : position_;
    heard_ = position_;
    skipper_.start(position_);
    tempo_ = tempo;
    flushed_ = false;
    if (tempo == usualTempo)
        return;
    stretcher_ = soundLibraries().stretch(file_.layout().rate, file_.channels(), tempo);
}

WaveFeeder::Piece WaveFeeder::read(std::span<float> samples) {
    Piece piece;
    piece.from = position_;
    const std::size_t wanted = samples.size() / static_cast<std::size_t>(file_.channels());
    piece.frames = tempo_ == usualTempo ? readHeard(samples) : readStretched(samples);
    heard_ += static_cast<double>(piece.frames) * tempo_ / 100;
    position_ = std::min(end_, skipper_.placeOf(heard_));
    piece.last = left_ == 0 && (piece.frames < wanted || heard_ >= skipper_.heardEnd());
    if (piece.last && !failed_)
        position_ = end_;
    piece.to = position_;
    piece.failed = piece.last && failed_;
    return piece;
}

std::size_t WaveFeeder::readFile(std::span<float> samples) {
    const auto channels = static_cast<std::size_t>(file_.channels());
    const auto wanted = std::min(samples.size() / channels, static_cast<std::size_t>(left_));
    const std::size_t got = wanted == 0 ? 0 : file_.read(samples.first(wanted * channels));
    left_ -= static_cast<std::int64_t>(got);
    if (got < wanted) {
        left_ = 0;
        failed_ = failed_ || file_.failed();
        end_ = std::min(end_, std::max(position_, static_cast<double>(file_.frames())));
    }
    return got;
}

std::size_t WaveFeeder::readHeard(std::span<float> samples) {
    const auto channels = static_cast<std::size_t>(file_.channels());
    read_.resize(samples.size());
    std::size_t reads = mostReads;
    while (left_ > 0 && skipper_.ready() < samples.size() / channels && reads-- > 0)
        skipper_.put(std::span(read_).first(readFile(read_) * channels));
    if (left_ == 0)
        skipper_.finish();
    return skipper_.take(samples);
}

// False in a long pause.
bool WaveFeeder::feedStretcher() {
    input_.resize(inputFrames * static_cast<std::size_t>(file_.channels()));
    const std::size_t got = readHeard(input_);
    if (got > 0) {
        stretcher_->put(input_.data(), got);
    } else if (left_ == 0) {
        stretcher_->flush();
        flushed_ = true;
    }
    return got > 0 || flushed_;
}

std::size_t WaveFeeder::readStretched(std::span<float> samples) {
    const auto channels = static_cast<std::size_t>(file_.channels());
    std::size_t wanted = samples.size() / channels;
    while (!flushed_ && stretcher_->ready() < wanted)
        if (!feedStretcher())
            break;
    if (flushed_) { // it pads its end
        const double left = std::max(skipper_.heardEnd() - heard_, 0.0) * 100 / tempo_;
        wanted = std::min(wanted, static_cast<std::size_t>(std::ceil(left)));
    }
    return stretcher_->take(samples.data(), wanted);
}

} // namespace ov::sound
