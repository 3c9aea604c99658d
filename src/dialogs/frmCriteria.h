// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/value_place.h"
#include "dictation/search/criterion.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <array>
#include <cstdint>
#include <string>

class QGridLayout;

namespace ov {

// The editor of one criterion, made for one use: set EditMode, CriteriaString and the place, show
// it modally, then read OKPressed() and, when that is true, CriteriaString.
class frmCriteria final : public QDialog {
    Q_OBJECT

public:
    explicit frmCriteria(QWidget* parent = nullptr);

    bool OKPressed() const { return okPressed_; }

    bool EditMode = false;      // false: a new criterion is made
    std::string CriteriaString; // in: the criterion to edit; out: the one made
    std::int32_t StartLeft = 0; // wanted edges in screen units; 0 for either centres the
    std::int32_t StartTop = 0;  // window on the screen

    void setVisible(bool visible) override;
    void done(int result) override;

private:
    void buildWindow();
    void addFieldRows(QGridLayout& grid);
    void addValueRow(QGridLayout& grid);
    void connectAll();

    void load();
    void place();
    void fillFields();
    void showCriterion();
    void showValues();
    void retranslate();

    void fieldChanged();
    void operatorChanged();
    void showValueControls();
    const modDictation::SearchField& currentField() const;
    void markChanged();

    void cmdOK_Click();
    bool valuesAreValid();
    bool rangeIsInOrder();
    bool refuse(std::int32_t textId, QWidget* focus);

    QLabel* lblField_;
    QLabel* lblOperator_;
    QLabel* lblValue_;
    QComboBox* cboField_;
    QComboBox* cboOperator_;
    std::array<ValuePlace*, 2> places_;
    QLabel* lblValueAnd_;
    QLabel* lblValueOhne_;
    QLabel* lblOperatorOhne_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;

    modDictation::Criterion criterion_; // that is edited
    bool loaded_ = false;
    bool loading_ = false;
    bool busy_ = false;
    bool changed_ = false;
    bool okPressed_ = false;
};

} // namespace ov
