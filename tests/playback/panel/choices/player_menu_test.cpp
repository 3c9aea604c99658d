// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/choices/player_menu.h"
#include "tests/window/looked_through.h"
#include "tests/window/window_fixture.h"

namespace ov {
namespace {

class Menu : public WindowTest {};

TEST_F(Menu, MakesOneChoiceWithEachEntry) {
    PlayerMenu menu(nullptr);
    std::string all;
    QObject::connect(&menu, &PlayerMenu::loopRequested, [&] { all += " a passage"; });
    QObject::connect(&menu, &PlayerMenu::chosen, [&](const PlayerChoices& now) {
        for (const int number : {now.speedPercent, now.backUpSeconds, now.shape.boost})
            all += " " + std::to_string(number);
        for (const bool isOn : {now.remembersPositions, now.shape.skipsSilence, now.shape.evensOut,
                                now.shape.cutsRumble})
            all += isOn ? " on" : " off";
        all += " " + now.timeStampForm + ";";
    });
    for (QAction* entry : menu.findChildren<QAction*>()) {
        if (entry->isSeparator() || entry->menu() != nullptr)
            continue;
        all += entryText(*entry) + ":";
        entry->trigger();
        for (const QAction* other : menu.findChildren<QAction*>())
            all += other->isChecked() ? " (" + entryText(*other) + ")" : "";
        all += "\n";
    }
    expectLookedThrough(all, "playback/panel/choices/player_menu.txt");
}

} // namespace
} // namespace ov
