// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmCriteria.h"

#include "dialogs/type_ahead.h"
#include "support/language/text_ids.h"
#include "support/modUtil.h"
#include "widgets/captions.h"
#include "widgets/first_size.h"
#include "widgets/help/guide_window.h"
#include "widgets/help/help_keys.h"
#include "widgets/text.h"

#include <QScreen>

namespace ov {

using modDictation::ValueKind;
namespace field_id = modDictation::field_id;
using widgets::toQt;

namespace {

constexpr std::int32_t presetField = 4; // of a new criterion: the author is looked for most

// Selects the entry that carries `id`; none when there is no such entry.
void select(QComboBox& list, std::int32_t id) {
    list.setCurrentIndex(list.findData(id));
}

// The id of the selected entry, 0 without one.
std::int32_t selectedId(const QComboBox& list) {
    return list.currentIndex() < 0 ? 0 : list.currentData().toInt();
}

} // namespace

frmCriteria::frmCriteria(QWidget* parent)
    : OneUseDialog(parent, "frmCriteria"),
      lblField_(new QLabel(this)),
      lblOperator_(new QLabel(this)),
      lblValue_(new QLabel(this)),
      cboField_(new QComboBox(this)),
      cboOperator_(new QComboBox(this)),
      places_{new ValuePlace(0, this), new ValuePlace(1, this)},
      lblValueAnd_(new QLabel(this)),
      lblValueOhne_(new QLabel(this)),
      lblOperatorOhne_(new QLabel(this)),
      lblHint_(new QLabel(this)),
      suggestions_(this) {
    buildWindow();
    connectAll();
    widgets::setChapter(*this, widgets::chapter::criteria);
}

void frmCriteria::connectAll() {
    new TypeAhead(*cboField_);
    new TypeAhead(*cboOperator_);
    connect(cboField_, &QComboBox::currentIndexChanged, this, &frmCriteria::fieldChanged);
    connect(cboOperator_, &QComboBox::currentIndexChanged, this, &frmCriteria::operatorChanged);
    for (const ValuePlace* place : places_) {
        connect(place, &ValuePlace::changed, this, &frmCriteria::markChanged);
        connect(place, &ValuePlace::changed, this, &frmCriteria::showHint);
        suggestions_.offerIn(place->textBox());
    }
    connect(&suggestions_, &ValueSuggestions::grown, this, &frmCriteria::showHint);
}

void frmCriteria::load() {
    loading_ = true;
    criterion_ = modDictation::ParseCriteriaString(CriteriaString);
    retranslate();
    fillFields();
    showCriterion();
    loading_ = false;
    constexpr int comfortable = 460;
    widgets::resizeOnScreen(*this, {comfortable, 0});
    place();
    cboField_->setFocus();
}

// A place that was asked for is taken as it is, also off the screen: the host may know screens
// that are not there yet.
void frmCriteria::place() {
    if (StartLeft != 0 && StartTop != 0) {
        move(StartLeft, StartTop);
        return;
    }
    const QWidget* owner = parentWidget() != nullptr ? parentWidget() : this;
    const QRect area = owner->screen()->geometry();
    move(area.left() + area.width() / 2 - width() / 2,
         area.top() + area.height() / 2 - height() / 2);
}

void frmCriteria::fillFields() {
    cboField_->addItem(toQt(modDictation::GetSearchFieldCaption(modDictation::noField, true)), 0);
    for (const modDictation::SearchField& field : modDictation::searchFields())
        if (field.Selectable)
            cboField_->addItem(toQt(field.Caption), field.Id);
}

void frmCriteria::showCriterion() {
    if (CriteriaString.empty()) {
        select(*cboField_, presetField);
        return;
    }
    select(*cboField_, criterion_.Field);
    select(*cboOperator_, criterion_.Operator);
    showValues();
}

void frmCriteria::showValues() {
    const ValueKind kind = currentField().ValueKind;
    places_[0]->setValue(kind, criterion_.Value1);
    places_[1]->setValue(kind, criterion_.Value2);
}

const modDictation::SearchField& frmCriteria::currentField() const {
    const auto fields = modDictation::searchFields();
    return fields[static_cast<std::size_t>(selectedId(*cboField_))];
}

void frmCriteria::fieldChanged() {
    const modDictation::SearchField& field = currentField();
    const QSignalBlocker quiet(cboOperator_);
    cboOperator_->clear();
    for (const std::int32_t id : modDictation::offeredOperators(field.ValueType))
        cboOperator_->addItem(toQt(modDictation::GetOperatorText(id)), id);
    for (ValuePlace* place : places_)
        place->prepare(field);
    suggestValues();
    showValueControls();
    markChanged();
}

void frmCriteria::operatorChanged() {
    showValueControls();
    markChanged();
}

void frmCriteria::showValueControls() {
    const bool hasOperator = cboOperator_->count() > 0;
    const int values =
        hasOperator ? modDictation::operatorValueCount(selectedId(*cboOperator_)) : 0;
    for (int i = 0; i < 2; ++i)
        places_[static_cast<std::size_t>(i)]->showKind(i < values ? currentField().ValueKind
                                                                  : ValueKind::none);
    lblValueAnd_->setVisible(values == 2);
    lblValueOhne_->setVisible(hasOperator && values == 0);
    lblOperatorOhne_->setVisible(!hasOperator);
    lblValue_->setVisible(values > 0);
    lblValue_->setBuddy(places_[0]->shownControl());
    cboOperator_->setEnabled(hasOperator);
    cmdOK()->setEnabled(hasOperator);
    showHint();
}

// Of the authors it is asked too, to see when a name is typed where a code is looked for.
void frmCriteria::suggestValues() {
    const modDictation::SearchField& field = currentField();
    std::vector<std::int32_t> fields;
    if (field.ValueKind == ValueKind::textBox)
        fields.push_back(field.Id);
    if (field.Id == field_id::authorCode)
        fields.push_back(field_id::author);
    suggestions_.setFields(Seen, std::move(fields));
}

void frmCriteria::showHint() {
    const QString text = hint();
    if (text == lblHint_->text())
        return;
    lblHint_->setText(text);
    for (const ValuePlace* place : places_)
        if (QWidget* shown = place->shownControl())
            shown->setAccessibleDescription(text);
}

QString frmCriteria::hint() const {
    const QWidget* shown = places_[0]->shownControl();
    if (shown == nullptr)
        return {};
    if (currentField().ValueKind == ValueKind::date)
        return widgets::text(text_id::dateHint);
    const QString typed = places_[0]->textBox().text().trimmed();
    if (currentField().Id != field_id::authorCode || typed.isEmpty() ||
        suggestions_.isPartOfValue(field_id::authorCode, typed))
        return {};
    constexpr int longestCode = 4; // where nothing is known of the store's
    const bool isName = suggestions_.isPartOfValue(field_id::author, typed) ||
                        typed.size() > longestCode || typed.contains(QLatin1Char(' '));
    return isName ? widgets::text(text_id::nameAsCodeHint,
                                  {modDictation::GetSearchFieldCaption(field_id::author, true)})
                  : QString();
}

// Also for another field or operator: what was chosen must not be lost because no value changed.
void frmCriteria::markChanged() {
    changed_ = changed_ || !loading_;
}

void frmCriteria::cmdOK_Click() {
    if (EditMode && !changed_) {
        reject();
    } else if (valuesAreValid()) {
        CriteriaString =
            modDictation::BuildCriteriaString(selectedId(*cboField_), selectedId(*cboOperator_),
                                              places_[0]->value(), places_[1]->value());
        accept();
    }
}

bool frmCriteria::valuesAreValid() {
    if (currentField().ValueKind == ValueKind::textBox)
        for (const ValuePlace* place : places_)
            if (place->shownControl() != nullptr && place->value().empty())
                return refuse(text_id::valueRequired, place->shownControl());
    return datesAreReadable() && (places_[1]->shownControl() == nullptr || rangeIsInOrder());
}

bool frmCriteria::datesAreReadable() {
    for (ValuePlace* place : places_)
        if (!place->takeTyped())
            return refuse(text_id::noDate, place->shownControl());
    return true;
}

bool frmCriteria::rangeIsInOrder() {
    const ValuePlace& first = *places_[0];
    const ValuePlace& second = *places_[1];
    const ValueKind kind = currentField().ValueKind;
    if (kind == ValueKind::time && second.time() < first.time())
        return refuse(text_id::timesReversed, first.shownControl());
    if (kind == ValueKind::date && first.date() > second.date())
        return refuse(text_id::datesReversed, first.shownControl());
    return true;
}

// Tells what is wrong and stays open.
bool frmCriteria::refuse(std::int32_t textId, QWidget* focus) {
    modUtil::ShowMessage(textId, platform::MessageIcon::information, {}, this);
    focus->setFocus();
    return false;
}

// What is chosen stays; only its texts change.
void frmCriteria::retranslate() {
    widgets::setCaption(*this, EditMode ? text_id::editCriterionTitle : text_id::newCriterionTitle);
    widgets::translate(*this);
    for (int i = 0; i < cboField_->count(); ++i)
        cboField_->setItemText(
            i, toQt(modDictation::GetSearchFieldCaption(cboField_->itemData(i).toInt(), true)));
    for (int i = 0; i < cboOperator_->count(); ++i)
        cboOperator_->setItemText(
            i, toQt(modDictation::GetOperatorText(cboOperator_->itemData(i).toInt())));
    for (ValuePlace* place : places_)
        place->retranslate();
    showHint();
}

} // namespace ov
