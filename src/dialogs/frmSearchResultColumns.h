// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/one_use_dialog.h"
#include "dictation/field_table.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <array>
#include <cstdint>
#include <functional>

class QBoxLayout;
class QGridLayout;

namespace ov {

// The column chooser, made for one use: show it modally, then read OKPressed(). It works on the
// Visible flags of the search field table and touches them only with OK. The order of the shown
// fields is not handed back: columns are ordered by dragging them in the list.
class frmSearchResultColumns final : public OneUseDialog {
    Q_OBJECT

public:
    explicit frmSearchResultColumns(QWidget* parent = nullptr);

private:
    void buildWindow();
    void addLists(QGridLayout& grid);
    void addFold(QBoxLayout& column);
    void connectAll();
    void load() override;
    void retranslate() override;

    void fillLists(const std::function<bool(const modDictation::SearchField&)>& isShown);
    void useDefaults();
    void fold(bool open);
    void transfer(QListWidget& source, QListWidget& target);
    void moveSelected(int distance);
    void enableButtons();
    void cmdOK_Click() override;

    QLabel* lblLabel_;
    QLabel* lblOrder_;
    // In the order of the Tab key, as the eye goes.
    QLabel* lblLeft_; // in the order in which they are read out
    QListWidget* lstLeft_;
    std::array<QPushButton*, 2> cmdTransfer_;
    QLabel* lblRight_;
    QListWidget* lstRight_;
    std::array<QPushButton*, 2> cmdUpDown_;
    QToolButton* cmdFold_; // shows or hides the list below it
    QListWidget* lstNonCustomizable_;
    QPushButton* cmdDefault_;
};

} // namespace ov
