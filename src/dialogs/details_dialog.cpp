// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dialogs/details_dialog.h"

#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/first_size.h"
#include "widgets/help/help_keys.h"
#include "widgets/text.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace ov {

DetailsDialog::DetailsDialog(std::string path, QWidget* parent)
    : QDialog(parent), path_(std::move(path)), lstDetails_(new QTableWidget(this)) {
    setObjectName(QStringLiteral("DetailsDialog"));
    setWindowFlag(Qt::WindowContextHelpButtonHint);
    widgets::addHelpKeys(*this);
    buildWindow();
    fill();
    resizeColumns();
    lstDetails_->setCurrentCell(0, 0, QItemSelectionModel::NoUpdate);
    widgets::followLanguage(*this, [this] {
        widgets::translate(*this);
        widgets::explain(*this);
        fill();
    });
    widgets::translate(*this);
    widgets::explain(*this);
    constexpr QSize comfortable(720, 520);
    widgets::resizeOnScreen(*this, comfortable);
}

void DetailsDialog::buildWindow() {
    widgets::setCaption(*this, text_id::detailsTitle);
    lstDetails_->setObjectName(QStringLiteral("lstDetails"));
    widgets::setSpokenName(*lstDetails_, text_id::detailsTitle);
    lstDetails_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstDetails_->setSelectionBehavior(QAbstractItemView::SelectRows);
    lstDetails_->setTabKeyNavigation(false);
    lstDetails_->setWordWrap(false);
    lstDetails_->setShowGrid(false);
    lstDetails_->verticalHeader()->hide();
    lstDetails_->horizontalHeader()->setStretchLastSection(true);
    lstDetails_->horizontalHeader()->setHighlightSections(false);
    lstDetails_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lstDetails_->installEventFilter(this);

    auto* copyButton = makeButton("cmdCopy", text_id::copyDetails);
    auto* closeButton = makeButton("cmdClose", text_id::closeDetails);
    closeButton->setDefault(true);
    connect(copyButton, &QPushButton::clicked, this, &DetailsDialog::copy);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(copyButton, QDialogButtonBox::ActionRole);
    buttons->addButton(closeButton, QDialogButtonBox::RejectRole);
    auto* column = new QVBoxLayout(this);
    column->addWidget(lstDetails_, 1);
    column->addWidget(buttons);
}

// The list itself would copy a single cell.
bool DetailsDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress ||
        !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy))
        return QDialog::eventFilter(watched, event);
    copy();
    return true;
}

QPushButton* DetailsDialog::makeButton(const char* name, std::int32_t textId) {
    auto* button = new QPushButton(this);
    button->setObjectName(QLatin1String(name));
    widgets::setCaption(*button, textId);
    return button;
}

// Rows that are there stay, and selected, when they are filled in another language.
void DetailsDialog::fill() {
    lstDetails_->setColumnCount(3);
    lstDetails_->setHorizontalHeaderLabels({widgets::text(text_id::detailsField),
                                            widgets::text(text_id::detailsShown),
                                            widgets::text(text_id::detailsRaw)});
    const modDictation::Dictation dictation = modDictation::dictationOfPath(path_);
    int row = 0;
    for (const auto& details : {fieldDetails(dictation), wholeDetails(dictation)})
        for (const modDictation::Detail& detail : details)
            showRow(row++, detail);
}

// The whole name is longer than all others, and would push what is raw out of sight.
void DetailsDialog::resizeColumns() {
    constexpr int most = 270;
    lstDetails_->resizeColumnsToContents();
    lstDetails_->setColumnWidth(1, std::min(lstDetails_->columnWidth(1), most));
}

// What the name lacks is told in other letters than a value that reads the same would have.
void DetailsDialog::showRow(int row, const modDictation::Detail& detail) {
    const QStringList cells{widgets::toQt(detail.caption), widgets::toQt(detail.shown),
                            detail.isMissing ? widgets::text(text_id::detailsMissing)
                                             : widgets::toQt(detail.raw)};
    lstDetails_->setRowCount(std::max(lstDetails_->rowCount(), row + 1));
    for (int column = 0; column < cells.size(); ++column) {
        if (lstDetails_->item(row, column) == nullptr)
            lstDetails_->setItem(row, column, new QTableWidgetItem);
        QTableWidgetItem& item = *lstDetails_->item(row, column);
        item.setText(cells[column]);
        item.setToolTip(widgets::toolTipText(cells[column]));
    }
    QFont font;
    font.setItalic(detail.isMissing);
    lstDetails_->item(row, 2)->setFont(font);
}

void DetailsDialog::copy() {
    const auto* selection = lstDetails_->selectionModel();
    QString lines;
    for (int row = 0; row < lstDetails_->rowCount(); ++row) {
        if (selection->hasSelection() && !selection->isRowSelected(row))
            continue;
        for (int column = 0; column < lstDetails_->columnCount(); ++column)
            lines += widgets::cellText(lstDetails_->item(row, column)->text()) +
                     QLatin1Char(column + 1 < lstDetails_->columnCount() ? '\t' : '\n');
    }
    QApplication::clipboard()->setText(lines);
}

} // namespace ov
