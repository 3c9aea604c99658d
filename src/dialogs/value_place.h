// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/date_box.h"
#include "dictation/field_table.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimeEdit>
#include <string>

namespace ov {

// One place for a value of a criterion: a text box, a list of codes, a date picker and a time
// picker, of which at most one is shown. Values travel as a criterion stores them: text as typed,
// codes as their number, dates as "2026-11-21", times as "HH:mm:ss".
class ValuePlace final : public QLabel {
    Q_OBJECT

public:
    // `index` is 0 for the first value, 1 for the second.
    ValuePlace(int index, QWidget* parent);

    // Makes the controls ready for a field: its codes, its greatest length, the characters that
    // may be typed, and where the pickers start.
    void prepare(const modDictation::SearchField& field);

    // Shows the control of that kind alone.
    void showKind(modDictation::ValueKind kind);
    // The control that is shown, nullptr for none.
    QWidget* shownControl() const;

    // A value that the control cannot hold (no date, an unknown code) leaves it as it is, a list
    // without a selection.
    void setValue(modDictation::ValueKind kind, const std::string& value);
    // Of the control that is shown; text is trimmed. Empty for none.
    std::string value() const;

    // Shows codes and calendar in the current language; to be called after widgets::translate().
    void retranslate();

    // False when a date picker is shown in which something stands that is no date.
    bool takeTyped() { return shownControl() != dtpValue_ || dtpValue_->takeTyped(); }
    QLineEdit& textBox() const { return *txtValue_; }

    QDate date() const { return dtpValue_->date(); }
    QTime time() const { return dtpValueTime_->time(); }

Q_SIGNALS:
    // The user, or setValue(), changed the value of a control.
    void changed();

private:
    QWidget* control(modDictation::ValueKind kind) const;
    void hideAll();
    void setKeyFilter(modDictation::ValueType type);

    QLineEdit* txtValue_;
    QComboBox* cboValue_;
    DateBox* dtpValue_;
    QTimeEdit* dtpValueTime_;
};

} // namespace ov
