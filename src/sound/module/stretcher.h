// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/sound_libraries.h"

#include <memory>

namespace ov::sound::loaded {

// See SoundLibraries::stretch.
std::unique_ptr<SoundStretcher> stretch(int rate, int channels, int tempo);

} // namespace ov::sound::loaded
