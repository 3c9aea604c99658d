// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/threads/errand.h"
#include "sound/sound_libraries.h"

#include <string>
#include <vector>

namespace ov::sound {

// The names of the outputs, on a thread of its own; none when the libraries cannot be loaded.
inline platform::Errand<std::vector<std::string>> askForOutputNames() {
    return platform::Errand<std::vector<std::string>>([] {
        platform::Status status;
        const SoundLibraries* libraries = soundLibraries(status);
        if (libraries == nullptr)
            return std::vector<std::string>();
        auto names = libraries->outputNames();
        libraries->leaveThread();
        return names;
    });
}

} // namespace ov::sound
