// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/filter/filter_suggestions.h"
#include "dictation/filter/filter_words.h"
#include "platform/text.h"
#include "tests/control/offered_values.h"
#include "tests/control/rows_fixture.h"

namespace ov {
namespace {

using namespace tests;

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
};

TEST_F(FilterValues, AreWrittenSoThatTheyAreReadAsTheSame) {
    for (const char* value : {"Anna", "Müller, A", "a\"b", "\"", "Empty", "=a", "!a", "<a", "-a"}) {
        const std::string typed = "knee -author:zeh," + modDictation::quickValue(value) + " hip";
        const auto words = modDictation::filterWords(typed, {}).criteria;
        ASSERT_EQ(words.size(), 4U) << typed;
        EXPECT_EQ(words[2].Value1, platform::upperCase(value)) << typed;
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
        {"prio:h|", "High; ", "prio:High|"},
        {"author:xyz|", "", ""},
        {"author:an x|", "", ""},
        {"autho|:an", "", ""},
        {"an|", "", ""},
        {"nobody:an|", "", ""},
        {"\"author:an|", "", ""},
        {"length:5|", "", ""},
        {"author:\"hanna maria|", "", ""}};
    for (const auto& [typed, values, taken] : cases) {
        type(typed);
        EXPECT_EQ(offered(), values) << typed;
        if (*values == '\0')
            continue;
        key(*offeredList(), Qt::Key_Down);
        EXPECT_EQ(line(), typed) << "none is taken yet";
        key(*offeredList(), Qt::Key_Return);
        EXPECT_EQ(line(), taken);
        EXPECT_EQ(offered(), "") << typed;
        EXPECT_TRUE(filter().isUndoAvailable());
    }
}

TEST_F(FilterValues, LeaveKeysToTheLineUntilOneIsChosen) {
    openAndSearch();
    for (const auto& [typed, pressed] : {std::pair("an|", Qt::Key_Down),
                                         {"author:an|", Qt::Key_Return},
                                         {"an|", Qt::Key_Return}}) {
        type(typed);
        EXPECT_TRUE(filter().hasFocus());
        key(offered().empty() ? static_cast<QWidget&>(filter()) : *offeredList(), pressed);
        EXPECT_TRUE(results().hasFocus()) << typed;
        EXPECT_EQ(offered() + line(), typed);
    }
    type("author:an|");
    key(*offeredList(), Qt::Key_Escape);
    EXPECT_EQ(offered() + line(), "author:an|");
    EXPECT_TRUE(filter().hasFocus());
    key(filter(), Qt::Key_Escape);
    EXPECT_EQ(line(), "|");
    type("author:a|");
    for (const Qt::Key down : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Tab})
        key(*offeredList(), down);
    EXPECT_EQ(line(), "author:\"Hanna Maria\"|");
    EXPECT_TRUE(filter().hasFocus());

    store.add("2$WAV@@14$Joanna.WAV");
    searchAll();
    type("author:an|");
    EXPECT_EQ(offered(), "Anna; Hanna Maria; Joanna; ");
    control_ = nullptr;
    EXPECT_EQ(offered(), "");
}

TEST_F(FilterValues, StayChosenWhileMoreAreFound) {
    struct Growing : ValueSource {
        bool lookOn(std::int32_t /*field*/) override {
            values << (values.empty() ? QStringLiteral("Berta") : next);
            values.removeAll(QString());
            return true;
        }
        QStringList found(std::int32_t /*field*/) const override { return values; }
        QStringList values;
        QString next;
    };
    QLineEdit box;
    auto source = std::make_unique<Growing>();
    QString& next = source->next;
    new FilterSuggestions(box, [&] { return std::move(source); });
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
    QTest::keyClicks(&box, QStringLiteral("author:"));
    waitFor([] { return offered() == "Berta; "; });
    key(*offeredList(), Qt::Key_Down);
    next = QStringLiteral("Anna");
    waitFor([] { return offered() == "Anna; *Berta; "; });
}

} // namespace
} // namespace ov
