// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"
#include "sound/sound_libraries.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

// Sound for made-up dictations: something that rises, falls and pauses like a voice, in the
// encodings that dictation machines write.

namespace ov::demo {

class DemoSound {
public:
    static constexpr int longestSeconds = 40;

    explicit DemoSound(std::uint32_t seed) : seed_(seed) {}

    // Puts a whole WAV file of `seconds` (1 to longestSeconds) into `file`. `piece` chooses what
    // is heard. Encodings that come in blocks fill their last one, so the file may be longer by
    // less than a tenth of a second.
    platform::Status render(const sound::SoundFormat& format, int seconds, std::uint32_t piece,
                            std::string& file);

private:
    const std::vector<std::int16_t>& speech(int rate);

    std::uint32_t seed_;
    std::map<int, std::vector<std::int16_t>> speechByRate_; // mono, made at the first use
};

} // namespace ov::demo
