// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The controls of the criterion editor and their places.

#include "dialogs/frmCriteria.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/legible.h"

#include <QDialogButtonBox>
#include <QGridLayout>

namespace ov {

void frmCriteria::buildWindow() {
    lblField_->setObjectName(widgets::indexedName("lblLabel", 0));
    lblOperator_->setObjectName(widgets::indexedName("lblLabel", 1));
    lblValue_->setObjectName(widgets::indexedName("lblLabel", 2));
    cboField_->setObjectName(QStringLiteral("cboField"));
    cboOperator_->setObjectName(QStringLiteral("cboOperator"));
    lblValueAnd_->setObjectName(QStringLiteral("lblValueAnd"));
    lblValueOhne_->setObjectName(QStringLiteral("lblValueOhne"));
    lblOperatorOhne_->setObjectName(QStringLiteral("lblOperatorOhne"));

    auto* column = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    addFieldRows(*grid);
    addValueRow(*grid);
    addHintRow(*grid);
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    column->addStretch(1);
    column->addWidget(makeButtons());
}

void frmCriteria::addFieldRows(QGridLayout& grid) {
    widgets::setCaption(*lblField_, text_id::fieldLabel);
    widgets::setCaption(*lblOperator_, text_id::operatorLabel);
    lblField_->setBuddy(cboField_);
    lblOperator_->setBuddy(cboOperator_);
    grid.addWidget(lblField_, 0, 0);
    grid.addWidget(cboField_, 0, 1);
    grid.addWidget(lblOperator_, 1, 0);
    grid.addWidget(cboOperator_, 1, 1);
    constexpr int allFields = 30; // so that no field is hidden behind a scroll arrow
    cboField_->setMaxVisibleItems(allFields);
    cboOperator_->setMaxVisibleItems(allFields);
}

void frmCriteria::addValueRow(QGridLayout& grid) {
    widgets::setCaption(*lblValue_, text_id::valueLabel);
    widgets::setCaption(*lblValueAnd_, text_id::valueAnd);
    widgets::setCaption(*lblValueOhne_, text_id::noValueNeeded);
    widgets::setCaption(*lblOperatorOhne_, text_id::noOperators);
    lblOperatorOhne_->setWordWrap(true);

    // As high as the highest that it may show, so that the window does not jump.
    auto* row = new QHBoxLayout;
    row->addWidget(places_[0], 1);
    row->addWidget(lblValueAnd_);
    row->addWidget(places_[1], 1);
    row->addWidget(lblValueOhne_, 1);
    row->addWidget(lblOperatorOhne_, 1);
    grid.addWidget(lblValue_, 2, 0);
    grid.addLayout(row, 2, 1);
    constexpr int lines = 2;
    grid.setRowMinimumHeight(
        2, std::max(cboField_->sizeHint().height(), lines * fontMetrics().lineSpacing()));
}

// As high as two lines from the beginning, so that the window does not jump.
void frmCriteria::addHintRow(QGridLayout& grid) {
    lblHint_->setObjectName(QStringLiteral("lblHint"));
    lblHint_->setTextFormat(Qt::PlainText);
    lblHint_->setWordWrap(true);
    widgets::setHint(*lblHint_);
    lblHint_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    lblHint_->setFixedHeight(2 * fontMetrics().lineSpacing());
    grid.addWidget(lblHint_, 3, 1);
}

} // namespace ov
