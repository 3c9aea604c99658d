// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/seek/seek_view.h"

#include <algorithm>

namespace ov {

void SeekView::zoom(double factor, double place, double least) {
    const double share = shareOf(place);
    length_ = std::clamp(length_ / factor, std::min(least, 1.0), 1.0);
    from_ = place - share * length_;
    clamp();
}

void SeekView::scroll(double shares) {
    from_ += shares * length_;
    clamp();
}

void SeekView::follow(double place) {
    const bool wasSeen = shows(followed_);
    followed_ = place;
    if (!wasSeen || shows(place))
        return;
    constexpr double before = 0.05; // of the page, so that one sees where it comes from
    from_ = place - before * length_;
    clamp();
}

void SeekView::clamp() {
    from_ = std::clamp(from_, 0.0, 1 - length_);
}

} // namespace ov
