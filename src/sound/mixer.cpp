// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/mixer.h"

#include <utility>

namespace ov::sound {

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

} // namespace ov::sound
