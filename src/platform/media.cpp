// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/media.h"

#include <utility>

namespace ov::platform {

namespace {

MediaCalls*& installed() {
    thread_local MediaCalls* calls = nullptr;
    return calls;
}

} // namespace

MediaCalls* installMediaCalls(MediaCalls* calls) {
    return std::exchange(installed(), calls);
}

MediaCalls& mediaCalls() {
    return installed() != nullptr ? *installed() : systemMediaCalls();
}

} // namespace ov::platform
