// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/mixer.h"

#include <utility>

namespace ov::platform {

namespace {

struct State {
    MixerCalls* installed = nullptr;
};

State& state() {
    thread_local State threadState;
    return threadState;
}

} // namespace

MixerCalls* installMixerCalls(MixerCalls* calls) {
    return std::exchange(state().installed, calls);
}

MixerCalls& mixerCalls() {
    return state().installed != nullptr ? *state().installed : systemMixerCalls();
}

} // namespace ov::platform
