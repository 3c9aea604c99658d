// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/media.h"

#include "platform/installed.h"
#include "sound/sound_libraries.h"

namespace ov::sound {

std::string soundLoadFailure() {
    platform::Status status;
    static_cast<void>(soundLibraries(status));
    return status.description();
}

MediaCalls* installMediaCalls(MediaCalls* calls) {
    return platform::installOnThread(calls);
}

MediaCalls& mediaCalls() {
    auto* installed = platform::installedOnThread<MediaCalls>();
    return installed != nullptr ? *installed : systemMediaCalls();
}

} // namespace ov::sound
