// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/one_use_dialog.h"
#include "dialogs/value_place.h"
#include "dialogs/value_suggestions.h"
#include "dictation/search/criterion.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <array>
#include <cstdint>
#include <string>

class QGridLayout;

namespace ov {

// The editor of one criterion, made for one use: set EditMode, CriteriaString and the place, show
// it modally, then read OKPressed() and, when that is true, CriteriaString.
class frmCriteria final : public OneUseDialog {
    Q_OBJECT

public:
    explicit frmCriteria(QWidget* parent = nullptr);

    bool EditMode = false;       // false: a new criterion is made
    std::string CriteriaString;  // in: the criterion to begin with; out: the one made
    std::int32_t StartLeft = 0;  // wanted edges in screen units; 0 for either centres the
    std::int32_t StartTop = 0;   // window on the screen
    ValueSource* Seen = nullptr; // values to offer; none without it. Outlives the dialog

private:
    void buildWindow();
    void addFieldRows(QGridLayout& grid);
    void addValueRow(QGridLayout& grid);
    void addHintRow(QGridLayout& grid);
    void connectAll();

    void load() override;
    void place();
    void fillFields();
    void showCriterion();
    void showValues();
    void retranslate() override;

    void fieldChanged();
    void operatorChanged();
    void showValueControls();
    void suggestValues();
    void showHint();
    QString hint() const;
    const modDictation::SearchField& currentField() const;
    void markChanged();

    void cmdOK_Click() override;
    bool valuesAreValid();
    bool datesAreReadable();
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
    QLabel* lblHint_;
    ValueSuggestions suggestions_;

    modDictation::Criterion criterion_; // that is edited
    bool loading_ = false;
    bool changed_ = false;
};

} // namespace ov
