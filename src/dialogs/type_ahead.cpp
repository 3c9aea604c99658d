// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/type_ahead.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>

namespace ov {

namespace {

// Lower is better.
enum Fit { whole, beginning, word, inside, none };

Fit fitOf(const QString& entry, const QString& typed) {
    if (entry.compare(typed, Qt::CaseInsensitive) == 0)
        return whole;
    if (entry.startsWith(typed, Qt::CaseInsensitive))
        return beginning;
    if (entry.contains(QLatin1Char(' ') + typed, Qt::CaseInsensitive))
        return word;
    return entry.contains(typed, Qt::CaseInsensitive) ? inside : none;
}

bool isText(const QKeyEvent& key) {
    return !key.text().isEmpty() && key.text().front().isPrint() &&
           (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
}

} // namespace

TypeAhead::TypeAhead(QComboBox& list) : QObject(&list), list_(list) {
    list.installEventFilter(this);
    list.view()->installEventFilter(this);
}

bool TypeAhead::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        typed_.clear();
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<QKeyEvent&>(*event);
    return isText(key) && type(key.text());
}

// False when it is for the list itself.
bool TypeAhead::type(const QString& text) {
    if (!sinceKey_.isValid() || sinceKey_.elapsed() > QApplication::keyboardInputInterval())
        typed_.clear();
    if (typed_.isEmpty() && text == QLatin1String(" "))
        return false;
    sinceKey_.start();
    typed_ += text;
    if (const int entry = entryMeant(); entry >= 0)
        choose(entry);
    else if (typed_.count(typed_.front(), Qt::CaseInsensitive) == typed_.size())
        choose(nextEntryWith(typed_.front()));
    return true;
}

int TypeAhead::entryMeant() const {
    int best = -1;
    Fit bestFit = none;
    for (int i = 0; i < list_.count(); ++i)
        if (const Fit fit = fitOf(list_.itemText(i), typed_); fit < bestFit) {
            best = i;
            bestFit = fit;
        }
    return best;
}

int TypeAhead::nextEntryWith(QChar letter) const {
    for (int i = 1; i <= list_.count(); ++i) {
        const int entry = (current() + i) % list_.count();
        if (list_.itemText(entry).startsWith(letter, Qt::CaseInsensitive))
            return entry;
    }
    return -1;
}

int TypeAhead::current() const {
    return list_.view()->isVisible() ? list_.view()->currentIndex().row() : list_.currentIndex();
}

// An open list is only moved in: what counts is chosen when it closes.
void TypeAhead::choose(int entry) {
    if (entry < 0)
        return;
    if (list_.view()->isVisible())
        list_.view()->setCurrentIndex(
            list_.model()->index(entry, list_.modelColumn(), list_.rootModelIndex()));
    else
        list_.setCurrentIndex(entry);
}

} // namespace ov
