// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/media.h"

#include "platform/installed.h"

namespace ov::sound {

MediaCalls* installMediaCalls(MediaCalls* calls) {
    return platform::installOnThread(calls);
}

MediaCalls& mediaCalls() {
    auto* installed = platform::installedOnThread<MediaCalls>();
    return installed != nullptr ? *installed : systemMediaCalls();
}

} // namespace ov::sound
