// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/plugin/plugin_session.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTableWidget>

namespace ov::host {

// What is known of one dictation, and the lines the plug-in logged last. One window that is
// filled anew; Esc closes it.
class LogView final : public QDialog {
    Q_OBJECT

public:
    // `texts` outlives the window.
    explicit LogView(const Texts& texts, QWidget* parent = nullptr);

    // `path` as it crosses the boundary; empty: no dictation, only the lines.
    void showNotes(const QByteArray& path, const LogNotes& notes);
    // The dictation shown.
    const QByteArray& path() const { return path_; }

private:
    void fillFacts(const LogNotes& notes);
    QString asText() const;
    void translate();

    const Texts& texts_;
    QByteArray path_;
    QLabel title_;
    QTableWidget facts_;
    QLabel linesLabel_;
    QPlainTextEdit lines_;
    QDialogButtonBox buttons_;
    QPushButton* copy_;
};

} // namespace ov::host
