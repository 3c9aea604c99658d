// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the controls of all windows are for, by their names.

#include "support/language/help_text_ids.h"
#include "support/language/text_ids.h"
#include "widgets/help/help_keys.h"
#include "widgets/text.h"

#include <QWidget>
#include <array>

namespace ov::widgets {

namespace {

struct Explanation {
    const char* name;
    std::int32_t text;
};

constexpr std::array explanations{
    // The search
    Explanation{"lvSearchCriteria", text_id::aboutCriteriaList},
    Explanation{"cmdSearchKriteriaOptions(0)", text_id::addCriterionTip},
    Explanation{"cmdSearchKriteriaOptions(1)", text_id::editCriterionTip},
    Explanation{"cmdSearchKriteriaOptions(2)", text_id::deleteCriterionTip},
    Explanation{"optCriteriaCompare(0)", text_id::describeAny},
    Explanation{"optCriteriaCompare(1)", text_id::describeAll},
    Explanation{"cmdSearchOptions(0)", text_id::searchTip},
    Explanation{"cmdSearchOptions(2)", text_id::aboutPrintButton},
    Explanation{"cmdSearchOptions(3)", text_id::columnsTip},
    Explanation{"cmdSearchOptions(4)", text_id::logTip},
    Explanation{"cmdSearchStop", text_id::keyStop},
    Explanation{"lvSearchResult", text_id::aboutResultList},
    Explanation{"txtResultFilter", text_id::filterTip},
    Explanation{"cmdListAll", text_id::listAllTip},
    Explanation{"cmdSavedSearches", text_id::savedSearchesTip},
    Explanation{"chkFollow", text_id::followTip},
    Explanation{"cmdPlayedDictation", text_id::playedDictationTip},
    // The player
    Explanation{"cmdSearchPlayer(0)", text_id::playTip},
    Explanation{"cmdSearchPlayer(1)", text_id::pauseTip},
    Explanation{"cmdSearchPlayer(2)", text_id::stopPlayingTip},
    Explanation{"cmdSearchPlayerOptions", text_id::speedTip},
    Explanation{"slSearchPlayerSeek", text_id::aboutSeek},
    Explanation{"slSearchPlayerVolume", text_id::volumeTip},
    // The editor of a criterion
    Explanation{"cboField", text_id::aboutField},
    Explanation{"cboOperator", text_id::aboutOperator},
    Explanation{"txtValue(0)", text_id::aboutTextValue},
    Explanation{"txtValue(1)", text_id::aboutTextValue},
    Explanation{"cboValue(0)", text_id::aboutCodeValue},
    Explanation{"cboValue(1)", text_id::aboutCodeValue},
    Explanation{"dtpValue(0)", text_id::dateHint},
    Explanation{"dtpValue(1)", text_id::dateHint},
    Explanation{"dtpValueTime(0)", text_id::aboutTimeValue},
    Explanation{"dtpValueTime(1)", text_id::aboutTimeValue},
    // The chooser of columns
    Explanation{"lstLeft", text_id::aboutFieldLists},
    Explanation{"lstRight", text_id::aboutFieldLists},
    Explanation{"cmdTransfer(0)", text_id::aboutFieldLists},
    Explanation{"cmdTransfer(1)", text_id::aboutFieldLists},
    Explanation{"cmdUpDown(0)", text_id::columnsOrderHint},
    Explanation{"cmdUpDown(1)", text_id::columnsOrderHint},
    Explanation{"cmdFold", text_id::aboutFixedFields},
    Explanation{"lstNonCustomizable", text_id::aboutFixedFields},
    Explanation{"cmdDefault", text_id::aboutDefaultColumns},
    // The options of a print
    Explanation{"cmdChangePrinter", text_id::aboutPrinter},
    Explanation{"optBereich(0)", text_id::aboutPrintRange},
    Explanation{"optBereich(1)", text_id::aboutPrintRange},
    Explanation{"txtTitel", text_id::aboutPrintTitle},
    Explanation{"chkAllColumns", text_id::allColumnsTip},
    Explanation{"btnChooseListItemFont", text_id::aboutNothing},
    Explanation{"btnPageSetup", text_id::aboutNothing},
    // The preview of a print
    Explanation{"PageArea", text_id::aboutPages},
    Explanation{"PageNumber", text_id::aboutPages},
    Explanation{"cmdPrint", text_id::aboutPrintNow},
    Explanation{"cmdWholePage", text_id::aboutWholePage},
    // The details of a dictation
    Explanation{"lstDetails", text_id::aboutDetails},
    Explanation{"cmdCopy", text_id::aboutCopyDetails},
    // All dialogs
    Explanation{"cmdClose", text_id::aboutCancel},
    Explanation{"cmdOK", text_id::aboutOk},
    Explanation{"cmdCancel", text_id::aboutCancel},
};

} // namespace

// What is not told here says what its tip says.
void explain(QWidget& root) {
    const QList<QWidget*> widgets = root.findChildren<QWidget*>();
    for (QWidget* widget : widgets)
        if (!widget->toolTip().isEmpty())
            widget->setWhatsThis(widget->toolTip());
    for (const Explanation& explanation : explanations)
        if (auto* widget = root.findChild<QWidget*>(QLatin1String(explanation.name)))
            widget->setWhatsThis(toolTipText(plainText(explanation.text)));
}

} // namespace ov::widgets
