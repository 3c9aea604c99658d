// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmCriteria.h"
#include "tests/window/window_fixture.h"

#include <QCalendarWidget>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTimeEdit>

namespace ov {
namespace {

using tests::bars;
using tests::child;
using tests::choose;
using tests::criterion;
using tests::isTidy;
using tests::readable;
using tests::speakGerman;
using tests::tabOrder;

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
    // Field, operator (0: the first one offered), what is shown.
    const std::vector<std::tuple<int, int, std::string>> cases = {
        {5, 17, "txtValue(0)"},    {5, 20, "lblValueOhne"},
        {9, 13, "dtpValue(0)"},    {9, 16, "dtpValue(0) dtpValue(1) lblValueAnd"},
        {9, 3, "lblValueOhne"},    {13, 31, "dtpValueTime(0) dtpValueTime(1) lblValueAnd"},
        {15, 25, "cboValue(0)"},   {3, 32, "lblValueOhne"},
        {0, 0, "lblOperatorOhne"},
    };
    const int height = form_->sizeHint().height();
    for (const auto& [field, operatorId, controls] : cases) {
        choose(fields(), field);
        if (operatorId != 0)
            choose(operators(), operatorId);
        EXPECT_EQ(shown(), controls) << "field " << field << " operator " << operatorId;
        EXPECT_EQ(child<QWidget>(*form_, "cmdOK").isEnabled(), field != 0);
        EXPECT_EQ(operators().isEnabled(), field != 0);
        EXPECT_EQ(form_->sizeHint().height(), height) << "the window does not jump";
    }
}

TEST_F(Editor, StaysOpenUntilTheInputIsValid) {
    modDictation::searchFields()[8].ValueType = modDictation::ValueType::number;
    open();
    const auto refused = [this] {
        pressOK();
        EXPECT_TRUE(form_->isVisible());
        EXPECT_EQ(user->boxes.back().owner, form_.get());
        return user->boxes.back().text.substr(0, user->boxes.back().text.find('\r')) + " " +
               form_->focusWidget()->objectName().toStdString();
    };
    textBox().setText(QStringLiteral("   "));
    EXPECT_EQ(refused(), "Enter a value. txtValue(0)");
    choose(fields(), 8);
    choose(operators(), 30);
    textBox().setText(QStringLiteral("1"));
    EXPECT_EQ(refused(), "Enter a value. txtValue(1)");

    choose(fields(), 9);
    choose(operators(), 16);
    child<QDateEdit>(*form_, "dtpValue(0)").setDate({2026, 3, 6});
    child<QDateEdit>(*form_, "dtpValue(1)").setDate({2026, 3, 5});
    EXPECT_EQ(refused(), "The first date is later than the second. dtpValue(0)");

    choose(fields(), 13);
    choose(operators(), 31);
    child<QTimeEdit>(*form_, "dtpValueTime(0)").setTime({0, 0, 2});
    child<QTimeEdit>(*form_, "dtpValueTime(1)").setTime({0, 0, 1});
    EXPECT_EQ(refused(), "The second time is shorter than the first. dtpValueTime(0)");
    EXPECT_FALSE(form_->OKPressed());
    child<QTimeEdit>(*form_, "dtpValueTime(1)").setTime({0, 0, 2});
    pressOK();
    EXPECT_EQ(result(), "13|31|00:00:02|00:00:02");
}

TEST_F(Editor, ShowsTheCriterionThatIsEdited) {
    // Criterion, the controls that are seen, the text of the first.
    const std::vector<std::array<std::string, 3>> cases = {
        {"5|18|Weber|", "txtValue(0)", "Weber"},
        {"9|16|01.02.2026|03.02.2026", "dtpValue(0) dtpValue(1) lblValueAnd", "01.02.2026"},
        {"13|31|00:01:00|01:00:00", "dtpValueTime(0) dtpValueTime(1) lblValueAnd", "00:01:00"},
        {"15|25|3|", "cboValue(0)", "High"},
        {"2|24|7|", "cboValue(0)", "Draft"},
        {"2|24|99|", "cboValue(0)", ""},
        {"9|13|rubbish|", "dtpValue(0)",
         QDate::currentDate().toString(QStringLiteral("dd.MM.yyyy")).toStdString()},
        {"13|27|99:00:00|", "dtpValueTime(0)", "00:00:00"},
        {"no criterion", "lblOperatorOhne",
         "There are no conditions for this field. Choose another field."},
    };
    for (const auto& [before, controls, first] : cases) {
        open(before);
        EXPECT_EQ(shown(), controls) << before;
        const auto& value = child<QWidget>(*form_, controls.substr(0, controls.find(' ')).c_str());
        const char* property = controls.starts_with("cbo") ? "currentText" : "text";
        const std::string text = value.property(property).toString().toStdString();
        EXPECT_EQ(text, first) << before;
        pressOK();
        EXPECT_EQ(form_->isVisible(), before == "no criterion") << before;
        EXPECT_EQ(result(), "cancelled") << before << ": nothing was changed";
    }
}

TEST_F(Editor, GivesBackWhatWasChosen) {
    const auto take = [this](int field, int operatorId) {
        choose(fields(), field);
        choose(operators(), operatorId);
    };
    const auto setDate = [this](const char* name, const QDate& date) {
        child<QDateEdit>(*form_, name).setDate(date);
    };
    const auto setTime = [this](const QTime& time) {
        child<QTimeEdit>(*form_, "dtpValueTime(0)").setTime(time);
    };
    const auto setCode = [this](int code) {
        choose(child<QComboBox>(*form_, "cboValue(0)"), code);
    };
    const std::vector<std::tuple<std::string, std::function<void()>, std::string>> cases = {
        // As pasted: on one line, in four parts.
        {"", [&] { textBox().insert(QStringLiteral("  Müller\n\x01Lüdenscheidt ")); },
         "4|17|Müller  Lüdenscheidt|"},
        {"", [&] { take(15, 24), setCode(-1); }, "15|24||"},
        {"",
         [&] {
             take(9, 16);
             setDate("dtpValue(0)", {2026, 3, 5});
             setDate("dtpValue(1)", {2026, 3, 5});
         },
         "9|16|2026-03-05|2026-03-05"},
        {"",
         [&] {
             take(13, 27), setTime({0, 2, 5});
         },
         "13|27|00:02:05|"},
        {"", [&] { QTest::keyClick(form_.get(), Qt::Key_Escape); }, "cancelled"},
        {"5|18|Weber|", [&] { choose(operators(), 17); }, "5|17|Weber|"},
        {"5|20||", [&] { take(6, 20); }, "6|20||"},
        {"5|18|Weber|", [&] { textBox().insert(QStringLiteral("s")); }, "5|18|Webers|"},
        {"15|25|3|", [&] { setCode(2); }, "15|25|2|"},
        {"9|16|01.02.2026|03.02.2026",
         [&] {
             setDate("dtpValue(1)", {2026, 2, 4});
         },
         "9|16|2026-02-01|2026-02-04"},
        {"13|27|00:01:00|",
         [&] {
             setTime({0, 2, 0});
         },
         "13|27|00:02:00|"},
    };
    for (const auto& [before, change, after] : cases) {
        open(before);
        change();
        QTest::keyClick(form_.get(), Qt::Key_Return);
        EXPECT_EQ(result(), after);
    }
}

TEST_F(Editor, TakesOnlyWhatTheFieldHolds) {
    open();
    std::string limits;
    for (const modDictation::SearchField& field : modDictation::searchFields())
        if (fields().findData(field.Id) > 0 &&
            field.ValueKind == modDictation::ValueKind::textBox) {
            choose(fields(), field.Id);
            textBox().setText(QString(40000, QLatin1Char('x')));
            limits +=
                std::to_string(field.Id) + ":" + std::to_string(textBox().text().size()) + " ";
        }
    EXPECT_EQ(limits, "1:32767 4:256 5:25 6:256 8:9 14:19 18:55 19:64 20:64 21:14 22:15 23:20 "
                      "26:256 ");
    const auto typed = [this](modDictation::ValueType type) {
        modDictation::searchFields()[5].ValueType = type;
        choose(fields(), 4);
        choose(fields(), 5);
        textBox().setText(QString());
        QTest::keyClicks(&textBox(), QStringLiteral("a1:b2 "));
        return textBox().text().toStdString();
    };
    EXPECT_EQ(typed(modDictation::ValueType::text), "a1:b2 ");
    EXPECT_EQ(typed(modDictation::ValueType::time), "1:2");
    EXPECT_EQ(typed(modDictation::ValueType::number), "12");
    EXPECT_EQ(typed(modDictation::ValueType::none), "");

    // Dates of recordings start today, a due date may be any day; a length starts anew.
    auto& date = child<QDateEdit>(*form_, "dtpValue(0)");
    auto& time = child<QTimeEdit>(*form_, "dtpValueTime(0)");
    time.setTime({1, 2, 3});
    for (const int field : {16, 11, 16, 9}) {
        date.setDate({2020, 1, 2});
        choose(fields(), field);
        EXPECT_EQ(date.date(), field == 16 ? QDate(2020, 1, 2) : QDate::currentDate()) << field;
    }
    EXPECT_EQ(time.time(), QTime(1, 2, 3));
    choose(fields(), 13);
    EXPECT_EQ(time.time(), QTime(0, 0));
}

TEST_F(Editor, BeginsTheWeekWhereTheCountryDoes) {
    for (const int firstDay : {1, 0}) { // Monday, Sunday
        platform::Locale country = platform::locale();
        country.firstWeekday = firstDay;
        platform::setLocale(country);
        open();
        const auto& date = child<QDateEdit>(*form_, "dtpValue(1)");
        EXPECT_TRUE(date.calendarPopup());
        EXPECT_EQ(date.calendarWidget()->firstDayOfWeek(), firstDay == 1 ? Qt::Monday : Qt::Sunday);
    }
}

TEST_F(Editor, StandsWhereTheCallerWantsIt) {
    const QRect screen = QApplication::primaryScreen()->geometry();
    for (const QPoint wanted : {QPoint(40, -30), QPoint(40, 0), QPoint(0, 40)}) {
        form_ = std::make_unique<frmCriteria>();
        form_->StartLeft = wanted.x();
        form_->StartTop = wanted.y();
        form_->show();
        const QPoint centre = screen.center() - QPoint(form_->width(), form_->height()) / 2;
        const QPoint expected = wanted.x() != 0 && wanted.y() != 0 ? wanted : centre;
        EXPECT_LE((form_->pos() - expected).manhattanLength(), 2)
            << wanted.x() << " " << wanted.y();
    }
}

TEST_F(Editor, ReadsAsOneGoesAndFollowsTheLanguage) {
    open();
    EXPECT_EQ(form_->windowTitle(), QStringLiteral("New search criterion"));
    EXPECT_EQ(tabOrder(*form_), "cboField cboOperator txtValue(0) cmdOK cmdCancel ");
    EXPECT_GE(fields().maxVisibleItems(), fields().count());
    choose(fields(), 9);
    choose(operators(), 16);
    EXPECT_EQ(tabOrder(*form_), "cboField cboOperator dtpValue(0) dtpValue(1) cmdOK cmdCancel ");

    open("15|25|3|");
    speakGerman(*form_);
    EXPECT_EQ(readable(*form_), "Suchkriterium bearbeiten|&Feld:>cboField|&Bedingung:>cboOperator|"
                                "&Wert:>cboValue(0)|OK|Abbrechen");
    EXPECT_EQ(fields().currentText(), QStringLiteral("Priorität"));
    EXPECT_EQ(operators().currentText(), QStringLiteral("ist"));
    auto& code = child<QComboBox>(*form_, "cboValue(0)");
    EXPECT_EQ(code.currentText(), QStringLiteral("Hoch"));
    EXPECT_EQ(code.accessibleName(), QStringLiteral("Erster Wert"));
    EXPECT_EQ(child<QWidget>(*form_, "dtpValue(1)").accessibleName(),
              QStringLiteral("Zweiter Wert"));
    EXPECT_TRUE(isTidy(*form_));
    pressOK();
    EXPECT_EQ(result(), "cancelled") << "words changed, not the criterion";
}

} // namespace
} // namespace ov
