// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/filter/filter_words.h"

#include <QLineEdit>

namespace ov {

// Where one types what rows of the result list must meet to stay.
class FilterEdit final : public QLineEdit {
    Q_OBJECT

public:
    explicit FilterEdit(QWidget* parent);

    void retranslate();
    // Its tooltip says what of it could not be understood.
    void tell(const modDictation::FilterReading& reading);

Q_SIGNALS:
    // Somebody is about to type.
    void entered();
    // Enter, or an arrow down: to the rows.
    void left();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void describe();

    modDictation::FilterReading reading_;
};

} // namespace ov
