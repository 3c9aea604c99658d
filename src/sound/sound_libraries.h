// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/loaded_module.h"
#include "platform/status.h"
#include "sound/wave_output.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

// What other people's libraries do for us: decoding, stretching and playing sound. They take
// longer to load than most searches take, so they stand behind a module, src/sound/module, that is
// loaded when the first sound is wanted.

namespace ov::sound {

// A sound file's bytes, as a decoder is to see them. Offsets and counts in bytes.
class SoundBytes {
public:
    virtual ~SoundBytes() = default;
    virtual std::int64_t length() = 0;
    virtual std::int64_t position() = 0;
    virtual bool moveTo(std::int64_t position) = 0; // may lie beyond the end
    // Fewer than asked for at the end, and when they cannot be read.
    virtual std::int64_t read(char* target, std::int64_t count) = 0;
};

struct SoundInfo {
    std::int64_t frames = 0;
    int rate = 0;
    int channels = 0;
    int bitsPerSample = 0;
    bool seekable = false;
};

class SoundDecoder {
public:
    virtual ~SoundDecoder() = default;
    virtual bool seek(std::int64_t frame) = 0;
    // Interleaved samples, full scale is 1. Returns the frames read; fewer than asked for are the
    // end, or a failure.
    virtual std::int64_t read(float* samples, std::int64_t frames) = 0;
    virtual bool failed() const = 0; // the last read
};

// Plays faster or slower at the same pitch.
class SoundStretcher {
public:
    virtual ~SoundStretcher() = default;
    virtual void put(const float* samples, std::size_t frames) = 0;
    virtual void flush() = 0; // nothing more comes
    virtual std::size_t ready() const = 0;
    virtual std::size_t take(float* samples, std::size_t frames) = 0;
};

// How loud sound is, after EBU R 128.
class LoudnessMeter {
public:
    virtual ~LoudnessMeter() = default;
    virtual void put(const float* samples, std::size_t frames) = 0;
    // Of the last 400 ms, in LUFS; far below any sound for silence.
    virtual double momentary() const = 0;
};

// How far sound goes between its samples too, where outputs of other rates have theirs.
class PeakMeter {
public:
    virtual ~PeakMeter() = default;
    // The largest magnitude in these, which follow the last ones.
    virtual float peak(const float* samples, std::size_t frames) = 0;
};

enum class SoundEncoding : std::uint8_t { pcm8, pcm16, muLaw, aLaw, imaAdpcm, gsm610 };

struct SoundFormat {
    SoundEncoding encoding = SoundEncoding::pcm16;
    int rate = 0;     // frames per second
    int channels = 1; // 1 or 2
};

// By name, when there is one, or by number; else the desktop's usual one.
struct OutputWish {
    std::string name = {};
    int number = -1;
};

class SoundLibraries {
public:
    static constexpr const char* moduleName = "OVSearchSound";

    virtual ~SoundLibraries() = default;

    // Nothing when no sense can be made of the bytes, which must live longer.
    virtual std::unique_ptr<SoundDecoder> decode(SoundBytes& bytes, SoundInfo& info) const = 0;
    // A whole WAV file of interleaved samples.
    virtual platform::Status encode(const SoundFormat& format,
                                    std::span<const std::int16_t> samples,
                                    std::string& file) const = 0;

    // At `tempo` percent of the recorded speed.
    virtual std::unique_ptr<SoundStretcher> stretch(int rate, int channels, int tempo) const = 0;

    virtual std::unique_ptr<LoudnessMeter> measureLoudness(int rate, int channels) const = 0;
    virtual std::unique_ptr<PeakMeter> measurePeaks(int rate, int channels) const = 0;

    // The outputs there are, by number. May take a moment when the desktop's sound service is
    // slow, and for ever when it hangs.
    virtual std::vector<std::string> outputNames() const = 0;
    // Opens an output and starts to fill it. Nothing when it cannot be opened, which it may find
    // out only after a second when another output of ours is in use; at once when none is there of
    // that name. `source` must live longer.
    virtual std::unique_ptr<WaveOutput> openOutput(int rate, int channels, const OutputWish& which,
                                                   WaveSource& source) const = 0;
    // At the end of a thread that has opened or closed an output.
    virtual void leaveThread() const noexcept = 0;
};

// nullptr and why not in `status` when the module cannot be loaded. From any thread.
inline const SoundLibraries* soundLibraries(platform::Status& status) {
    return platform::loadModule<SoundLibraries>(status);
}

// Those that a file has been opened with.
inline const SoundLibraries& soundLibraries() {
    platform::Status status;
    return *soundLibraries(status);
}

// Of the libraries; none when they cannot be loaded.
inline std::vector<std::string> soundOutputNames() {
    platform::Status status;
    const SoundLibraries* libraries = soundLibraries(status);
    return libraries != nullptr ? libraries->outputNames() : std::vector<std::string>();
}

inline int soundOutputCount() {
    return static_cast<int>(soundOutputNames().size());
}

} // namespace ov::sound
