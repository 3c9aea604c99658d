// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What pedals do is the same for all controls of a thread.

#include "control/ctrlOVSearch.h"
#include "control/pedal/frmPedals.h"
#include "playback/panel/pedal/pedal_desk.h"

namespace ov {

void ctrlOVSearch::setUpPedals() {
    PedalDesk::shared()->setAssignments(PedalAssignments(settings_.pedals()));
    connect(view_.picPlayer, &PlayerPanel::pedalsRequested, this,
            [this] { post("ChoosePedals", [this] { choosePedals(); }); });
}

void ctrlOVSearch::choosePedals() {
    enter(ControlState::asking);
    frmPedals dialog(this);
    dialog.Assignments = PedalAssignments(settings_.pedals()); // other windows write them too
    dialog.exec();
    if (!dialog.OKPressed() || isEnding())
        return;
    settings_.setPedals(dialog.Assignments.text());
    PedalDesk::shared()->setAssignments(dialog.Assignments);
}

} // namespace ov
