// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

class QAbstractItemView;

namespace ov {

// What a list says in its middle while it has no rows, and a button for what helps then.
class EmptyState final : public QWidget {
    Q_OBJECT

public:
    // A child of the list's viewport; it comes and goes with the rows of the list's model.
    explicit EmptyState(QAbstractItemView& list);

    void say(const QString& text, bool offersButton);
    QPushButton& button() { return button_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    QAbstractItemView& list_;
    QLabel label_;
    QPushButton button_;
};

} // namespace ov
