// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the widgets of the control say.

#include "control/catalogue/catalogue_answer.h"
#include "control/control_view.h"
#include "support/language/catalogue_text_ids.h"
#include "support/language/help_text_ids.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/help/help_keys.h"
#include "widgets/text.h"

#include <QAccessible>
#include <QToolTip>

namespace ov {

using widgets::setTip;

void ControlView::retranslate(QWidget& control) const {
    widgets::translate(control);
    widgets::explain(control);
    lvSearchCriteria->retranslate();
    txtResultFilter->retranslate();
    lvSearchResult->retranslate();
    lblResultSummary->retranslate();
    picPlayer->retranslate();
    splitter->setAccessibleName(widgets::text(text_id::title)); // it has the keyboard meanwhile
    describeCompare();
}

void ControlView::describeCompare() const {
    lblCriteriaDescription->setText(
        widgets::text(isCompareAnd() ? text_id::describeAll : text_id::describeAny));
}

// Screen readers go by the order in which the widgets lie over each other; they were made in
// another one than that in which they are seen.
void ControlView::setReadingOrder() {
    const std::initializer_list<QWidget*> seen{splitter->widget(0),
                                               lvSearchCriteria,
                                               cmdSearchKriteriaOptions[0],
                                               cmdSearchKriteriaOptions[1],
                                               cmdSearchKriteriaOptions[2],
                                               optCriteriaCompare[all]->parentWidget(),
                                               cmdSavedSearches,
                                               chkFollow,
                                               lblCriteriaDescription,
                                               splitter->widget(1),
                                               cmdSearchOptions[search],
                                               cmdSearchStop,
                                               cmdSearchOptions[print],
                                               cmdSearchOptions[columns],
                                               cmdSearchOptions[log],
                                               lblSearchResult,
                                               txtResultFilter,
                                               lvSearchResult,
                                               lblResultSummary,
                                               lblSearchNoticeIcon,
                                               lblSearchNotice,
                                               lblCatalogueMoment,
                                               picPlayer};
    for (QWidget* widget : seen)
        widget->raise();
}

// Without rows or a selection these can be pressed all the same and then tell why nothing happens:
// they say it before, too.
void ControlView::describeSearchButtons() const {
    setTip(*cmdSearchOptions[print],
           lvSearchResult->isEmpty() ? text_id::printNeedsRows : text_id::printTip);
    setTip(*cmdSearchOptions[log],
           hasSelectedRows() ? text_id::logTip : text_id::logNeedsSelection);
}

bool ControlView::hasSelectedRows() const {
    return lvSearchResult->selectionModel()->hasSelection();
}

void ControlView::tellReason(ControlView::SearchOption option) const {
    QPushButton* button = cmdSearchOptions[option];
    QToolTip::showText(button->mapToGlobal(button->rect().bottomLeft()), button->toolTip(), button);
    QAccessibleEvent told(button, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

void ControlView::setNotice(const QString& notice) const {
    lblSearchNotice->setText(notice);
    lblSearchNotice->setVisible(!notice.isEmpty());
    lblSearchNoticeIcon->setVisible(!notice.isEmpty());
}

void ControlView::setMoment(std::int64_t nanoseconds) const {
    const bool isThere = nanoseconds != 0;
    lblCatalogueMoment->setText(
        isThere ? widgets::text(text_id::catalogueAsOf, {momentText(nanoseconds, platform::now())})
                : QString());
    lblCatalogueMoment->setVisible(isThere);
}

} // namespace ov
