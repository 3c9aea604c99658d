// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/mixer.h"

#include <utility>

namespace ov::platform {

namespace {

MixerCalls*& installed() {
    thread_local MixerCalls* calls = nullptr;
    return calls;
}

} // namespace

MixerCalls* installMixerCalls(MixerCalls* calls) {
    return std::exchange(installed(), calls);
}

MixerCalls& mixerCalls() {
    return installed() != nullptr ? *installed() : systemMixerCalls();
}

} // namespace ov::platform
