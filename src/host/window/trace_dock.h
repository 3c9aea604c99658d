// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDockWidget>
#include <QPushButton>
#include <QTreeWidget>

namespace ov::host {

class Texts;

// The plug-in's trace: the last thousand lines with their time.
class TraceDock final : public QDockWidget {
    Q_OBJECT

public:
    // `texts` outlives the dock.
    explicit TraceDock(const Texts& texts, QWidget* parent = nullptr);

    void add(const QString& text);

private:
    // The selected lines, or all when none is.
    void copy() const;
    void translate();

    const Texts& texts_;
    QTreeWidget lines_;
    QPushButton copy_;
    QPushButton clear_;
};

} // namespace ov::host
