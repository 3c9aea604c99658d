// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/dialogs/editor_fixture.h"

#include <QCalendarWidget>
#include <QScreen>

namespace ov {
namespace {

TEST_F(Editor, ShowsTheValuesThatFieldAndOperatorNeed) {
    open();
    EXPECT_EQ(fields().currentData().toInt(), 4);
    const std::string none = "This condition needs no value.";
    // Field, operator (0: the first one offered), what is shown.
    const std::vector<std::tuple<int, int, std::string>> cases = {
        {5, 20, none},
        {9, 13, "&Value: dtp " + today()},
        {9, 16, "&Value: dtp " + today() + " and dtp " + today()},
        {0, 0, "There are no conditions for this field. Choose another field."}};
    const int height = form_->sizeHint().height();
    for (const auto& [field, operatorId, controls] : cases) {
        field > 0 ? enter(field, operatorId) : choose(fields(), field);
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
    enter(0, 0, {QStringLiteral("   ")});
    EXPECT_EQ(refused(), "Enter a value. txtValue(0)");
    textBox().clear();
    enter(8, 30, {QStringLiteral("1")});
    EXPECT_EQ(refused(), "Enter a value. txtValue(1)");
    enter(9, 16, {QStringLiteral("2026-03-06"), QStringLiteral("2026-03-05")});
    EXPECT_EQ(refused(), "The first date is later than the second. dtpValue(0)");
    enter(13, 31, {QStringLiteral("00:00:02"), QStringLiteral("00:00:01")});
    EXPECT_EQ(refused(), "The second time is shorter than the first. dtpValueTime(0)");
    EXPECT_FALSE(form_->OKPressed());
    enter(0, 0, {QStringLiteral("00:00:02"), QStringLiteral("00:00:02")});
    pressOK();
    EXPECT_EQ(result(), "13|31|00:00:02|00:00:02");
}

TEST_F(Editor, ShowsTheCriterionAndGivesBackWhatWasChosen) {
    // What was there (nothing: a new one) and is shown; field, operator and values that are
    // entered.
    using Case = std::tuple<std::string, std::string, int, int, const char*, std::string>;
    const std::string same = "cancelled"; // nothing was changed
    const std::vector<Case> cases = {
        // As pasted: on one line, in four parts.
        {"", "txt ", 0, 0, "  Müller\n\x01Lüdenscheidt ", "4|17|Müller  Lüdenscheidt|"},
        {"", "txt ", 15, 24, "-1", "15|24||"},
        {"5|18|Weber|", "txt Weber", 0, 0, "", same},
        {"5|18|Weber|", "txt Weber", 0, 17, "", "5|17|Weber|"},
        {"5|18|Weber|", "txt Weber", 0, 0, "s", "5|18|Webers|"},
        {"5|20||", "needs no value.", 6, 20, "", "6|20||"},
        {"9|16|01.02.2026|03.02.2026", "dtp 01.02.2026 and dtp 03.02.2026", 0, 0, "", same},
        {"9|16|01.02.2026|", "dtp 01.02.2026 and dtp " + today(), 0, 0, "2026-03-05;2026-03-05",
         "9|16|2026-03-05|2026-03-05"},
        {"13|31|00:01:00|01:00:00", "dtp 00:01:00 and dtp 01:00:00", 0, 0, "", same},
        {"13|27|00:01:00|", "dtp 00:01:00", 0, 0, "00:02:00", "13|27|00:02:00|"},
        {"13|27|99:00:00|", "dtp 00:00:00", 0, 0, "", same},
        {"15|25|3|", "cbo High", 0, 0, "2", "15|25|2|"},
        {"", "txt ", 15, 25, "", "15|25|1|"},
        {"2|24|7|", "cbo Draft", 0, 0, "", same},
        {"2|24|99|", "cbo ", 0, 0, "", same},
        {"no criterion", "Choose another field.", 9, 3, "", "9|3||"}};
    for (const auto& [before, seen, field, operatorId, values, after] : cases) {
        open(before);
        EXPECT_TRUE(shown().ends_with(seen)) << before << ": " << shown();
        enter(field, operatorId,
              QString::fromUtf8(values).split(QLatin1Char(';'), Qt::SkipEmptyParts));
        QTest::keyClick(form_.get(), Qt::Key_Return);
        EXPECT_FALSE(form_->isVisible());
        EXPECT_EQ(result(), after) << before;
    }
    open();
    enter(0, 0, {QStringLiteral("x")});
    QTest::keyClick(form_.get(), Qt::Key_Escape);
    EXPECT_EQ(result(), "cancelled");
}

TEST_F(Editor, TakesOnlyWhatTheFieldHolds) {
    open();
    for (const auto& [field, limit] : {std::pair(1, 32767), {5, 25}, {8, 9}, {26, 256}}) {
        choose(fields(), field);
        EXPECT_EQ(textBox().maxLength(), limit);
    }
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
    for (const auto day : {Qt::Monday, Qt::Sunday}) {
        platform::Locale country = platform::locale();
        country.firstWeekday = day % 7;
        platform::setLocale(country);
        open();
        EXPECT_EQ(child<QDateEdit>(*form_, "dtpValue(1)").calendarWidget()->firstDayOfWeek(), day);
    }
}

TEST_F(Editor, StandsWhereTheCallerWantsIt) {
    for (const QPoint wanted : {QPoint(40, -30), QPoint(40, 0), QPoint(0, 40)}) {
        form_ = std::make_unique<frmCriteria>();
        form_->StartLeft = wanted.x();
        form_->StartTop = wanted.y();
        form_->show();
        const QPoint centre = form_->screen()->geometry().center() - form_->rect().center();
        const QPoint expected = wanted.y() == -30 ? wanted : centre;
        EXPECT_LE((form_->pos() - expected).manhattanLength(), 2) << wanted.y();
    }
}

TEST_F(Editor, ReadsAsOneGoesAndFollowsTheLanguage) {
    open();
    EXPECT_EQ(tabOrder(*form_), "cboField cboOperator txtValue(0) cmdOK cmdCancel ");
    choose(fields(), 9);
    choose(operators(), 16);
    EXPECT_EQ(tabOrder(*form_), "cboField cboOperator dtpValue(0) dtpValue(1) cmdOK cmdCancel ");

    open("15|25|3|");
    speakGerman(*form_);
    EXPECT_EQ(form_->windowTitle(), QStringLiteral("Suchkriterium bearbeiten"));
    EXPECT_EQ(shown(), "&Wert: cbo Hoch");
    EXPECT_TRUE(isTidy(*form_));
    pressOK();
    EXPECT_EQ(result(), "cancelled") << "words changed, not the criterion";
}

} // namespace
} // namespace ov
