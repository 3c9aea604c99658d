// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// A stretch that the player plays again and again.

#include "platform/text.h"
#include "playback/modMultimedia.h"
#include "playback/panel/player_panel.h"
#include "playback/panel/player_texts.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <algorithm>

namespace ov {

using namespace modMultimedia;

void PlayerPanel::setLoop(const PlayLoop& loop) {
    loop_ = loop;
    slSearchPlayerSeek_->setLoop(loop, seekScale());
}

void PlayerPanel::markLoop() {
    if (alias_.empty() || rate_ <= 0)
        return;
    beginDueRound();
    const std::int32_t position = std::max(MciGetPosition(alias_), 0);
    PlayLoop loop = loop_;
    loop.mark(position, rate_ / 2);
    setLoop(loop);
    // What plays already has its end.
    if (isPlaying() && (loop.isWhole() || !loop.isMarked()))
        playOnFrom(loop.isWhole() ? loop.from() : position);
    else if (loop.isWhole())
        goToUnits(loop.from());
    const auto time = [this](std::int32_t place) {
        return widgets::toUtf8(FormatPlayTime(place, rate_));
    };
    tell(loop.isWhole()    ? widgets::text(text_id::loopPlays, {time(loop.from()), time(loop.to())})
         : loop.isMarked() ? widgets::text(text_id::loopBegins, {time(loop.from())})
         : loop.isTooShort() ? widgets::text(text_id::loopTooShort)
                             : widgets::text(text_id::loopEnded));
}

// Between two rounds the device stands still until the next look at it.
bool PlayerPanel::isRoundDue() const {
    return playing_ && playsLoop_ && MciGetMode(alias_) == "stopped";
}

void PlayerPanel::beginDueRound() {
    if (isRoundDue())
        playOnFrom(loop_.from());
}

} // namespace ov
