// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/choices/player_choices.h"

#include <QTimer>
#include <cstdint>
#include <functional>
#include <optional>

namespace ov {

// Keeps what was chosen in a player a moment after the last change: other programs may move its
// volume a hundred times a second, and each time settings are kept a file is written. What still
// waits is kept by keepNow() or the end.
class ChoiceKeeper {
public:
    struct Places {
        std::function<void(const PlayerChoices& choices, const PlayerChoices& before)> choices;
        std::function<void(std::int32_t volume)> volume;
    };
    explicit ChoiceKeeper(Places places);
    ~ChoiceKeeper() { keepNow(); }
    ChoiceKeeper(const ChoiceKeeper&) = delete;
    ChoiceKeeper& operator=(const ChoiceKeeper&) = delete;

    void keep(const PlayerChoices& choices, const PlayerChoices& before);
    void keep(std::int32_t volume);
    void keepNow();

private:
    struct Change {
        PlayerChoices choices;
        PlayerChoices before;
    };
    Places places_;
    std::optional<Change> change_;
    std::optional<std::int32_t> volume_;
    QTimer later_;
};

} // namespace ov
