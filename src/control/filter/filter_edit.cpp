// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/filter/filter_edit.h"

#include "dictation/typed/condition.h"
#include "support/language/filter_text_ids.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QKeyEvent>
#include <QStringList>
#include <QToolTip>
#include <string>

namespace ov {

namespace {

// Empty without any.
QString problemOf(const modDictation::FilterReading& reading) {
    if (reading.isTooLong)
        return widgets::text(text_id::filterHasTooMany,
                             {std::to_string(modDictation::mostCriteria)});
    if (reading.leftOut.empty())
        return {};
    QStringList parts;
    for (const std::string& part : reading.leftOut)
        parts << widgets::toQt(part);
    QString all = parts.join(QStringLiteral(", "));
    constexpr qsizetype most = 200;
    if (all.size() > most)
        all = all.left(most) + QStringLiteral("…");
    return widgets::text(text_id::filterLeavesOut, {widgets::toUtf8(all)});
}

} // namespace

FilterEdit::FilterEdit(QWidget* parent) : QLineEdit(parent) {
    setObjectName(QStringLiteral("txtResultFilter"));
    setClearButtonEnabled(true);
    constexpr int widest = 320;
    setMaximumWidth(widest);
    widgets::setSpokenName(*this, text_id::filterName);
}

void FilterEdit::retranslate() {
    setPlaceholderText(widgets::text(text_id::filterPlaceholder));
    describe();
}

void FilterEdit::tell(const modDictation::FilterReading& reading) {
    reading_ = reading;
    describe();
}

void FilterEdit::describe() {
    const QString before = toolTip();
    const QString problem = problemOf(reading_);
    setToolTip(problem.isEmpty() ? widgets::text(text_id::filterTip)
                                 : widgets::toolTipText(problem));
    setAccessibleDescription(problem.isEmpty() ? widgets::text(text_id::filterTip) : problem);
    if (toolTip() != before && underMouse())
        QToolTip::hideText(); // which would go on saying what was
}

void FilterEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    Q_EMIT entered();
}

void FilterEdit::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        Q_EMIT left();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace ov
