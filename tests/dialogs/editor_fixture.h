// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dialogs/frmCriteria.h"
#include "tests/window/window_fixture.h"

#include <QDateEdit>
#include <QTimeEdit>

namespace ov::tests {

// The editor of a criterion.
class Editor : public WindowTest {
protected:
    // Opens the editor; an empty string makes a new criterion.
    frmCriteria& open(const std::string& barred = {}) {
        user = nullptr; // before another takes its place
        user = std::make_unique<tests::RecordingInterface>();
        form_ = std::make_unique<frmCriteria>();
        form_->EditMode = !barred.empty();
        form_->CriteriaString = criterion(barred);
        form_->show();
        return *form_;
    }
    QComboBox& fields() { return child<QComboBox>(*form_, "cboField"); }
    QComboBox& operators() { return child<QComboBox>(*form_, "cboOperator"); }
    QLineEdit& textBox() { return child<QLineEdit>(*form_, "txtValue(0)"); }
    void pressOK() { clickOn(*form_, "cmdOK"); }
    // Chooses a field and an operator, 0 for those that are there, and enters values; "-" is none.
    void enter(int field, int operatorId, const QStringList& values = {}) {
        if (field > 0)
            choose(fields(), field);
        if (operatorId > 0)
            choose(operators(), operatorId);
        for (int i = 0; i < values.size(); ++i)
            for (const char* kind :
                 {"txtValue(%1)", "cboValue(%1)", "dtpValue(%1)", "dtpValueTime(%1)"})
                fill(*form_->findChild<QWidget*>(QString::fromLatin1(kind).arg(i)), values[i]);
    }
    static void fill(QWidget& control, const QString& value) {
        if (!control.isVisible())
            return;
        if (auto* list = qobject_cast<QComboBox*>(&control))
            choose(*list, value.toInt());
        else if (auto* text = qobject_cast<QLineEdit*>(&control))
            text->insert(value);
        else if (auto* time = qobject_cast<QTimeEdit*>(&control))
            time->setTime(QTime::fromString(value));
        else
            static_cast<QDateEdit&>(control).setDate(QDate::fromString(value, Qt::ISODate));
    }
    // What is seen in the row of values, "&Value: dtp 01.02.2026 and dtp 03.02.2026".
    std::string shown() {
        std::string all;
        for (const char* name :
             {"lblLabel(2)", "txtValue(0)", "cboValue(0)", "dtpValue(0)", "dtpValueTime(0)",
              "lblValueAnd", "txtValue(1)", "cboValue(1)", "dtpValue(1)", "dtpValueTime(1)",
              "lblValueOhne", "lblOperatorOhne"}) {
            auto& control = child<QWidget>(*form_, name);
            const QVariant text = control.property(*name == 'c' ? "currentText" : "text");
            if (control.isVisible())
                all += (all.empty() ? "" : " ") + (*name == 'l' ? "" : std::string(name, 3) + " ") +
                       text.toString().toStdString();
        }
        return all;
    }
    static std::string today() {
        return QDate::currentDate().toString(QStringLiteral("dd.MM.yyyy")).toStdString();
    }
    std::string result() { return form_->OKPressed() ? bars(form_->CriteriaString) : "cancelled"; }

    std::unique_ptr<frmCriteria> form_;
};

} // namespace ov::tests
