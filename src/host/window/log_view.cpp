// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/window/log_view.h"

#include "host/paths.h"
#include "host/texts.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

constexpr int captionColumn = 0;
constexpr int valueColumn = 1;

QString pathText(const QByteArray& path) {
    return shownPath({path.data(), static_cast<std::size_t>(path.size())});
}

QTableWidgetItem* cell(const std::string& text) {
    return new QTableWidgetItem(QString::fromStdString(text));
}

} // namespace

LogView::LogView(const Texts& texts, QWidget* parent)
    : QDialog(parent),
      texts_(texts),
      copy_(buttons_.addButton(QString(), QDialogButtonBox::ActionRole)) {
    setObjectName(u"logView"_s);
    title_.setTextFormat(Qt::PlainText);
    title_.setWordWrap(true);
    title_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    facts_.setObjectName(u"facts"_s);
    facts_.setColumnCount(2);
    facts_.setEditTriggers(QAbstractItemView::NoEditTriggers);
    facts_.setSelectionBehavior(QAbstractItemView::SelectRows);
    facts_.setAlternatingRowColors(true);
    facts_.verticalHeader()->hide();
    facts_.horizontalHeader()->setStretchLastSection(true);
    facts_.setTabKeyNavigation(false);
    lines_.setObjectName(u"logLines"_s);
    lines_.setReadOnly(true);
    lines_.setLineWrapMode(QPlainTextEdit::NoWrap);
    linesLabel_.setBuddy(&lines_);
    buttons_.addButton(QDialogButtonBox::Close);
    connect(&buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copy_, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(asText()); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(&title_);
    layout->addWidget(&facts_, 3);
    layout->addWidget(&linesLabel_);
    layout->addWidget(&lines_, 2);
    layout->addWidget(&buttons_);
    resize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 36);
    connect(&texts_, &Texts::changed, this, &LogView::translate);
    translate();
}

void LogView::showNotes(const QByteArray& path, const LogNotes& notes) {
    path_ = path;
    fillFacts(notes);
    QStringList lines;
    for (const std::string& line : notes.lines)
        lines += QString::fromStdString(line);
    lines_.setPlainText(lines.join(u'\n'));
    lines_.moveCursor(QTextCursor::End); // the newest lines are what one looks for
    lines_.moveCursor(QTextCursor::StartOfLine);
    title_.setVisible(!path.isEmpty());
    facts_.setVisible(!path.isEmpty());
    translate();
}

void LogView::fillFacts(const LogNotes& notes) {
    facts_.setRowCount(static_cast<int>(notes.facts.size()));
    int row = 0;
    for (const DictationFact& fact : notes.facts) {
        facts_.setItem(row, captionColumn, cell(fact.caption));
        facts_.setItem(row, valueColumn, cell(fact.value));
        ++row;
    }
    facts_.resizeColumnToContents(captionColumn);
}

QString LogView::asText() const {
    QString text;
    if (!path_.isEmpty())
        text += pathText(path_) + "\n\n"_L1;
    for (int row = 0; row < facts_.rowCount(); ++row)
        text += facts_.item(row, captionColumn)->text() + u'\t' +
                facts_.item(row, valueColumn)->text() + u'\n';
    return text + u'\n' + lines_.toPlainText() + u'\n';
}

void LogView::translate() {
    setWindowTitle(texts_(Text::logViewTitle));
    title_.setText(texts_(Text::logViewOf, {pathText(path_)}));
    facts_.setHorizontalHeaderLabels({texts_(Text::caption), texts_(Text::value)});
    facts_.setAccessibleName(title_.text());
    linesLabel_.setText(texts_(Text::logLines));
    lines_.setPlaceholderText(texts_(Text::noLogLines));
    copy_->setText(texts_(Text::copy));
}

} // namespace ov::host
