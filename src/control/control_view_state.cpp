// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What of the view can be pressed, and where the keyboard is meanwhile.

#include "control/control_view.h"

namespace ov {

void ControlView::show(ControlState state) {
    state_ = state;
    const QPointer<QWidget> before = control_.window()->focusWidget();
    enable();
    if (before && before != control_.window()->focusWidget() && control_.isAncestorOf(before)) {
        displaced_ = before;
        splitter->setFocus(); // not the next widget, which would take a key that was meant for it
    }
    if (rulesOf(state).takesCommands)
        giveKeyboardBack();
}

void ControlView::enable() {
    const StateRules& rules = rulesOf(state_);
    for (QPushButton* button : cmdSearchOptions)
        button->setEnabled(rules.takesCommands);
    cmdSearchStop->setEnabled(rules.stopButton);
    lvSearchResult->setBusy(!rules.takesCommands);
    lvSearchResult->setQuiet(state_ == ControlState::idle);
    enableCriteriaButtons();
    describeSearchButtons();
}

void ControlView::giveKeyboardBack() {
    if (displaced_ && control_.window()->focusWidget() == splitter) {
        if (displaced_->isEnabled())
            displaced_->setFocus();
        else if (displaced_ == cmdSearchStop)
            cmdSearchOptions[search]->setFocus();
        else
            lvSearchCriteria->setFocus();
    }
    displaced_ = nullptr;
}

void ControlView::enableCriteriaButtons() {
    const bool idle = rulesOf(state_).takesCommands;
    const bool selected = lvSearchCriteria->hasSelected();
    cmdSavedSearches->setEnabled(idle);
    cmdSearchKriteriaOptions[addCriterion]->setEnabled(idle);
    cmdSearchKriteriaOptions[editCriterion]->setEnabled(idle && selected);
    cmdSearchKriteriaOptions[deleteCriterion]->setEnabled(idle && selected);
}

} // namespace ov
