// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// What is done to sound behind the volume, for those who type what others said.

namespace ov::sound {

struct SoundShape {
    static constexpr int usualBoost = 100;
    static constexpr int largestBoost = 300;

    int boost = usualBoost;    // percent of the sample values, from usualBoost on
    bool evensOut = false;     // loud and quiet voices towards the same loudness
    bool cutsRumble = false;   // what lies below voices: steps, desks, mains
    bool skipsSilence = false; // shortens long pauses

    bool operator==(const SoundShape&) const = default;
};

} // namespace ov::sound
