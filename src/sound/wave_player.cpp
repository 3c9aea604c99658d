// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/wave_player.h"

#include "sound/media.h"
#include "sound/output/output_choice.h"
#include "sound/sound_libraries.h"
#include "sound/wave_control.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace ov::sound {

namespace {

using namespace std::chrono_literals;

constexpr auto longestOpening = 1s;
constexpr auto watchInterval = 20ms; // far less than what is decoded ahead
constexpr auto startInterval = 2ms;  // while the ring is full of what nobody wants any more
constexpr std::int64_t idleLimit = 300'000'000; // others may want the output
constexpr std::size_t firstBlocks = 4;          // enough to start with
constexpr float fullScale = 32768;

} // namespace

WavePlayer::WavePlayer(std::unique_ptr<WaveFile> file)
    : layout_(file->layout()),
      channels_(file->channels()),
      chunkSamples_(WaveOutput::chunkFrames(layout_.rate) * static_cast<std::size_t>(channels_)),
      ring_(chunkSamples_),
      file_(std::move(file)),
      feeder_(*file_),
      highPass_(layout_.rate, channels_) {
    thread_ = std::thread([this] { work(); }); // which the system may refuse
    WaveControl::instance().add(timeline_);
}

WavePlayer::~WavePlayer() {
    finish();
    thread_.join();
    WaveControl::instance().remove(timeline_);
}

void WavePlayer::finish() {
    wanted_ = 0;
    const std::lock_guard<std::mutex> lock(mutex_);
    quit_ = true;
    interrupt_ = true;
    changed_.notify_all();
}

std::uint32_t WavePlayer::play(double from, double to) {
    rest_ = from;
    to_ = to;
    std::unique_lock<std::mutex> lock(mutex_);
    failure_ = media_error::none;
    wanted_ = ++run_;
    request_ = Request{run_, from, to, tempo_, device_};
    interrupt_ = true;
    changed_.notify_all();
    // One that is open plays, also while a slow disk keeps the other thread.
    const auto isOpen = [this] { return openDevice_ == device_; };
    changed_.wait_for(lock, longestOpening, [&] { return isOpen() || answered_ == run_; });
    if (isOpen())
        return media_error::none;
    wanted_ = 0;
    return media_error::noOutput;
}

double WavePlayer::halt() {
    if (wanted_.exchange(0) != 0)
        if (const auto entry = timeline_.newest(run_))
            rest_ = entry->to;
    return rest_;
}

bool WavePlayer::isPlaying() const noexcept {
    if (wanted_ == 0 || failure_ == media_error::hardware)
        return false;
    const auto entry = timeline_.newest(run_);
    return !entry || !entry->last || steadyNanoseconds() < entry->end();
}

double WavePlayer::position() const noexcept {
    if (wanted_ == 0)
        return rest_;
    const std::int64_t now = steadyNanoseconds();
    const auto entry = timeline_.heard(run_, now);
    return entry ? entry->at(now) : rest_;
}

std::uint32_t WavePlayer::failure() const noexcept {
    if (failure_ != media_error::none)
        return failure_;
    // What was decoded before is heard first.
    const auto entry = timeline_.newest(run_);
    return entry && entry->failed ? media_error::cannotRead : media_error::none;
}

void WavePlayer::setTempo(int tempo) {
    if (std::exchange(tempo_, tempo) != tempo && isPlaying())
        play(halt(), to_);
}

void WavePlayer::setOutput(int device) {
    device_ = device;
}

// The output's thread

void WavePlayer::fill(std::span<float> samples) noexcept {
    const WaveBlock* block = nextBlock(wanted_.load());
    const std::size_t count =
        block == nullptr ? 0 : block->piece.frames * static_cast<std::size_t>(channels_);
    if (count > 0)
        std::copy_n(block->samples.begin(), std::min(count, samples.size()), samples.begin());
    std::fill(samples.begin() + static_cast<std::ptrdiff_t>(std::min(count, samples.size())),
              samples.end(), 0.0F);
    const std::int32_t peak = applyGain(samples, block);
    if (block == nullptr)
        return;
    note(*block, peak);
    ring_.release();
}

const WaveBlock* WavePlayer::nextBlock(std::uint64_t run) noexcept {
    const WaveBlock* block = ring_.readable();
    while (block != nullptr && block->run != run) {
        ring_.release();
        block = ring_.readable();
    }
    return block;
}

std::int32_t WavePlayer::applyGain(std::span<float> samples, const WaveBlock* block) noexcept {
    const WaveControl& control = WaveControl::instance();
    const SoundShape shape = control.shape();
    const WaveBlock* next = ring_.readable(1);
    const float volume =
        muted_ ? 0 : static_cast<float>(control.volume()) / static_cast<float>(fullVolume);
    if (block != nullptr) // else one that comes late shall be as loud
        even_ = block->gain;
    const float even = shape.evensOut ? even_ : 1;
    const float gain = volume * even * static_cast<float>(shape.boost) / SoundShape::usualBoost;
    // Nothing was heard before that could click.
    if (block != nullptr && block->run != notedRun_)
        gain_.startAt(gain);
    const ChunkPeaks peaks = block != nullptr ? block->peaks : ChunkPeaks();
    const bool follows = block != nullptr && next != nullptr && next->run == block->run;
    const float extreme = gain_.apply(samples, gain, peaks, follows ? next->peaks : ChunkPeaks());
    return static_cast<std::int32_t>(
        std::clamp(std::round(extreme * fullScale), -fullScale, fullScale - 1));
}

void WavePlayer::note(const WaveBlock& block, std::int32_t peak) noexcept {
    const std::int64_t expected = steadyNanoseconds() + WaveOutput::latency(layout_.rate);
    const std::int64_t duration =
        static_cast<std::int64_t>(block.piece.frames) * 1'000'000'000 / layout_.rate;
    // Chunks are asked for by fits and starts, but heard one after the other.
    const std::int64_t difference = expected - notedEnd_;
    const bool goesOn = notedRun_ == block.run && std::abs(difference) < 2 * duration;
    const std::int64_t heardAt = goesOn ? notedEnd_ + difference / 16 : expected;
    timeline_.push({block.run, heardAt, duration, block.piece.from, block.piece.to, peak,
                    block.piece.last, block.piece.failed});
    notedRun_ = block.run;
    notedEnd_ = heardAt + duration;
}

// The player's own thread

void WavePlayer::work() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!quit_) {
        const auto request = std::exchange(request_, std::nullopt);
        interrupt_ = false;
        lock.unlock();
        if (request)
            begin(*request);
        decode(WaveRing::size(), firstBlocks);
        lookAfterOutput();
        lock.lock();
        changed_.wait_for(lock, hasBegun_ ? watchInterval : startInterval,
                          [this] { return quit_ || request_; });
    }
    lock.unlock();
    output_.reset();
    soundLibraries().leaveThread();
    finished_ = true;
}

// A disk may take its time, and is no reason to say that there is no output.
void WavePlayer::begin(const Request& request) {
    openOutput(request);
    decoding_ = 0;
    if (!output_)
        return;
    expectLoudness(request);
    feeder_.start(request.from, request.to, request.tempo);
    highPass_.forget();
    decoding_ = request.run;
    hasBegun_ = false;
    // There is room, also while the ring is full of the play before.
    decode(firstBlocks, 0);
}

void WavePlayer::decode(std::size_t blocks, std::size_t reserve) {
    while (decoding_ != 0 && blocks-- > 0 && !interrupt_) {
        WaveBlock* block = ring_.writable(hasBegun_ ? reserve : 0);
        if (block == nullptr)
            return;
        block->run = decoding_;
        feeder_.setSkipsSilence(WaveControl::instance().shape().skipsSilence);
        block->piece = feeder_.read(block->samples);
        if (block->piece.frames == 0 && !block->piece.last)
            continue; // in a long pause, to be asked whether somebody wants something else
        measure(*block);
        if (block->piece.last)
            decoding_ = 0;
        ring_.commit();
        hasBegun_ = true;
    }
}

void WavePlayer::openOutput(const Request& request) {
    if (output_ && (output_->lost() || output_->isOutdated() || openDevice_ != request.output))
        closeOutput();
    if (!output_)
        output_ = OutputChoice::instance().open(layout_.rate, channels_, request.output, *this);
    idleSince_ = 0;
    const std::lock_guard<std::mutex> lock(mutex_);
    answered_ = request.run;
    if (output_)
        openDevice_ = request.output;
    else if (wanted_ == request.run)
        failure_ = media_error::hardware;
    changed_.notify_all();
}

void WavePlayer::closeOutput() {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        openDevice_.reset();
    }
    output_.reset();
}

void WavePlayer::lookAfterOutput() {
    if (!output_)
        return;
    const std::int64_t now = steadyNanoseconds();
    const bool idle = wanted_ == 0 || (decoding_ == 0 && ring_.readable() == nullptr);
    if (!idle)
        idleSince_ = 0;
    else if (idleSince_ == 0)
        idleSince_ = now;
    const bool lost = output_->lost();
    if (lost || (idle && now - idleSince_ > idleLimit))
        closeOutput();
    else if (output_->isOutdated()) // what is decoded goes on there
        openOutput({.run = answered_, .output = openDevice_.value_or(-1)});
    if (lost && !idle) {
        decoding_ = 0;
        failure_ = media_error::hardware;
    }
}

} // namespace ov::sound
