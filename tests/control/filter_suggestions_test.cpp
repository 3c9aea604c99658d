// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/filter/filter_suggestions.h"
#include "control/results/result_list.h"
#include "control/results/seen_values.h"
#include "dictation/filter/entered_value.h"
#include "dictation/filter/filter_words.h"
#include "platform/text.h"
#include "tests/control/rows_fixture.h"

#include <QEventLoop>

namespace ov {
namespace {

class FilterValues : public RowsTest {
protected:
    FilterValues() {
        for (const char* author : {"Anna@@5$HOCH", "Hanna Maria", "Müller, A", "12\""})
            store.add("2$WAV@@14$" + std::string(author) + ".WAV");
    }
    QLineEdit& filter() { return widget<QLineEdit>("txtResultFilter"); }
    // "auth|or": as it stands, with the cursor.
    std::string line() {
        return filter().text().insert(filter().cursorPosition(), u'|').toStdString();
    }
    // The letter before the cursor last, by key.
    void type(const char* text) {
        const QString all = QString::fromUtf8(text);
        const auto cursor = static_cast<int>(all.indexOf(u'|'));
        filter().setFocus();
        filter().setText(all.left(cursor - 1) + all.mid(cursor + 1));
        filter().setCursorPosition(cursor - 1);
        QTest::keyClicks(&filter(), all.mid(cursor - 1, 1));
        QCoreApplication::processEvents();
    }
    // As the system hands keys on: to the list while it is open.
    void press(Qt::Key pressed) {
        QWidget* list = offeredList();
        key(list != nullptr ? *list : filter(), pressed);
    }
};

// However long that takes: it is done a little at a time.
TEST(SeenValues, AreThoseOfAllHits) {
    modDictation::DictationList hits;
    for (int i = 0; i < 500'000; ++i)
        hits.add("\\store\\", "2$WAV@@11$no author.WAV");
    hits.add("\\store\\", "2$WAV@@14$Anna.WAV");
    SeenValues values(hits);
    int times = 1;
    while (values.lookOn(modDictation::field_id::author))
        ++times;
    EXPECT_GT(times, 1);
    EXPECT_EQ(values.found(modDictation::field_id::author), QStringList(QStringLiteral("Anna")));
}

TEST_F(FilterValues, AreWrittenSoThatTheyAreReadAsTheSame) {
    for (const char* value : {"Müller, A", "a\"b", "\"", "Empty", "=a", "!a", "<a", "-a"}) {
        const std::string typed = "author:" + modDictation::quickValue(value);
        const auto words = modDictation::filterWords(typed, {}).criteria;
        EXPECT_EQ(words.at(0).Value1, platform::upperCase(value)) << typed;
    }
}

TEST_F(FilterValues, AreOfferedForTheFieldAtTheCursor) {
    openAndSearch();
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"author:|", "12\"; Anna; Hanna Maria; Müller, A; ", "author:\"12\"\"\"|"},
        {"AUTH:an|", "Anna; Hanna Maria; ", "AUTH:Anna|"},
        {"é -author:NN|a hip", "Anna; Hanna Maria; ", "é -author:Anna| hip"},
        {"author:!=zeh,er|,zeh", "Müller, A; ", "author:!=zeh,\"Müller, A\"|,zeh"},
        {"( author:=\"er, |", "Müller, A; ", "( author:=\"Müller, A\"|"},
        {"author:\"er, | hip", "Müller, A; ", "author:\"Müller, A\"| hip"},
        {"author:\"er, |x\" hip", "Müller, A; ", "author:\"Müller, A\"| hip"},
        {"prio:h|", "High; ", "prio:High|"}};
    for (const auto& [typed, values, taken] : cases) {
        type(typed);
        EXPECT_EQ(offered(), values) << typed;
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        EXPECT_EQ(line(), taken);
        EXPECT_EQ(offered(), "") << typed;
    }
    for (const char* typed : {"author:xyz|", "author:an x|", "autho|:an", "an|", "nobody:an|",
                              "\"author:an|", "length:5|", "author:\"hanna maria|"}) {
        type(typed);
        EXPECT_EQ(offered(), "") << typed;
    }
}

// Of which one more is found each time.
struct MoreAndMore final : ValueSource {
    QStringList values;
    bool lookOn(std::int32_t /*field*/) override {
        values << QString::number(values.size());
        return true;
    }
    QStringList found(std::int32_t /*field*/) const override { return values; }
};

TEST_F(FilterValues, StayAwayWhenSomebodyClicksElsewhere) {
    openAndSearch();
    QLineEdit& line = filter();
    delete line.findChild<FilterSuggestions*>();
    new FilterSuggestions(line, [] { return std::make_unique<MoreAndMore>(); });
    type("author:|");
    waitFor([] { return offeredList() != nullptr; });
    QTest::mousePress(offeredList(), Qt::LeftButton, {}, {-5, -5});
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(offered(), "");
}

TEST_F(FilterValues, LeaveKeysToTheLineUntilOneIsChosen) {
    openAndSearch();
    for (const auto& [typed, pressed] :
         {std::pair("an|", Qt::Key_Down), {"author:an|", Qt::Key_Return}}) {
        type(typed);
        EXPECT_TRUE(filter().hasFocus());
        press(pressed);
        EXPECT_TRUE(results().hasFocus()) << typed;
        EXPECT_EQ(offered() + line(), typed);
    }
    type("author:an|");
    press(Qt::Key_Escape);
    EXPECT_EQ(offered() + line(), "author:an|");
    EXPECT_TRUE(filter().hasFocus());
    press(Qt::Key_Escape);
    EXPECT_EQ(line(), "|");
    type("author:a|");
    for (const Qt::Key pressed : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Tab})
        press(pressed);
    EXPECT_EQ(line(), "author:\"Hanna Maria\"|");
    EXPECT_TRUE(filter().hasFocus());

    dynamic_cast<ResultList&>(results()).removeAllRows();
    type("author:an|");
    EXPECT_EQ(offered(), "") << "of hits that are gone";
    type("prio:h|");
    QEventLoop loop; // in which the control goes later
    QTimer::singleShot(0, &loop, [&] {
        control_ = nullptr;
        EXPECT_EQ(offered(), "");
        loop.quit();
    });
    loop.exec();
}

} // namespace
} // namespace ov
