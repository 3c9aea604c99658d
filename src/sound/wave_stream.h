// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/readable_file.h"
#include "sound/sound_libraries.h"

#include <cstdint>
#include <memory>

// The bytes of a sound file as a decoder is to see them: nothing behind the sound, and, for
// encodings that it cannot seek in, the sound from a later place on.

namespace ov::sound {

class WaveStream final : private SoundBytes {
public:
    WaveStream() = default;
    // `dataStart` and `dataEnd` are where the sound lies in the file; the end may lie beyond it.
    WaveStream(platform::ReadableFile file, std::int64_t dataStart, std::int64_t dataEnd);

    const platform::ReadableFile& file() const noexcept { return file_; }

    // Why reads gave less than was there when the file was opened, the last answer since forget().
    // Decoders do not tell, and make up what they lack.
    enum class Missing : std::uint8_t { nothing, cutOff, unreadable };
    Missing missing() const noexcept { return missing_; }
    void forget() noexcept { missing_ = Missing::nothing; }

    // Leaves out that many bytes at the start of the sound. Empty when no sense can be made of it.
    // The stream must stay where it is while the sound is open.
    std::unique_ptr<SoundDecoder> open(SoundInfo& info, std::int64_t leftOut = 0);

private:
    std::int64_t length() override;
    std::int64_t position() override { return position_; }
    bool moveTo(std::int64_t position) override;
    std::int64_t read(char* target, std::int64_t count) override;
    Missing reasonFor(std::int64_t got) const noexcept;

    platform::ReadableFile file_;
    std::int64_t dataStart_ = 0;
    std::int64_t end_ = 0;
    std::int64_t leftOut_ = 0;
    std::int64_t position_ = 0; // without what is left out
    Missing missing_ = Missing::nothing;
};

} // namespace ov::sound
