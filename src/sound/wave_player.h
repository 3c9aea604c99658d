// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/effects/high_pass.h"
#include "sound/effects/loudness_leveler.h"
#include "sound/effects/output_gain.h"
#include "sound/wave_feeder.h"
#include "sound/wave_file.h"
#include "sound/wave_output.h"
#include "sound/wave_ring.h"
#include "sound/wave_timeline.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

// Plays stretches of one file. A thread of its own decodes ahead and looks after the output,
// whose thread takes what is decoded; the caller, always the same thread or one at a time, never
// waits for sound. Places are frames of the file.

namespace ov::sound {

class WavePlayer final : private WaveSource {
public:
    explicit WavePlayer(std::unique_ptr<WaveFile> file);
    // Silent at once, but waits until the output is closed, which may last: call finish() before
    // and wait for isFinished() where that matters.
    ~WavePlayer() override;
    WavePlayer(const WavePlayer&) = delete;
    WavePlayer& operator=(const WavePlayer&) = delete;

    const WaveLayout& layout() const noexcept { return layout_; }

    // Ends what is played and plays this. Returns a media_error: noOutput when nothing can play.
    // The first time, or after a while of silence, the output has to be opened, which takes some
    // milliseconds; one that does not answer within a second counts as none. A file that is slow
    // to read is silent until its data come.
    std::uint32_t play(double from, double to);

    // Silent within what the output has in its hands, some 35 ms. Returns the place where that
    // ends, to play on from. Nothing to do when nothing is played.
    double halt();

    // Whether something is still to be heard.
    bool isPlaying() const noexcept;
    // What is heard now; when nothing is played, the place where it ended.
    double position() const noexcept;
    // Why the last play ended early: a media_error, hardware or cannotRead.
    std::uint32_t failure() const noexcept;

    // Percent; what is played goes on at the new tempo.
    void setTempo(int tempo);
    int tempo() const noexcept { return tempo_; }
    // For plays to come: one of SoundLibraries::outputNames() by number, or -1.
    void setOutput(int device);
    void setMuted(bool muted) noexcept { muted_.store(muted); }

    void finish();
    bool isFinished() const noexcept { return finished_.load(); }

private:
    struct Request {
        std::uint64_t run = 0;
        double from = 0;
        double to = 0;
        int tempo = usualTempo;
        int output = -1;
    };

    // On the output's thread.
    void fill(std::span<float> samples) noexcept override;
    const WaveBlock* nextBlock(std::uint64_t run) noexcept;
    std::int32_t applyGain(std::span<float> samples, const WaveBlock* block) noexcept;
    void note(const WaveBlock& block, std::int32_t peak) noexcept;

    // On the player's own thread.
    void work();
    void begin(const Request& request);
    void decode(std::size_t blocks, std::size_t reserve);
    bool evensOut() const noexcept;
    void expectLoudness(const Request& request);
    void measure(WaveBlock& block);
    void openOutput(const Request& request);
    void closeOutput();
    void lookAfterOutput();

    const WaveLayout layout_;
    const int channels_;
    const std::size_t chunkSamples_;

    // The caller's.
    std::uint64_t run_ = 0;
    double rest_ = 0; // where it ended, or starts
    double to_ = 0;
    int tempo_ = usualTempo;
    int device_ = -1;

    // Between threads.
    std::atomic<std::uint64_t> wanted_{0}; // the run that is to be heard; 0 is silence
    std::atomic<std::uint32_t> failure_{0};
    std::atomic<bool> muted_{false};
    std::atomic<bool> finished_{false};
    std::atomic<bool> interrupt_{false}; // a request waits
    WaveRing ring_;
    WaveTimeline timeline_;
    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    std::optional<Request> request_;
    std::uint64_t answered_ = 0;    // the newest run whose output is open, or is not
    std::optional<int> openDevice_; // the output that is open; only the player's thread sets it
    bool quit_ = false;

    // The player's own thread's.
    std::unique_ptr<WaveFile> file_;
    WaveFeeder feeder_;
    HighPass highPass_;
    std::optional<LoudnessLeveler> leveler_;
    std::unique_ptr<PeakMeter> peakMeter_; // nullptr until sound is raised
    std::uint64_t decoding_ = 0;           // the run; 0 when all is decoded
    bool hasBegun_ = true;                 // something of it is decoded
    std::int64_t idleSince_ = 0;

    // The output thread's.
    OutputGain gain_;
    float even_ = 1; // the part of it that makes voices as loud as each other
    std::uint64_t notedRun_ = 0;
    std::int64_t notedEnd_ = 0;

    std::unique_ptr<WaveOutput> output_; // uses all of the above
    std::thread thread_;
};

} // namespace ov::sound
