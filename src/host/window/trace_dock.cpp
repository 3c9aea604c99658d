// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/window/trace_dock.h"

#include "host/texts.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <QShortcut>
#include <QTime>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

constexpr int mostLines = 1000;
constexpr int timeColumn = 0;
constexpr int textColumn = 1;

} // namespace

TraceDock::TraceDock(const Texts& texts, QWidget* parent) : QDockWidget(parent), texts_(texts) {
    setObjectName(u"traceDock"_s); // under this name its place is remembered
    lines_.setObjectName(u"traceLines"_s);
    lines_.setRootIsDecorated(false);
    lines_.setUniformRowHeights(true);
    lines_.setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContentsOnFirstShow);
    lines_.setSelectionMode(QAbstractItemView::ExtendedSelection);
    lines_.header()->setSectionResizeMode(timeColumn, QHeaderView::ResizeToContents);
    auto* copyKeys =
        new QShortcut(QKeySequence::Copy, &lines_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(copyKeys, &QShortcut::activated, this, &TraceDock::copy);
    connect(&copy_, &QPushButton::clicked, this, &TraceDock::copy);
    connect(&clear_, &QPushButton::clicked, &lines_, &QTreeWidget::clear);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(&copy_);
    buttons->addWidget(&clear_);
    buttons->addStretch();
    auto* content = new QWidget(this);
    auto* layout = new QHBoxLayout(content);
    layout->addWidget(&lines_, 1);
    layout->addLayout(buttons);
    setWidget(content);
    connect(&texts_, &Texts::changed, this, &TraceDock::translate);
    translate();
}

void TraceDock::add(const QString& text) {
    const QScrollBar* bar = lines_.verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    lines_.addTopLevelItem(
        new QTreeWidgetItem({QTime::currentTime().toString(u"HH:mm:ss.zzz"), text}));
    if (lines_.topLevelItemCount() > mostLines)
        delete lines_.takeTopLevelItem(0);
    if (atEnd)
        lines_.scrollToBottom();
}

void TraceDock::copy() const {
    const bool all = lines_.selectedItems().isEmpty();
    QString text;
    for (int i = 0; i < lines_.topLevelItemCount(); ++i) {
        const QTreeWidgetItem* line = lines_.topLevelItem(i);
        if (all || line->isSelected())
            text += line->text(timeColumn) + u'\t' + line->text(textColumn) + u'\n';
    }
    QApplication::clipboard()->setText(text);
}

void TraceDock::translate() {
    setWindowTitle(texts_(Text::traceDock));
    lines_.setHeaderLabels({texts_(Text::traceTime), texts_(Text::traceText)});
    lines_.setAccessibleName(texts_(Text::traceDock));
    copy_.setText(texts_(Text::copy));
    clear_.setText(texts_(Text::clear));
}

} // namespace ov::host
