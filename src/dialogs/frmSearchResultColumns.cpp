// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmSearchResultColumns.h"

#include "support/language/help_text_ids.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/first_size.h"
#include "widgets/icons.h"
#include "widgets/legible.h"
#include "widgets/text.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <utility>

namespace ov {

using widgets::toQt;

namespace {

std::int32_t fieldOf(const QListWidgetItem& item) {
    return item.data(Qt::UserRole).toInt();
}

// -1 without a selection: a list that merely has the focus has a current row too.
int selectedRow(const QListWidget& list) {
    const QList<QListWidgetItem*> selected = list.selectedItems();
    return selected.isEmpty() ? -1 : list.row(selected.first());
}

QListWidgetItem* entryOf(const modDictation::SearchField& field) {
    auto* entry = new QListWidgetItem(toQt(field.Caption));
    entry->setData(Qt::UserRole, field.Id);
    return entry;
}

// A list with its heading above it.
QVBoxLayout* titled(QLabel* title, QListWidget& list, std::int32_t textId) {
    widgets::setCaption(*title, textId);
    title->setBuddy(&list);
    widgets::setSpokenName(list, textId);
    auto* column = new QVBoxLayout;
    column->addWidget(title);
    column->addWidget(&list, 1);
    return column;
}

// Buttons one below the other, in the middle.
QVBoxLayout* stacked(const std::array<QPushButton*, 2>& buttons) {
    auto* column = new QVBoxLayout;
    column->addStretch(1);
    for (QPushButton* button : buttons)
        column->addWidget(button);
    column->addStretch(1);
    return column;
}

void setUp(QPushButton& button, const QString& name, std::int32_t textId, const char* iconName) {
    button.setObjectName(name);
    button.setIcon(widgets::icon(iconName));
    widgets::fitIcon(button);
    button.setAutoDefault(false);
    widgets::setCaption(button, textId);
}

// A button that is disabled hands the focus to the next one, where a second press of the same key
// would undo the first: `next` gets it instead.
void enable(QPushButton& button, bool enabled, QWidget& next) {
    if (!enabled && button.window()->focusWidget() == &button)
        next.setFocus();
    button.setEnabled(enabled);
}

// Lists are filled anew while the user looks at them: no flicker in between.
class UpdatesOff {
public:
    explicit UpdatesOff(QWidget& widget) : widget_(widget) { widget_.setUpdatesEnabled(false); }
    ~UpdatesOff() { widget_.setUpdatesEnabled(true); }
    UpdatesOff(const UpdatesOff&) = delete;
    UpdatesOff& operator=(const UpdatesOff&) = delete;

private:
    QWidget& widget_;
};

} // namespace

frmSearchResultColumns::frmSearchResultColumns(QWidget* parent)
    : OneUseDialog(parent, "frmSearchResultColumns"),
      lblLabel_(new QLabel(this)),
      lblOrder_(new QLabel(this)),
      lblLeft_(new QLabel(this)),
      lstLeft_(new QListWidget(this)),
      cmdTransfer_{new QPushButton(this), new QPushButton(this)},
      lblRight_(new QLabel(this)),
      lstRight_(new QListWidget(this)),
      cmdUpDown_{new QPushButton(this), new QPushButton(this)},
      cmdFold_(new QToolButton(this)),
      lstNonCustomizable_(new QListWidget(this)),
      cmdDefault_(new QPushButton(this)) {
    buildWindow();
    connectAll();
}

void frmSearchResultColumns::buildWindow() {
    lblLabel_->setObjectName(QStringLiteral("lblLabel"));
    lstLeft_->setObjectName(QStringLiteral("lstLeft"));
    lstRight_->setObjectName(QStringLiteral("lstRight"));
    lstNonCustomizable_->setObjectName(QStringLiteral("lstNonCustomizable"));
    setUp(*cmdTransfer_[0], widgets::indexedName("cmdTransfer", 0), text_id::addColumn, "right");
    setUp(*cmdTransfer_[1], widgets::indexedName("cmdTransfer", 1), text_id::removeColumn, "left");
    setUp(*cmdUpDown_[0], widgets::indexedName("cmdUpDown", 0), text_id::moveUp, "up");
    setUp(*cmdUpDown_[1], widgets::indexedName("cmdUpDown", 1), text_id::moveDown, "down");
    widgets::setCaption(*this, text_id::columnsTitle);
    widgets::setCaption(*lblLabel_, text_id::columnsHint);
    lblLabel_->setWordWrap(true);
    lblOrder_->setObjectName(QStringLiteral("lblOrder"));
    widgets::setCaption(*lblOrder_, text_id::columnsOrderHint);
    lblOrder_->setWordWrap(true);
    widgets::setHint(*lblOrder_);
    setUp(*cmdDefault_, QStringLiteral("cmdDefault"), text_id::defaultColumns, "columns");

    auto* column = new QVBoxLayout(this);
    column->addWidget(lblLabel_);
    auto* grid = new QGridLayout;
    addLists(*grid);
    column->addLayout(grid, 1);
    column->addWidget(lblOrder_);
    addFold(*column);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdDefault_);
    buttons->addStretch(1);
    buttons->addWidget(makeButtons());
    column->addLayout(buttons);
}

// What cannot be chosen is of interest only to who misses it.
void frmSearchResultColumns::addFold(QBoxLayout& column) {
    cmdFold_->setObjectName(QStringLiteral("cmdFold"));
    cmdFold_->setCheckable(true);
    cmdFold_->setAutoRaise(true);
    cmdFold_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    widgets::setCaption(*cmdFold_, text_id::fixedFields);
    widgets::setSpokenName(*lstNonCustomizable_, text_id::fixedFields);
    constexpr int lines = 4;
    lstNonCustomizable_->setFixedHeight(lines * (fontMetrics().lineSpacing() + 3));
    lstNonCustomizable_->setSelectionMode(QAbstractItemView::NoSelection);
    column.addWidget(cmdFold_);
    column.addWidget(lstNonCustomizable_);
    fold(false);
}

void frmSearchResultColumns::fold(bool open) {
    cmdFold_->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
    lstNonCustomizable_->setVisible(open);
}

void frmSearchResultColumns::addLists(QGridLayout& grid) {
    grid.addLayout(titled(lblLeft_, *lstLeft_, text_id::availableFields), 0, 0);
    grid.addLayout(stacked(cmdTransfer_), 0, 1);
    grid.addLayout(titled(lblRight_, *lstRight_, text_id::shownColumns), 0, 2);
    grid.addLayout(stacked(cmdUpDown_), 0, 3);
    grid.setColumnStretch(0, 1);
    grid.setColumnStretch(2, 1);
    grid.setRowStretch(0, 1);
}

void frmSearchResultColumns::connectAll() {
    const auto toRight = [this] { transfer(*lstLeft_, *lstRight_); };
    const auto toLeft = [this] { transfer(*lstRight_, *lstLeft_); };
    connect(cmdTransfer_[0], &QPushButton::clicked, this, toRight);
    connect(cmdTransfer_[1], &QPushButton::clicked, this, toLeft);
    connect(lstLeft_, &QListWidget::itemDoubleClicked, this, toRight);
    connect(lstRight_, &QListWidget::itemDoubleClicked, this, toLeft);
    connect(cmdUpDown_[0], &QPushButton::clicked, this, [this] { moveSelected(-1); });
    connect(cmdUpDown_[1], &QPushButton::clicked, this, [this] { moveSelected(1); });
    connect(cmdDefault_, &QPushButton::clicked, this, &frmSearchResultColumns::useDefaults);
    connect(cmdFold_, &QToolButton::toggled, this, &frmSearchResultColumns::fold);
    connect(lstLeft_, &QListWidget::itemSelectionChanged, this,
            &frmSearchResultColumns::enableButtons);
    connect(lstRight_, &QListWidget::itemSelectionChanged, this,
            &frmSearchResultColumns::enableButtons);
}

void frmSearchResultColumns::load() {
    retranslate();
    fillLists([](const modDictation::SearchField& field) { return field.Visible; });
    enableButtons();
    constexpr QSize comfortable(560, 480);
    widgets::resizeOnScreen(*this, comfortable);
    lstLeft_->setFocus();
}

void frmSearchResultColumns::fillLists(
    const std::function<bool(const modDictation::SearchField&)>& isShown) {
    for (QListWidget* list : {lstLeft_, lstRight_, lstNonCustomizable_})
        list->clear();
    for (const modDictation::SearchField& field : modDictation::searchFields())
        if (!field.Selectable)
            lstNonCustomizable_->addItem(entryOf(field));
        else
            (isShown(field) ? lstRight_ : lstLeft_)->addItem(entryOf(field));
}

void frmSearchResultColumns::useDefaults() {
    fillLists([](const modDictation::SearchField& field) {
        return modDictation::fieldDefinition(field.Id).visible;
    });
    enableButtons();
}

void frmSearchResultColumns::transfer(QListWidget& source, QListWidget& target) {
    const int row = selectedRow(source);
    if (row < 0)
        return;
    target.addItem(source.takeItem(row));
    source.setCurrentRow(std::min(row, source.count() - 1));
    target.setCurrentRow(target.count() - 1);
}

// The buttons are enabled only where there is a place to move to.
void frmSearchResultColumns::moveSelected(int distance) {
    const int row = selectedRow(*lstRight_);
    const UpdatesOff still(*lstRight_);
    lstRight_->insertItem(row + distance, lstRight_->takeItem(row));
    lstRight_->setCurrentRow(row + distance);
}

void frmSearchResultColumns::enableButtons() {
    const int row = selectedRow(*lstRight_);
    enable(*cmdTransfer_[0], selectedRow(*lstLeft_) >= 0, *lstRight_);
    enable(*cmdTransfer_[1], row >= 0, *lstLeft_);
    enable(*cmdUpDown_[0], row > 0, *lstRight_);
    enable(*cmdUpDown_[1], row >= 0 && row < lstRight_->count() - 1, *lstRight_);
}

void frmSearchResultColumns::cmdOK_Click() {
    const auto fields = modDictation::searchFields();
    for (modDictation::SearchField& field : fields)
        if (field.Selectable)
            field.Visible = false;
    for (int i = 0; i < lstRight_->count(); ++i)
        fields[static_cast<std::size_t>(fieldOf(*lstRight_->item(i)))].Visible = true;
    accept();
}

void frmSearchResultColumns::retranslate() {
    widgets::translate(*this);
    for (QListWidget* list : {lstLeft_, lstRight_, lstNonCustomizable_})
        for (int i = 0; i < list->count(); ++i)
            list->item(i)->setText(
                toQt(modDictation::GetSearchFieldCaption(fieldOf(*list->item(i)), true)));
}

} // namespace ov
