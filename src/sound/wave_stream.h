// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/readable_file.h"

#include <sndfile.h>

#include <cstdint>
#include <memory>

// The bytes of a sound file as libsndfile is to see them: nothing behind the sound, and, for
// encodings that it cannot seek in, the sound from a later place on.

namespace ov::sound {

struct SoundCloser {
    void operator()(SNDFILE* sound) const noexcept { sf_close(sound); }
};
using Sound = std::unique_ptr<SNDFILE, SoundCloser>;

class WaveStream {
public:
    WaveStream() = default;
    WaveStream(WaveStream&&) = default;
    WaveStream& operator=(WaveStream&&) = default;
    // `dataStart` and `dataEnd` are where the sound lies in the file; the end may lie beyond it.
    WaveStream(platform::ReadableFile file, std::int64_t dataStart, std::int64_t dataEnd);

    const platform::ReadableFile& file() const noexcept { return file_; }

    // Why reads gave less than was there when the file was opened, the last answer since forget().
    // libsndfile does not tell, and makes up what it lacks.
    enum class Missing : std::uint8_t { nothing, cutOff, unreadable };
    Missing missing() const noexcept { return missing_; }
    void forget() noexcept { missing_ = Missing::nothing; }

    // Leaves out that many bytes at the start of the sound. Empty when libsndfile cannot make
    // sense of it. The stream must stay where it is while the sound is open.
    Sound open(SF_INFO& info, std::int64_t leftOut = 0);

private:
    static sf_count_t length(void* self);
    static sf_count_t seek(sf_count_t offset, int whence, void* self);
    static sf_count_t read(void* target, sf_count_t count, void* self);
    static sf_count_t write(const void* source, sf_count_t count, void* self);
    static sf_count_t tell(void* self);
    Missing reasonFor(std::int64_t got) const noexcept;

    platform::ReadableFile file_;
    std::int64_t dataStart_ = 0;
    std::int64_t end_ = 0;
    std::int64_t leftOut_ = 0;
    std::int64_t position_ = 0; // without what is left out
    Missing missing_ = Missing::nothing;
};

} // namespace ov::sound
