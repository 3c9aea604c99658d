// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/choices/choice_keeper.h"

#include <utility>

namespace ov {

ChoiceKeeper::ChoiceKeeper(Places places) : places_(std::move(places)) {
    constexpr std::chrono::milliseconds pause{500};
    later_.setSingleShot(true);
    later_.setInterval(pause);
    QObject::connect(&later_, &QTimer::timeout, &later_, [this] { keepNow(); });
}

void ChoiceKeeper::keep(const PlayerChoices& choices, const PlayerChoices& before) {
    if (change_)
        change_->choices = choices;
    else
        change_ = {choices, before};
    later_.start();
}

void ChoiceKeeper::keep(std::int32_t volume) {
    volume_ = volume;
    later_.start();
}

void ChoiceKeeper::keepNow() {
    later_.stop();
    if (const auto change = std::exchange(change_, std::nullopt))
        places_.choices(change->choices, change->before);
    if (const auto volume = std::exchange(volume_, std::nullopt))
        places_.volume(*volume);
}

} // namespace ov
