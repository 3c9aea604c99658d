// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/value_place.h"

#include "dictation/field_codes.h"
#include "dictation/field_date.h"
#include "dictation/search/criterion.h"
#include "platform/locale.h"
#include "support/language/text_ids.h"
#include "support/numbers.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QCalendarWidget>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>
#include <array>

namespace ov {

using modDictation::ValueKind;
using modDictation::ValueType;
using widgets::toQt;
using widgets::toUtf8;

namespace {

constexpr std::array kinds{ValueKind::textBox, ValueKind::codeList, ValueKind::date,
                           ValueKind::time};

// The characters that may be typed.
QString allowedText(ValueType type) {
    switch (type) {
    case ValueType::none:
        return QStringLiteral("(?!)"); // nothing at all
    case ValueType::time:
        return QStringLiteral("[0-9:]*");
    case ValueType::number:
        return QStringLiteral("[0-9]*");
    default:
        return QStringLiteral("(?s).*");
    }
}

// On one line and without the separator of criteria strings, also when it was pasted.
QString storable(QString text) {
    for (QChar& character : text)
        if (character < QLatin1Char(' '))
            character = QLatin1Char(' ');
    return text.trimmed();
}

QDate readDate(const std::string& value) {
    const auto date = platform::parseDate(value);
    if (!date)
        return {};
    return {date->year, date->month, date->day};
}

QTime readTime(const std::string& value) {
    const auto seconds = modDictation::readSeconds(value);
    if (!seconds || *seconds >= modDictation::secondsPerDay)
        return {};
    return QTime(0, 0).addSecs(*seconds);
}

} // namespace

ValuePlace::ValuePlace(int index, QWidget* parent)
    : QLabel(parent),
      txtValue_(new QLineEdit(this)),
      cboValue_(new QComboBox(this)),
      dtpValue_(new DateBox(this)),
      dtpValueTime_(new QTimeEdit(QTime(0, 0), this)) {
    setObjectName(widgets::indexedName("lblPlaceholder", index));
    txtValue_->setObjectName(widgets::indexedName("txtValue", index));
    cboValue_->setObjectName(widgets::indexedName("cboValue", index));
    dtpValue_->setObjectName(widgets::indexedName("dtpValue", index));
    dtpValueTime_->setObjectName(widgets::indexedName("dtpValueTime", index));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    for (const ValueKind kind : kinds) {
        widgets::setSpokenName(*control(kind),
                               index == 0 ? text_id::firstValue : text_id::secondValue);
        column->addWidget(control(kind));
    }
    dtpValue_->setDate(QDate::currentDate());
    dtpValue_->setDisplayFormat(widgets::shortDateFormat());
    dtpValueTime_->setDisplayFormat(QStringLiteral("HH:mm:ss"));

    connect(txtValue_, &QLineEdit::textChanged, this, &ValuePlace::changed);
    connect(cboValue_, &QComboBox::currentIndexChanged, this, &ValuePlace::changed);
    connect(dtpValue_, &QDateEdit::dateChanged, this, &ValuePlace::changed);
    connect(dtpValue_, &DateBox::typed, this, &ValuePlace::changed);
    connect(dtpValueTime_, &QTimeEdit::timeChanged, this, &ValuePlace::changed);
}

void ValuePlace::prepare(const modDictation::SearchField& field) {
    cboValue_->clear();
    for (const std::int32_t code : modDictation::fieldDefinition(field.Id).offeredCodes)
        cboValue_->addItem(toQt(modDictation::GetStatusText(code)), code);
    txtValue_->setMaxLength(modDictation::fieldDefinition(field.Id).greatestLength);
    setKeyFilter(field.ValueType);
    if (field.Id == modDictation::field_id::dictated || field.Id == modDictation::field_id::changed)
        dtpValue_->setDate(QDate::currentDate()); // a due date may be any day
    if (field.ValueKind == ValueKind::time)
        dtpValueTime_->setTime(QTime(0, 0));
}

// The week begins where the country's does; a calendar takes it from the language each time that
// this changes.
void ValuePlace::retranslate() {
    for (int i = 0; i < cboValue_->count(); ++i)
        cboValue_->setItemText(i,
                               toQt(modDictation::GetStatusText(cboValue_->itemData(i).toInt())));
    constexpr int sunday = 7;
    const int firstWeekday = platform::locale().firstWeekday;
    dtpValue_->calendarWidget()->setFirstDayOfWeek(
        static_cast<Qt::DayOfWeek>(firstWeekday == 0 ? sunday : firstWeekday));
}

void ValuePlace::setKeyFilter(ValueType type) {
    const auto* before = txtValue_->validator();
    txtValue_->setValidator(
        new QRegularExpressionValidator(QRegularExpression(allowedText(type)), txtValue_));
    delete before;
}

QWidget* ValuePlace::control(ValueKind kind) const {
    switch (kind) {
    case ValueKind::textBox:
        return txtValue_;
    case ValueKind::codeList:
        return cboValue_;
    case ValueKind::date:
        return dtpValue_;
    case ValueKind::time:
        return dtpValueTime_;
    case ValueKind::none:
        break;
    }
    return nullptr;
}

void ValuePlace::hideAll() {
    for (const ValueKind kind : kinds) {
        control(kind)->setVisible(false);
        control(kind)->setEnabled(false);
    }
    setVisible(false);
}

void ValuePlace::showKind(ValueKind kind) {
    hideAll();
    if (QWidget* shown = control(kind)) {
        shown->setEnabled(true);
        shown->setVisible(true);
        setVisible(true);
    }
}

QWidget* ValuePlace::shownControl() const {
    for (const ValueKind kind : kinds)
        if (control(kind)->isEnabledTo(this))
            return control(kind);
    return nullptr;
}

void ValuePlace::setValue(ValueKind kind, const std::string& value) {
    switch (kind) {
    case ValueKind::textBox:
        txtValue_->setText(toQt(value));
        break;
    case ValueKind::codeList:
        cboValue_->setCurrentIndex(value.empty() ? -1 : cboValue_->findData(leadingInt32(value)));
        break;
    case ValueKind::date:
        if (const QDate date = readDate(value); date.isValid())
            dtpValue_->setDate(date);
        break;
    case ValueKind::time:
        if (const QTime time = readTime(value); time.isValid())
            dtpValueTime_->setTime(time);
        break;
    case ValueKind::none:
        break;
    }
}

std::string ValuePlace::value() const {
    const QWidget* shown = shownControl();
    if (shown == nullptr)
        return {};
    if (shown == txtValue_)
        return toUtf8(storable(txtValue_->text()));
    if (shown == cboValue_)
        return cboValue_->currentIndex() < 0 ? std::string()
                                             : std::to_string(cboValue_->currentData().toInt());
    if (shown == dtpValue_)
        return platform::formatIsoDate({date().year(), date().month(), date().day(), 0, 0, 0});
    if (shown == dtpValueTime_)
        return toUtf8(time().toString(QStringLiteral("HH:mm:ss")));
    return {};
}

} // namespace ov
