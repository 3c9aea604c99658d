// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace ov::host {

class Texts;

// What stands in the window until a dictation folder has been chosen.
class FirstPage final : public QWidget {
    Q_OBJECT

public:
    // `texts` outlives the page.
    explicit FirstPage(Texts& texts, QWidget* parent = nullptr);

signals:
    void folderWanted();

private:
    void translate();

    Texts& texts_;
    QLabel sentence_;
    QPushButton button_;
};

} // namespace ov::host
