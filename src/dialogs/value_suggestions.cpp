// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/value_suggestions.h"

#include "widgets/text.h"

#include <QAbstractItemView>
#include <QCollator>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

namespace ov {

ValueSuggestions::ValueSuggestions(QObject* parent) : QObject(parent) {
    connect(&timer_, &QTimer::timeout, this, &ValueSuggestions::lookOn);
}

void ValueSuggestions::offerIn(QLineEdit& box) {
    QCompleter* completer = makeCompleter().release();
    completer->setParent(&box);
    box.setCompleter(completer);
    box.installEventFilter(this);
}

std::unique_ptr<QCompleter> ValueSuggestions::makeCompleter() {
    auto completer = std::make_unique<QCompleter>(&values_);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    return completer;
}

void ValueSuggestions::setFields(ValueSource* source, std::vector<std::int32_t> fields) {
    source_ = source;
    fields_ = std::move(fields);
    at_ = 0;
    if (source_ == nullptr || fields_.empty()) {
        timer_.stop();
        return;
    }
    show();
    timer_.start(0);
}

void ValueSuggestions::lookOn() {
    if (at_ >= fields_.size())
        return timer_.stop();
    const qsizetype before = source_->found(fields_[at_]).size();
    const std::int32_t field = fields_[at_];
    const bool goesOn = source_->lookOn(field);
    constexpr int pauseMs = 20;
    timer_.start(goesOn && source_->isWaiting(field) ? pauseMs : 0);
    const bool isShown = at_ == 0;
    at_ += goesOn ? 0 : 1;
    if (source_->found(field).size() == before)
        return;
    if (isShown)
        show();
    Q_EMIT grown(); // the last: it may bring other fields
}

void ValueSuggestions::show() {
    QStringList values = source_->found(fields_.front());
    QCollator order(widgets::languageLocale());
    order.setNumericMode(true);
    std::sort(values.begin(), values.end(), order);
    values_.setStringList(values);
}

bool ValueSuggestions::isPartOfValue(std::int32_t field, const QString& text) const {
    return source_ != nullptr && !source_->found(field).filter(text, Qt::CaseInsensitive).empty();
}

bool ValueSuggestions::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress ||
        static_cast<const QKeyEvent*>(event)->key() != Qt::Key_Down)
        return false;
    const auto* box = qobject_cast<QLineEdit*>(watched);
    QCompleter* completer = box->completer();
    completer->setCompletionPrefix(box->text());
    completer->complete();
    return true;
}

} // namespace ov
