// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/dialogs/editor_fixture.h"

#include <QAbstractItemView>
#include <QCompleter>

namespace ov {
namespace {

class TypingInTheEditor : public Editor {};

TEST_F(TypingInTheEditor, ChoosesTheEntryThatIsTyped) {
    open();
    QTest::keyClicks(&operators(), QStringLiteral(" "));
    EXPECT_TRUE(operators().view()->isVisible()) << "the blank alone opens the list";
    QTest::keyClick(operators().view(), Qt::Key_Escape);
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
        {"cboField", 26, "status", "Status"},
        {"cboField", 26, "AUTHOR C", "Author code"},
        {"cboField", 26, "author", "Author"},
        {"cboField", 26, "date", "Due date"},
        {"cboField", 26, "zz", "File name"}, // nothing has it
        {"cboField", 26, "dd", "Due date"},  // the second with "d"
        {"cboOperator", 9, "is between", "is between"},
        {"cboOperator", 9, "week", "is last week"}};
    for (const auto& [name, field, typed, chosen] : cases) {
        open();
        choose(fields(), field);
        auto& list = child<QComboBox>(*form_, name);
        QTest::keyClicks(&list, QString::fromUtf8(typed));
        EXPECT_EQ(list.currentText().toStdString(), chosen) << typed;
        EXPECT_FALSE(list.view()->isVisible()) << typed;
    }
    QTest::keyClicks(&fields(), fields().itemText(0));
    EXPECT_EQ(fields().currentIndex(), 0);
    QTest::qWait(QApplication::keyboardInputInterval() + 10);
    QTest::keyClicks(&fields(), QStringLiteral("status"));
    EXPECT_EQ(fields().currentText(), QStringLiteral("Status")) << "after a pause it is a new word";
    fields().showPopup();
    QTest::keyClicks(fields().view(), QStringLiteral("te 2"));
    QTest::keyClick(fields().view(), Qt::Key_Return);
    EXPECT_EQ(fields().currentText(), QStringLiteral("Note 2"));
}

TEST_F(TypingInTheEditor, TakesDaysAsTheyAreTyped) {
    const QDate today = QDate::currentDate();
    for (const auto& [typed, meant] : {std::pair("ToMorrow", today.addDays(1)),
                                       {"-7", today.addDays(-7)},
                                       {"9", QDate(today.year(), today.month(), 9)},
                                       {"21.11.", QDate(today.year(), 11, 21)},
                                       {"211123", QDate(2023, 11, 21)}}) {
        open("9|13|2020-01-02|");
        auto& date = child<QDateEdit>(*form_, "dtpValue(0)");
        date.setDate(today);
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
        date.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&date, Qt::Key_Shift);
        EXPECT_EQ(date.currentSection(), QDateTimeEdit::DaySection);
        EXPECT_EQ(child<QLineEdit>(date, "qt_spinbox_lineedit").selectedText().size(), 2)
            << "only its day";
        QTest::keyClicks(&date, QString::fromUtf8(typed));
        QTest::keyClick(&date, Qt::Key_Return);
        EXPECT_EQ(result(), "9|13|" + meant.toString(Qt::ISODate).toStdString() + "|") << typed;
    }
    for (const auto& [arrow, step] : {std::pair(Qt::Key_Up, 1), {Qt::Key_Down, -1}}) {
        open("9|13|2020-01-15|");
        auto& date = child<QDateEdit>(*form_, "dtpValue(0)");
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
        date.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&date, QStringLiteral("today"));
        QTest::keyClick(&date, arrow);
        EXPECT_EQ(date.date(), today.addYears(step)) << "from the day typed";
    }
    open("9|16|2020-01-02|2020-01-03");
    auto& second = child<QDateEdit>(*form_, "dtpValue(1)");
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    second.setFocus();
    QTest::keyClicks(&second, QStringLiteral("tomorow"));
    QTest::keyClick(&second, Qt::Key_Return);
    EXPECT_EQ(user->boxes.size(), 1U);
    child<QWidget>(*form_, "dtpValue(0)").setFocus();
    pressOK();
    ASSERT_FALSE(user->boxes.empty());
    EXPECT_TRUE(user->boxes.back().text.starts_with("This is not a date."));
    EXPECT_EQ(form_->focusWidget(), &second);
    EXPECT_EQ(second.text(), QStringLiteral("tomorow")) << "it can be mended";
    QTest::keyClick(&second, Qt::Key_Left);
    QTest::keyClick(&second, Qt::Key_Left);
    QTest::keyClicks(&second, QStringLiteral("r"));
    pressOK();
    EXPECT_EQ(result(), "9|16|2020-01-02|" + today.addDays(1).toString(Qt::ISODate).toStdString());
}

// What a search has seen: so many authors that one does not see them at once.
class Seen final : public ValueSource {
public:
    bool lookOn(std::int32_t field) override {
        values[field] << QStringLiteral("%1%2").arg(prefix(field)).arg(++steps[field]);
        return steps[field] < 12;
    }
    QStringList found(std::int32_t field) const override { return values.value(field); }

private:
    static QString prefix(std::int32_t field) {
        return field == 4 ? QStringLiteral("MUE") : QStringLiteral("Dr. Weber ");
    }
    QMap<std::int32_t, QStringList> values;
    QMap<std::int32_t, int> steps;
};

TEST_F(TypingInTheEditor, OffersWhatWasSeenAndTellsOfNamesAmongCodes) {
    Seen seen;
    form_ = std::make_unique<frmCriteria>();
    form_->Seen = &seen;
    form_->show();
    const auto offered = [this] { return textBox().completer()->popup(); };
    const auto hint = [this] { return child<QLabel>(*form_, "lblHint").text(); };
    const QString isName =
        QStringLiteral("This looks like a name. Names are in the field “Author”.");
    for (const auto& [typed, expected] :
         {std::pair("mue1", QString()), {"web", isName}, {"xyz", QString()}}) {
        textBox().clear();
        QTest::keyClicks(&textBox(), QString::fromUtf8(typed));
        EXPECT_TRUE(QTest::qWaitFor([&, e = expected] { return hint() == e; })) << typed;
    }
    choose(fields(), 5);
    EXPECT_EQ(hint(), QString());
    textBox().setFocus();
    textBox().clear();
    QTest::keyClick(&textBox(), Qt::Key_Down);
    EXPECT_TRUE(offered()->isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return offered()->model()->rowCount() == 12; }));
    EXPECT_EQ(offered()->model()->index(11, 0).data(), QStringLiteral("Dr. Weber 12"));
    QTest::keyClicks(&textBox(), QStringLiteral("weber 12"));
    QTest::keyClick(offered(), Qt::Key_Down);
    QTest::keyClick(offered(), Qt::Key_Return);
    pressOK();
    EXPECT_EQ(result(), "5|17|Dr. Weber 12|");

    open(); // nothing was seen yet
    for (const auto& [typed, expected] :
         {std::pair("WEBE", QString()), {"WEBER", isName}, {"Dr W", isName}}) {
        textBox().setText(QString::fromUtf8(typed));
        EXPECT_EQ(hint(), expected) << typed;
    }
}

} // namespace
} // namespace ov
