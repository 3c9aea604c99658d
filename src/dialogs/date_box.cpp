// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/date_box.h"

#include "dictation/typed_date.h"
#include "platform/locale.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

namespace ov {

namespace {

QDate readWords(const QString& text) {
    const modDictation::DayWords words{modLanguage::GetText(text_id::dayYesterday),
                                       modLanguage::GetText(text_id::dayToday),
                                       modLanguage::GetText(text_id::dayTomorrow)};
    const QDate today = QDate::currentDate();
    const auto day = modDictation::readTypedDate(
        widgets::toUtf8(text), {today.year(), today.month(), today.day(), 0, 0, 0}, words);
    return day ? QDate(day->year, day->month, day->day) : QDate();
}

bool movesOrEdits(const QKeyEvent& key) {
    switch (key.key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
        return true;
    default:
        return !key.text().isEmpty() && key.text().front().isPrint();
    }
}

} // namespace

DateBox::DateBox(QWidget* parent) : QDateEdit(parent) {
    setCalendarPopup(true);
}

// A day alone is one of the month that is shown.
QDate DateBox::readDay(const QString& text) const {
    bool isDay = false;
    const int day = text.trimmed().toInt(&isDay);
    constexpr int mostDigits = 2;
    if (isDay && text.trimmed().size() <= mostDigits && text.at(0).isDigit())
        return {date().year(), date().month(), day};
    return readWords(text);
}

bool DateBox::isTyping() const {
    return typing_ && lineEdit()->text() != textFromDateTime(dateTime());
}

bool DateBox::takeTyped() {
    const QString text = lineEdit()->text();
    int position = 0;
    QString whole = text;
    if (!isTyping() && QDateEdit::validate(whole, position) == QValidator::Acceptable)
        return true;
    const QDate day = readDay(text);
    if (!day.isValid())
        return !isTyping();
    typing_ = false;
    const QSignalBlocker quiet(lineEdit()); // which would make sense of it part by part
    lineEdit()->setText(textFromDateTime(day.startOfDay()));
    setDate(day);
    return true;
}

// In the year's place "-" parts a date in some countries: there it goes on with the next part.
bool DateBox::beginsWords(const QKeyEvent& key) const {
    if (key.text().isEmpty() || (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0)
        return false;
    const QChar typed = key.text().front();
    const bool atBeginning = lineEdit()->hasSelectedText() && lineEdit()->selectionStart() == 0;
    return typed.isLetter() || typed == QLatin1Char('+') || (typed.isDigit() && atBeginning) ||
           (typed == QLatin1Char('-') &&
            (lineEdit()->hasSelectedText() || platform::locale().dateSeparator != '-'));
}

// The line edit alone: parts of a date are not looked for in words.
void DateBox::type(QKeyEvent& key) {
    {
        const QSignalBlocker quiet(lineEdit());
        lineEdit()->event(&key);
    }
    Q_EMIT typed();
}

void DateBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    typing_ = isTyping(); // the calendar may have ended it
    if (!typing_ && beginsWords(*event)) {
        typing_ = true;
        lineEdit()->selectAll();
        type(*event);
    } else if (typing_ && movesOrEdits(*event)) {
        type(*event);
    } else if (enter && !takeTyped()) {
        event->ignore(); // the dialog's, which tells what is wrong
    } else {
        if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
            takeTyped();
        QDateEdit::keyPressEvent(event);
    }
}

// What means no day stays as it stands, to be mended.
void DateBox::focusInEvent(QFocusEvent* event) {
    if (!isTyping()) {
        QDateEdit::focusInEvent(event);
        return;
    }
    const QSignalBlocker quiet(lineEdit());
    lineEdit()->event(event);
}

void DateBox::focusOutEvent(QFocusEvent* event) {
    if (takeTyped())
        QDateEdit::focusOutEvent(event);
    else
        QWidget::focusOutEvent(event);
}

// What is typed is left as a whole, not part by part.
bool DateBox::focusNextPrevChild(bool next) {
    return isTyping() ? QWidget::focusNextPrevChild(next) : QDateEdit::focusNextPrevChild(next);
}

QValidator::State DateBox::validate(QString& input, int& position) const {
    if (!typing_)
        return QDateEdit::validate(input, position);
    return readDay(input).isValid() ? QValidator::Acceptable : QValidator::Intermediate;
}

QDateTime DateBox::dateTimeFromText(const QString& text) const {
    const QDate day = typing_ ? readDay(text) : QDate();
    return day.isValid() ? day.startOfDay() : QDateEdit::dateTimeFromText(text);
}

} // namespace ov
