// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/empty_state.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QVBoxLayout>

namespace ov {

EmptyState::EmptyState(QAbstractItemView& list) : QWidget(list.viewport()), list_(list) {
    label_.setObjectName(QStringLiteral("lblListHint"));
    label_.setTextFormat(Qt::PlainText);
    label_.setAlignment(Qt::AlignCenter);
    label_.setWordWrap(true);
    button_.setAutoDefault(false);
    auto* column = new QVBoxLayout(this);
    column->addStretch(1);
    column->addWidget(&label_);
    column->addWidget(&button_, 0, Qt::AlignHCenter);
    column->addStretch(1);
    list.viewport()->installEventFilter(this);
    const QAbstractItemModel* model = list.model();
    connect(model, &QAbstractItemModel::modelReset, this, &EmptyState::follow);
    connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyState::follow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyState::follow);
    say({}, false);
}

void EmptyState::say(const QString& text, bool offersButton) {
    label_.setText(text);
    button_.setVisible(offersButton);
    follow();
}

void EmptyState::follow() {
    setGeometry(list_.viewport()->rect());
    setVisible(list_.model()->rowCount() == 0 && !label_.text().isEmpty());
}

bool EmptyState::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        follow();
    return QWidget::eventFilter(watched, event);
}

} // namespace ov
