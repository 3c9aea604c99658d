// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/mixer.h"

#include "platform/installed.h"

namespace ov::sound {

MixerCalls* installMixerCalls(MixerCalls* calls) {
    return platform::installOnThread(calls);
}

MixerCalls& mixerCalls() {
    auto* installed = platform::installedOnThread<MixerCalls>();
    return installed != nullptr ? *installed : systemMixerCalls();
}

} // namespace ov::sound
