// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/control_view.h"

#include "support/language/help_text_ids.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/help/guide_window.h"
#include "widgets/help/help_keys.h"
#include "widgets/icons.h"
#include "widgets/legible.h"
#include "widgets/main_button.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QToolTip>
#include <QVBoxLayout>

namespace ov {

using widgets::indexedName;
using widgets::setCaption;
using widgets::setTip;

namespace {

struct ButtonTexts {
    const char* icon;
    std::int32_t caption;
    std::int32_t tip;
};

constexpr std::array<ButtonTexts, 5> searchButtons{
    {{"search", text_id::searchButton, text_id::searchTip},
     {"", 0, 0},
     {"print", text_id::printButton, text_id::printTip},
     {"columns", text_id::columnsButton, text_id::columnsTip},
     {"log", text_id::logButton, text_id::logTip}}};

constexpr std::array<ButtonTexts, 3> criteriaButtons{
    {{"add", text_id::addCriterionButton, text_id::addCriterionTip},
     {"edit", text_id::editCriterionButton, text_id::editCriterionTip},
     {"delete", text_id::deleteCriterionButton, text_id::deleteCriterionTip}}};

template <typename Button = QPushButton>
QPushButton* makeButton(QWidget* parent, const QString& name, const ButtonTexts& texts) {
    auto* button = new Button(parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    if (texts.caption == 0)
        return button;
    button->setIcon(widgets::icon(texts.icon));
    widgets::fitIcon(*button);
    setCaption(*button, texts.caption);
    setTip(*button, texts.tip);
    return button;
}

// Widgets at the edge of the control stand as close to it as the host likes.
template <typename Box>
Box* tight(QWidget* parent) {
    auto* box = new Box(parent);
    box->setContentsMargins(0, 0, 0, 0);
    return box;
}

} // namespace

ControlView::ControlView(QWidget& control)
    : splitter(new QSplitter(Qt::Vertical, &control)), control_(control) {
    splitter->setChildrenCollapsible(false);
    splitter->setOpaqueResize(true); // at once, whatever the desktop's style prefers
    splitter->addWidget(buildCriteriaHalf());
    splitter->addWidget(buildResultHalf());
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    criteriaRoom = new CriteriaRoom(*splitter, *lvSearchCriteria);
    auto* column = new QVBoxLayout(&control);
    constexpr int margin = 6;
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(splitter);
    setTabOrder();
    setReadingOrder();
    enable();
    widgets::addHelpKeys(control);
    widgets::setChapter(*lvSearchCriteria, widgets::chapter::criteria);
}

QWidget* ControlView::buildCriteriaHalf() {
    auto* half = new QWidget(splitter);
    auto* column = tight<QVBoxLayout>(half);
    lvSearchCriteria = new CriteriaList(half);
    column->addWidget(lvSearchCriteria, 1);

    auto* row = new QHBoxLayout;
    for (std::size_t i = 0; i < cmdSearchKriteriaOptions.size(); ++i) {
        cmdSearchKriteriaOptions[i] = makeButton(
            half, indexedName("cmdSearchKriteriaOptions", static_cast<int>(i)), criteriaButtons[i]);
        row->addWidget(cmdSearchKriteriaOptions[i]);
    }
    row->addStretch(1);
    row->addWidget(buildCompare(half));
    column->addLayout(row);

    column->addLayout(buildDescriptionRow(half));
    return half;
}

// One thing to choose, so one group to a screen reader.
QWidget* ControlView::buildCompare(QWidget* parent) {
    auto* group = new QWidget(parent);
    widgets::setSpokenRole(*group, QAccessible::Grouping);
    widgets::setSpokenName(*group, text_id::compareGroup);
    auto* row = tight<QHBoxLayout>(group);
    for (const Compare mode : {all, any}) {
        optCriteriaCompare[mode] = new QRadioButton(group);
        optCriteriaCompare[mode]->setObjectName(indexedName("optCriteriaCompare", mode));
        setCaption(*optCriteriaCompare[mode],
                   mode == all ? text_id::compareAll : text_id::compareAny);
        row->addWidget(optCriteriaCompare[mode]);
    }
    return group;
}

QBoxLayout* ControlView::buildDescriptionRow(QWidget* parent) {
    cmdSavedSearches =
        makeButton(parent, QStringLiteral("cmdSavedSearches"),
                   {"folder", text_id::savedSearchesButton, text_id::savedSearchesTip});
    chkFollow = new QCheckBox(parent);
    chkFollow->setObjectName(QStringLiteral("chkFollow"));
    setCaption(*chkFollow, text_id::followBox);
    setTip(*chkFollow, text_id::followTip);
    lblCriteriaDescription = new QLabel(parent);
    lblCriteriaDescription->setObjectName(QStringLiteral("lblCriteriaDescription"));
    widgets::setHint(*lblCriteriaDescription);
    lblCriteriaDescription->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblCriteriaDescription->setWordWrap(true);
    auto* row = new QHBoxLayout;
    row->addWidget(cmdSavedSearches);
    row->addWidget(chkFollow);
    row->addWidget(lblCriteriaDescription, 1);
    return row;
}

QWidget* ControlView::buildResultHalf() {
    auto* half = new QWidget(splitter);
    auto* column = tight<QVBoxLayout>(half);
    column->addLayout(buildSearchRow(half));

    column->addLayout(buildListHead(half));
    lvSearchResult = new ResultList(half);
    column->addWidget(lvSearchResult, 1);
    buildEmptyState();
    column->addLayout(buildNoticeRow(half));

    picPlayer = new PlayerPanel(half);
    picPlayer->setSelection([this] { return lvSearchResult->selected().path(); });
    column->addWidget(picPlayer);
    return half;
}

void ControlView::buildEmptyState() {
    emptyState = new EmptyState(*lvSearchResult);
    QPushButton& button = emptyState->button();
    button.setObjectName(QStringLiteral("cmdListAll"));
    button.setIcon(widgets::icon("search"));
    setCaption(button, text_id::listAllButton);
    setTip(button, text_id::listAllTip);
}

QBoxLayout* ControlView::buildSearchRow(QWidget* parent) {
    auto* row = new QHBoxLayout;
    cmdSearchStop = makeButton(parent, QStringLiteral("cmdSearchStop"),
                               {"abort", text_id::stopButton, text_id::stopTip});
    for (std::size_t i = 0; i < cmdSearchOptions.size(); ++i) {
        const auto make = i == search ? makeButton<widgets::MainButton> : makeButton<QPushButton>;
        cmdSearchOptions[i] =
            make(parent, indexedName("cmdSearchOptions", static_cast<int>(i)), searchButtons[i]);
        row->addWidget(cmdSearchOptions[i]);
        if (i == search)
            row->addWidget(cmdSearchStop);
    }
    cmdSearchOptions[unused]->hide();
    row->addStretch(1);
    return row;
}

QBoxLayout* ControlView::buildListHead(QWidget* parent) {
    lblSearchResult = new QLabel(parent);
    lblSearchResult->setObjectName(QStringLiteral("lblSearchResult"));
    lblSearchResult->setTextFormat(Qt::PlainText);
    widgets::setSpokenRole(*lblSearchResult, QAccessible::Notification);
    txtResultFilter = new FilterEdit(parent);
    auto* row = new QHBoxLayout;
    row->addWidget(lblSearchResult, 1);
    row->addWidget(txtResultFilter, 1);
    return row;
}

QBoxLayout* ControlView::buildNoticeRow(QWidget* parent) {
    lblSearchNoticeIcon = new QLabel(parent);
    constexpr int side = 16;
    lblSearchNoticeIcon->setPixmap(widgets::icon("notice").pixmap(side, side));
    lblSearchNotice = new QLabel(parent);
    lblSearchNotice->setObjectName(QStringLiteral("lblSearchNotice"));
    lblSearchNotice->setTextFormat(Qt::PlainText);
    widgets::setSpokenRole(*lblSearchNotice, QAccessible::Notification);
    lblSearchNotice->setWordWrap(true);
    auto* row = new QHBoxLayout;
    lblResultSummary = new ResultSummary(*lvSearchResult, parent);
    lblCatalogueMoment = new QLabel(parent);
    lblCatalogueMoment->setObjectName(QStringLiteral("lblCatalogueMoment"));
    lblCatalogueMoment->setTextFormat(Qt::PlainText);
    widgets::setHint(*lblCatalogueMoment);
    lblCatalogueMoment->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(lblResultSummary);
    row->addWidget(lblSearchNoticeIcon);
    row->addWidget(lblSearchNotice, 1);
    row->addWidget(lblCatalogueMoment);
    setNotice({});
    setMoment(0);
    return row;
}

// As the eye goes: criteria, their buttons, how they are joined, the search, its hits.
void ControlView::setTabOrder() {
    QWidget* before = lvSearchCriteria;
    const auto next = [&before](QWidget* widget) {
        QWidget::setTabOrder(before, widget);
        before = widget;
    };
    for (QPushButton* button : cmdSearchKriteriaOptions)
        next(button);
    next(optCriteriaCompare[all]);
    next(optCriteriaCompare[any]);
    next(cmdSavedSearches);
    next(chkFollow);
    next(cmdSearchOptions[search]);
    next(cmdSearchStop);
    for (const SearchOption option : {print, columns, log})
        next(cmdSearchOptions[option]);
    next(txtResultFilter);
    next(lvSearchResult);
    next(&emptyState->button());
}

void ControlView::setCompareAnd(bool compareAnd) {
    optCriteriaCompare[compareAnd ? all : any]->setChecked(true);
    describeCompare();
}

bool ControlView::isInCriteria(const QWidget* widget) const {
    return widget != nullptr && splitter->widget(0)->isAncestorOf(widget);
}

void ControlView::goRound(bool forward) const {
    const std::array<QWidget*, 3> stops{lvSearchCriteria, lvSearchResult, picPlayer};
    const QWidget* focus = control_.window()->focusWidget();
    const std::size_t at = isInCriteria(focus)                                  ? 0
                           : focus != nullptr && picPlayer->isAncestorOf(focus) ? 2
                                                                                : 1;
    stops[(at + (forward ? 1 : 2)) % stops.size()]->setFocus(Qt::ShortcutFocusReason);
}

} // namespace ov
