// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/window/progress_notes.h"

#include <algorithm>

namespace ov::host {

void ProgressNotes::init(std::int32_t steps, std::string_view caption) {
    active_ = true;
    steps_ = steps;
    step_ = 0;
    caption_ = caption;
    directory_.clear();
    note();
}

void ProgressNotes::directory(std::string_view directory) {
    active_ = true;
    directory_ = directory;
    note();
}

void ProgressNotes::value(std::int32_t value) {
    step_ = value;
    note();
}

void ProgressNotes::clear() {
    active_ = false;
    steps_ = 0;
    step_ = 0;
    caption_.clear();
    directory_.clear();
    note();
}

std::int32_t ProgressNotes::step() const {
    return std::clamp(step_, 0, std::max(steps_, 0));
}

void ProgressNotes::note() {
    if (noted_)
        return;
    noted_ = true;
    if (wake_)
        wake_();
}

} // namespace ov::host
