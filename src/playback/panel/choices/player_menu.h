// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "playback/panel/choices/player_choices.h"

#include <QMenu>
#include <functional>
#include <vector>

class QActionGroup;

namespace ov {

// The menu of the player: shows its choices and lets the user make others.
class PlayerMenu final : public QMenu {
    Q_OBJECT

public:
    explicit PlayerMenu(QWidget* parent);

    void show(const PlayerChoices& choices);
    void retranslate();

Q_SIGNALS:
    void chosen(const PlayerChoices& choices);
    void loopRequested();

private:
    QActionGroup* addNumbers(QMenu& menu, const char* format, std::int32_t PlayerChoices::*number,
                             const std::vector<std::int32_t>& values);
    void addBoosts();
    void addStamps();
    void addSwitch(QMenu& menu, const char* name, std::int32_t text,
                   std::function<bool&(PlayerChoices&)> value);
    void nameStamps();
    void choose(const PlayerChoices& choices);

    PlayerChoices choices_;
    QMenu* speedMenu_;
    QActionGroup* speeds_ = nullptr;
    QActionGroup* backUps_ = nullptr;
    QActionGroup* boosts_ = nullptr;
    QActionGroup* stamps_ = nullptr;
    struct Switch {
        QAction* action;
        std::function<bool&(PlayerChoices&)> value;
    };
    std::vector<Switch> switches_;
};

} // namespace ov
