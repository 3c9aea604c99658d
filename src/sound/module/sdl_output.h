// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/sound_libraries.h"

#include <memory>
#include <string>
#include <vector>

// The outputs of the module, see SoundLibraries.

namespace ov::sound::loaded {

std::vector<std::string> outputNames();
std::unique_ptr<WaveOutput> openOutput(int rate, int channels, const OutputWish& which,
                                       WaveSource& source);
void leaveThread() noexcept;

} // namespace ov::sound::loaded
