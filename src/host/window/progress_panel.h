// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/window/progress_notes.h"

#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QWidget>

namespace ov::host {

class Texts;

// One line of text that is cut in its middle when it does not fit.
class ElidedLabel final : public QWidget {
public:
    using QWidget::QWidget;

    void setText(const QString& text);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
};

// The progress in the status bar: caption, directory and bar. Paints at most 30 times a second.
class ProgressPanel final : public QWidget {
    Q_OBJECT

public:
    // `notes` and `texts` outlive the panel.
    ProgressPanel(ProgressNotes& notes, const Texts& texts, QWidget* parent = nullptr);
    ~ProgressPanel() override;
    ProgressPanel(const ProgressPanel&) = delete;
    ProgressPanel& operator=(const ProgressPanel&) = delete;

private:
    void showNotes();
    void showBar();
    void translate();

    ProgressNotes& notes_;
    const Texts& texts_;
    QTimer timer_;
    QLabel caption_;
    ElidedLabel directory_;
    QProgressBar bar_;
};

} // namespace ov::host
