// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmCriteria.h"
#include "tests/window/window_fixture.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QTimeEdit>

namespace ov {
namespace {

using tests::bars;
using tests::child;
using tests::choose;
using tests::criterion;

class Editor : public tests::WindowTest {
protected:
    // Opens the editor; an empty string makes a new criterion.
    frmCriteria& open(const std::string& barred = {}) {
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
    void pressOK() { QTest::mouseClick(&child<QPushButton>(*form_, "cmdOK"), Qt::LeftButton); }
    // The names of the controls that are seen, of those that come and go.
    std::string shown() {
        std::string names;
        for (const char* name : {"txtValue(0)", "txtValue(1)", "cboValue(0)", "cboValue(1)",
                                 "dtpValue(0)", "dtpValue(1)", "dtpValueTime(0)", "dtpValueTime(1)",
                                 "lblValueAnd", "lblValueOhne", "lblOperatorOhne"})
            if (child<QWidget>(*form_, name).isVisible())
                names.append(names.empty() ? "" : " ").append(name);
        return names;
    }
    std::string result() { return form_->OKPressed() ? bars(form_->CriteriaString) : "cancelled"; }

    std::unique_ptr<frmCriteria> form_;
};

TEST_F(Editor, ShowsTheValuesThatFieldAndOperatorNeed) {
    open();
    EXPECT_EQ(fields().currentData().toInt(), 4);
    struct Case {
        int field;
        int operatorId; // 0: the first one offered
        std::string shown;
    };
    const std::vector<Case> cases = {
        {5, 17, "txtValue(0)"},    {5, 20, "lblValueOhne"},
        {9, 13, "dtpValue(0)"},    {9, 16, "dtpValue(0) dtpValue(1) lblValueAnd"},
        {9, 3, "lblValueOhne"},    {13, 31, "dtpValueTime(0) dtpValueTime(1) lblValueAnd"},
        {15, 25, "cboValue(0)"},   {3, 32, "lblValueOhne"},
        {0, 0, "lblOperatorOhne"},
    };
    for (const Case& c : cases) {
        choose(fields(), c.field);
        if (c.operatorId != 0)
            choose(operators(), c.operatorId);
        EXPECT_EQ(shown(), c.shown) << "field " << c.field << " operator " << c.operatorId;
        EXPECT_EQ(child<QWidget>(*form_, "cmdOK").isEnabled(), c.field != 0);
    }
}

TEST_F(Editor, GivesBackWhatWasChosen) {
    open();
    textBox().insert(QStringLiteral("  Müller\n\x01Lüdenscheidt ")); // as pasted
    pressOK();
    EXPECT_EQ(result(), "4|17|Müller  Lüdenscheidt|") << "on one line, in four parts";

    open();
    choose(fields(), 15);
    choose(operators(), 24);
    auto& codes = child<QComboBox>(*form_, "cboValue(0)");
    codes.setCurrentIndex(-1);
    pressOK();
    EXPECT_EQ(result(), "15|24||") << "a list without a selection leaves its value empty";

    open();
    choose(fields(), 9);
    choose(operators(), 16);
    child<QDateEdit>(*form_, "dtpValue(0)").setDate({2026, 3, 5});
    child<QDateEdit>(*form_, "dtpValue(1)").setDate({2026, 3, 5});
    pressOK();
    EXPECT_EQ(result(), "9|16|2026-03-05|2026-03-05");

    open();
    choose(fields(), 13);
    choose(operators(), 27);
    child<QTimeEdit>(*form_, "dtpValueTime(0)").setTime({0, 2, 5});
    QTest::keyClick(form_.get(), Qt::Key_Return);
    EXPECT_EQ(result(), "13|27|00:02:05|");

    open();
    QTest::keyClick(form_.get(), Qt::Key_Escape);
    EXPECT_EQ(result(), "cancelled");
}

TEST_F(Editor, StaysOpenUntilTheInputIsValid) {
    open();
    textBox().setText(QStringLiteral("   "));
    pressOK();
    EXPECT_EQ(user->boxes.size(), 1U);
    EXPECT_TRUE(form_->isVisible());
    EXPECT_EQ(form_->focusWidget(), &textBox());

    choose(fields(), 9);
    choose(operators(), 16);
    child<QDateEdit>(*form_, "dtpValue(0)").setDate({2026, 3, 6});
    child<QDateEdit>(*form_, "dtpValue(1)").setDate({2026, 3, 5});
    pressOK();
    EXPECT_EQ(form_->focusWidget(), &child<QDateEdit>(*form_, "dtpValue(0)"));

    choose(fields(), 13);
    choose(operators(), 31);
    child<QTimeEdit>(*form_, "dtpValueTime(0)").setTime({0, 0, 2});
    child<QTimeEdit>(*form_, "dtpValueTime(1)").setTime({0, 0, 1});
    pressOK();
    EXPECT_TRUE(form_->isVisible());
    EXPECT_EQ(user->boxes.size(), 3U);
    EXPECT_FALSE(form_->OKPressed());
}

TEST_F(Editor, ShowsTheCriterionThatIsEdited) {
    struct Case {
        std::string before;
        std::string shown;
        std::string text; // of the first value control
    };
    const std::vector<Case> cases = {
        {"5|18|Weber|", "txtValue(0)", "Weber"},
        {"9|16|01.02.2026|03.02.2026", "dtpValue(0) dtpValue(1) lblValueAnd", "01.02.2026"},
        {"13|31|00:01:00|01:00:00", "dtpValueTime(0) dtpValueTime(1) lblValueAnd", "00:01:00"},
        {"15|25|3|", "cboValue(0)", "High"},
        {"2|24|7|", "cboValue(0)", "Draft"},
        {"2|24|99|", "cboValue(0)", ""},
        {"no criterion", "lblOperatorOhne", ""},
    };
    for (const Case& c : cases) {
        open(c.before);
        EXPECT_EQ(shown(), c.shown) << c.before;
        std::string text;
        for (auto* value : form_->findChildren<QWidget*>())
            if (value->isVisible() && value->objectName().endsWith(QLatin1String("(0)"))) {
                if (const auto* list = qobject_cast<QComboBox*>(value))
                    text = list->currentText().toStdString();
                else if (value->property("text").isValid() &&
                         !value->objectName().startsWith(QLatin1String("lbl")))
                    text = value->property("text").toString().toStdString();
            }
        EXPECT_EQ(text, c.text) << c.before;
        pressOK();
        EXPECT_EQ(form_->isVisible(), c.before == "no criterion") << c.before;
        EXPECT_EQ(result(), "cancelled") << c.before << ": nothing was changed";
    }
    open("5|18|Weber|");
    choose(operators(), 17);
    pressOK();
    EXPECT_EQ(result(), "5|17|Weber|") << "another operator is a change too";
}

TEST_F(Editor, TakesOnlyWhatTheFieldHolds) {
    open();
    choose(fields(), 3);
    choose(fields(), 5);
    QTest::keyClicks(&textBox(), QString(40, QLatin1Char('x')));
    EXPECT_EQ(textBox().text().size(), 25);
    textBox().setText(QString());
    QTest::keyClick(&textBox(), Qt::Key_A, Qt::NoModifier);
    EXPECT_EQ(textBox().text(), QStringLiteral("a"));
}

TEST_F(Editor, FollowsTheLanguage) {
    open("15|25|3|");
    modLanguage::SetLanguage(7, 0);
    modDictation::BuildSearchFieldTable();
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(form_.get(), &change);
    EXPECT_EQ(form_->windowTitle(), QStringLiteral("Suchkriterium bearbeiten"));
    EXPECT_EQ(fields().currentText(), QStringLiteral("Priorität"));
    EXPECT_EQ(child<QComboBox>(*form_, "cboValue(0)").currentText(), QStringLiteral("Hoch"));
    pressOK();
    EXPECT_EQ(result(), "cancelled") << "words changed, not the criterion";
}

} // namespace
} // namespace ov
