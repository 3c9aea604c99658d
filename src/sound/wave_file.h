// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/format/wave_header.h"
#include "sound/format/wave_layout.h"
#include "sound/wave_stream.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

// A sound file that is read piece by piece. Used by one thread at a time.

namespace ov::sound {

class WaveFile {
public:
    // Opens the file of that path (files.h). Returns a media_error: fileNotFound for what is no
    // file or may not be read, cannotRead when reading fails, invalidFile for what is no sound,
    // noDriver when what decodes it cannot be loaded.
    static std::uint32_t open(std::string_view path, std::unique_ptr<WaveFile>& file);

    const WaveLayout& layout() const noexcept { return layout_; }
    // Frames that are really there, which may be fewer than the header promises, and fewer still
    // once read() has found the file cut off meanwhile.
    std::int64_t frames() const noexcept { return frames_; }
    // Of the file on the disk; 0 when it does not say.
    std::int64_t bytes() const noexcept { return stream_.file().size().value_or(0); }
    // Of what read() gives: one or two. Files with more are mixed into one.
    int channels() const noexcept { return layout_.channels == 2 ? 2 : 1; }

    // Clamped to the frames that are there. False when the file cannot be read.
    bool seek(std::int64_t frame);

    // Interleaved samples, full scale is 1. Returns the frames read; fewer than asked for are the
    // end of the file, or a failure: failed() tells.
    std::size_t read(std::span<float> samples);
    bool failed() const noexcept { return failed_; }

private:
    WaveFile() = default;
    bool openSound(SoundInfo& info);
    void readLayout(const SoundInfo& info);
    bool reopenAt(std::int64_t frame);
    std::size_t endEarly();
    std::int64_t readMixed(std::span<float> samples, std::int64_t wanted);

    std::optional<WaveHeader> header_;
    WaveStream stream_;
    std::unique_ptr<SoundDecoder> sound_; // reads the stream
    WaveLayout layout_;
    std::int64_t frames_ = 0;
    std::int64_t position_ = 0; // of the next frame
    bool seekable_ = true;
    bool failed_ = false;
    std::vector<float> manyChannels_;
};

} // namespace ov::sound
