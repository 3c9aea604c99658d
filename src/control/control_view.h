// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/control_state.h"
#include "control/criteria/criteria_list.h"
#include "control/criteria/criteria_room.h"
#include "control/criteria/empty_state.h"
#include "control/filter/filter_edit.h"
#include "control/results/result_list.h"
#include "control/results/result_summary.h"
#include "playback/panel/player_panel.h"

#include <QCheckBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QToolButton>
#include <array>
#include <cstdint>

class QBoxLayout;

namespace ov {

// The widgets of the search control and their places: the criteria above, the hits below, each
// with its row of buttons, and the player under the hits. It holds no rules.
class ControlView {
public:
    // Buttons of the search row, by their index; 1 has never had a function and is not shown.
    enum SearchOption { search = 0, unused = 1, print = 2, columns = 3, log = 4 };
    enum CriteriaOption { addCriterion = 0, editCriterion = 1, deleteCriterion = 2 };
    enum Compare { any = 0, all = 1 };

    // The widgets are children of `control`.
    explicit ControlView(QWidget& control);

    void retranslate(QWidget& control) const;
    void setCompareAnd(bool compareAnd);
    bool isCompareAnd() const { return optCriteriaCompare[all]->isChecked(); }

    // Lights what can be pressed in that state. A button that loses the keyboard by this has it
    // again when commands are taken, unless the user gave it to another widget meanwhile.
    void show(ControlState state);
    void enableCriteriaButtons();
    // Tells by tooltips what the buttons of the search row do, or why they have nothing to do.
    void describeSearchButtons() const;
    // Shows the tooltip of a button that was pressed in vain.
    void tellReason(SearchOption option) const;

    // Below the hits: what the last search could not do; empty hides it.
    void setNotice(const QString& notice) const;
    // Beside it: of when the answer of a catalogue is, nanoseconds since 1970; 0 hides it.
    void setMoment(std::int64_t nanoseconds) const;

    // Whether that widget belongs to the criteria's half.
    bool isInCriteria(const QWidget* widget) const;
    // Gives the keyboard to the next of criteria, hits and player, or to the one before.
    void goRound(bool forward) const;

    QSplitter* splitter = nullptr;
    CriteriaRoom* criteriaRoom = nullptr;
    CriteriaList* lvSearchCriteria = nullptr;
    std::array<QPushButton*, 3> cmdSearchKriteriaOptions{};
    QPushButton* cmdSavedSearches = nullptr;
    std::array<QRadioButton*, 2> optCriteriaCompare{};
    QLabel* lblCriteriaDescription = nullptr;
    QCheckBox* chkFollow = nullptr;
    std::array<QPushButton*, 5> cmdSearchOptions{};
    QPushButton* cmdSearchStop = nullptr;
    QLabel* lblSearchResult = nullptr;
    FilterEdit* txtResultFilter = nullptr;
    ResultList* lvSearchResult = nullptr;
    EmptyState* emptyState = nullptr; // of the result list
    ResultSummary* lblResultSummary = nullptr;
    QLabel* lblCatalogueMoment = nullptr;
    QLabel* lblSearchNoticeIcon = nullptr;
    QLabel* lblSearchNotice = nullptr;
    PlayerPanel* picPlayer = nullptr;

private:
    QWidget* buildCriteriaHalf();
    QWidget* buildCompare(QWidget* parent);
    QBoxLayout* buildDescriptionRow(QWidget* parent);
    QWidget* buildResultHalf();
    void buildEmptyState();
    QBoxLayout* buildSearchRow(QWidget* parent);
    QBoxLayout* buildListHead(QWidget* parent);
    QBoxLayout* buildNoticeRow(QWidget* parent);
    void setTabOrder();
    void setReadingOrder();

    void describeCompare() const;
    void enable();
    void giveKeyboardBack();
    bool hasSelectedRows() const;

    QWidget& control_;
    ControlState state_ = ControlState::notBuilt;
    QPointer<QWidget> displaced_; // had the keyboard before it was disabled
};

} // namespace ov
