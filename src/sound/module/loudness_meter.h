// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/sound_libraries.h"

// libebur128 behind LoudnessMeter.

namespace ov::sound::loaded {

std::unique_ptr<LoudnessMeter> measureLoudness(int rate, int channels);

} // namespace ov::sound::loaded
