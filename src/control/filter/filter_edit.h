// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace ov {

// Where one types the words that rows of the result list must show to stay.
class FilterEdit final : public QLineEdit {
    Q_OBJECT

public:
    explicit FilterEdit(QWidget* parent);

    void retranslate();

Q_SIGNALS:
    // Somebody is about to type.
    void entered();
    // Enter, or an arrow down: to the rows.
    void left();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace ov
