// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/media.h"

#include <utility>

namespace ov::sound {

namespace {

struct State {
    MediaCalls* installed = nullptr;
};

State& state() {
    thread_local State threadState;
    return threadState;
}

} // namespace

MediaCalls* installMediaCalls(MediaCalls* calls) {
    return std::exchange(state().installed, calls);
}

MediaCalls& mediaCalls() {
    return state().installed != nullptr ? *state().installed : systemMediaCalls();
}

} // namespace ov::sound
