// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/sound_libraries.h"

// libebur128 behind LoudnessMeter and PeakMeter.

namespace ov::sound::loaded {

std::unique_ptr<LoudnessMeter> measureLoudness(int rate, int channels);
std::unique_ptr<PeakMeter> measurePeaks(int rate, int channels);

} // namespace ov::sound::loaded
