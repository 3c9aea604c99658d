// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/wave_output.h"

#include <memory>

// The outputs of the module, see SoundLibraries.

namespace ov::sound::loaded {

int outputCount();
std::unique_ptr<WaveOutput> openOutput(int rate, int channels, int device, WaveSource& source);
void leaveThread() noexcept;

} // namespace ov::sound::loaded
