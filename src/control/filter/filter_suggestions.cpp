// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/filter/filter_suggestions.h"

#include "dictation/field_table.h"
#include "widgets/text.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <utility>

namespace ov {

using modDictation::ValueKind;
using widgets::toQt;
using widgets::toUtf8;

namespace {

bool hasValues(std::int32_t field) {
    const ValueKind kind = modDictation::fieldDefinition(field).valueKind;
    return kind == ValueKind::textBox || kind == ValueKind::codeList;
}

} // namespace

// Not the line's own completer: that would write into it whatever one passes in the list.
FilterSuggestions::FilterSuggestions(QLineEdit& line, MakeSource makeSource)
    : QObject(&line),
      line_(line),
      makeSource_(std::move(makeSource)),
      values_(nullptr),
      completer_(values_.makeCompleter()),
      field_(modDictation::noField) {
    completer_->setWidget(&line);
    completer_->popup()->setObjectName(QStringLiteral("lstFilterValues"));
    completer_->popup()->installEventFilter(this); // before the completer's own
    line.installEventFilter(this);
    connect(&line, &QLineEdit::textEdited, this, &FilterSuggestions::offer);
    connect(&line, &QLineEdit::cursorPositionChanged, this, [this] {
        if (isOpen())
            offer();
    });
    connect(&values_, &ValueSuggestions::grown, this, &FilterSuggestions::showValues);
    connect(completer_.get(), qOverload<const QString&>(&QCompleter::highlighted), this,
            [this](const QString& value) { chosen_ = value; });
    connect(completer_.get(), qOverload<const QString&>(&QCompleter::activated), this,
            &FilterSuggestions::take);
}

void FilterSuggestions::forget() {
    stop();
    source_ = nullptr;
}

// Also ends the look for more.
void FilterSuggestions::stop() {
    field_ = modDictation::noField;
    values_.setFields(nullptr, {});
    completer_->popup()->hide();
}

bool FilterSuggestions::isOpen() const {
    return completer_->popup()->isVisible();
}

std::optional<modDictation::EnteredValue> FilterSuggestions::entered() const {
    const QString text = line_.text();
    return modDictation::enteredValueAt(toUtf8(text),
                                        toUtf8(text.left(line_.cursorPosition())).size());
}

void FilterSuggestions::offer() {
    if (taking_)
        return;
    const auto value = entered();
    if (!value || !hasValues(value->field))
        return stop();
    chosen_.clear();
    completer_->setCompletionPrefix(toQt(value->text));
    if (!source_)
        source_ = makeSource_();
    if (field_ != value->field)
        values_.setFields(source_.get(), {field_ = value->field});
    showValues();
}

// Not what is typed already. What is chosen stays so while more are found.
void FilterSuggestions::showValues() {
    const QString typed = completer_->completionPrefix();
    const bool isWhole = completer_->completionCount() == 1 &&
                         completer_->currentCompletion().compare(typed, Qt::CaseInsensitive) == 0;
    if (!line_.hasFocus())
        return stop();
    if (isWhole)
        return completer_->popup()->hide();
    const QString chosen = chosen_;
    completer_->complete();
    const QAbstractItemModel& shown = *completer_->completionModel();
    const auto places = shown.match(shown.index(0, 0), Qt::DisplayRole, chosen, 1,
                                    Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!chosen.isEmpty() && !places.isEmpty())
        completer_->popup()->setCurrentIndex(places.constFirst());
}

// As if it was typed, so that it can be undone.
void FilterSuggestions::take(const QString& value) {
    stop();
    const auto place = entered();
    if (!place)
        return;
    const std::string text = toUtf8(line_.text());
    const QString before = toQt(text.substr(0, place->start));
    const QString replaced = toQt(text.substr(place->start, place->end - place->start));
    const QScopedValueRollback taking(taking_, true);
    line_.setSelection(static_cast<int>(before.size()), static_cast<int>(replaced.size()));
    line_.insert(toQt(modDictation::quickValue(toUtf8(value))));
}

bool FilterSuggestions::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == &line_) {
        // A list that closes gives the keyboard back, too.
        if (type == QEvent::FocusIn &&
            static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
            forget();
        if (type == QEvent::Hide || (type == QEvent::FocusOut && !isOpen()))
            stop();
        return false;
    }
    // Beside the list, which closes it; what is found later would open it again.
    if (type == QEvent::MouseButtonPress && !completer_->popup()->underMouse())
        stop();
    if (type == QEvent::KeyPress)
        return isOpen() && pressed(static_cast<QKeyEvent&>(*event));
    if (type != QEvent::ShortcutOverride || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return false;
    event->accept(); // else the shortcut of that key would clear the line
    return true;
}

bool FilterSuggestions::pressed(QKeyEvent& key) {
    const bool takes =
        key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Tab;
    if (!takes && key.key() != Qt::Key_Escape)
        return false;
    const QModelIndex chosen = completer_->popup()->currentIndex();
    const QString value = chosen.data().toString();
    stop();
    if (takes && chosen.isValid())
        take(value);
    else if (takes)
        QCoreApplication::sendEvent(&line_, &key);
    return true;
}

} // namespace ov
