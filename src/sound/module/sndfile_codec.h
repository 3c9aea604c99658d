// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/sound_libraries.h"

// Decoding and encoding of the module, see SoundLibraries.

namespace ov::sound::loaded {

std::unique_ptr<SoundDecoder> decode(SoundBytes& bytes, SoundInfo& info);
platform::Status encode(const SoundFormat& format, std::span<const std::int16_t> samples,
                        std::string& file);

} // namespace ov::sound::loaded
