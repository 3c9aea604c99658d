// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/empty_state.h"
#include "control/filter/aside_work.h"
#include "control/filter/filter_edit.h"
#include "support/log.h"
#include "tests/control/rows_fixture.h"

#include <QAbstractItemModelTester>
#include <QFileDialog>
#include <QThread>
#include <QToolTip>
#include <atomic>
#include <pthread.h>

namespace ov {
namespace {

class ResultFilter : public RowsTest {
protected:
    ResultFilter() {
        store.add("2$WAV@@14$Anna@@11$Befund.WAV")
            .add("2$WAV@@14$Ärmel@@5$HOCH.WAV")
            .add("2$ROH@@14$Berta@@7$21-11-2026 10$00$00.WAV");
    }
    FilterEdit& filter() { return widget<FilterEdit>("txtResultFilter"); }
    ResultList& list() { return dynamic_cast<ResultList&>(results()); }
    void open() {
        openAndSearch();
        clickHeader(column(5));
        user->boxes.clear();
    }
    // The authors of the rows that stay, once the list shows them.
    std::string typed(const char* words, int count) {
        filter().clear();
        waitFor([&] { return model().kept() == nullptr; });
        for (const QChar letter : QString::fromUtf8(words)) { // keys of the test library are ASCII
            filter().insert(letter);
            QCoreApplication::processEvents();
        }
        waitFor([&] {
            return model().kept() != nullptr && model().rowCount() == count &&
                   list().shownFilter() == words;
        });
        return rows();
    }
};

TEST_F(ResultFilter, KeepsTheRowsThatShowAllWords) {
    open();
    const QAbstractItemModelTester tester(results().model());
    key(results(), Qt::Key_Slash);
    EXPECT_TRUE(filter().hasFocus());
    EXPECT_EQ(typed("ärm", 1), "*Ärmel; ");
    for (const auto& [words, expected, count] : {std::tuple("wav", "Anna; *Ärmel; ", 2),
                                                 {"A  FUND", "*Anna; ", 1},
                                                 {"21.11.2026", "*Berta; ", 1},
                                                 {"high", "*Ärmel; ", 1},
                                                 {"annabefund", "", 0},
                                                 {"author:rm -status:roh", "*Ärmel; ", 1},
                                                 {"anna@@11$befund", "*Anna; ", 1},
                                                 {"e", "*Anna; Ärmel; Berta; ", 3}})
        EXPECT_EQ(typed(words, count), expected) << words;
    EXPECT_EQ(text("lblSearchResult"), "Search result (3 of 3 dictations)");
    typed("anna", 1);
    clickHeader(column(5));
    EXPECT_EQ(rows(), "*Anna; ") << "sorted anew";
    key(filter(), Qt::Key_Return);
    EXPECT_TRUE(results().hasFocus());
    key(results(), Qt::Key_Escape);
    EXPECT_EQ(rows(), "Berta; Ärmel; *Anna; ");
    EXPECT_EQ(text("lblSearchResult"), "Search result (3 dictations)");
}

// Half of a word empties no list, and it is said that it does not count.
TEST_F(ResultFilter, TakesTheQuickFormAsItIsTyped) {
    open();
    const std::string all = "Anna; Ärmel; Berta; ";
    const std::string incomplete = " – filter incomplete";
    const auto expect = [&](const std::string& expected, const std::string& label) {
        const auto seen = [&] {
            std::string now = rows();
            std::erase(now, '*');
            return now + text("lblSearchResult");
        };
        const std::string wanted = expected + "Search result (" + label;
        EXPECT_TRUE(QTest::qWaitFor([&] { return seen() == wanted; }))
            << filter().text().toStdString() << ": " << seen();
    };
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"prio:h", all, "3 dictations)" + incomplete},
        {"prio:hi", "Ärmel; ", "1 of 3 dictations)"},
        {"anna prio:h", "Anna; ", "1 of 3 dictations)" + incomplete},
        {"-berta", "Anna; Ärmel; ", "2 of 3 dictations)"},
        {"( berta befund", all, "3 dictations)" + incomplete}};
    for (const auto& [keys, expected, label] : cases) {
        key(results(), Qt::Key_Slash);
        QTest::keyClicks(&filter(), QLatin1String(keys));
        expect(expected, label);
        key(filter(), Qt::Key_Escape);
        expect(all, "3 dictations)");
    }
}

TEST_F(ResultFilter, TellsWhatItLeavesOut) {
    open();
    const auto told = [this] { return filter().accessibleDescription().toStdString(); };
    const std::string usual = told();
    filter().setText(QStringLiteral("anna  prio:h"));
    waitFor([&] { return model().rowCount() == 1; });
    EXPECT_EQ(told(), "Cannot be understood yet and is left out: prio:h");
    EXPECT_EQ(filter().toolTip().toStdString(), "<qt>" + told() + "</qt>");
    EXPECT_EQ(list().shownFilter(), "anna") << "as exports name it";
    speak("7");
    EXPECT_EQ(told(), "Noch nicht zu verstehen und deshalb weggelassen: prio:h");
    waitFor([&] {
        return text("lblSearchResult") == "Suchergebnis (1 von 3 Diktaten) – Filter unvollständig";
    });
    speak("9");
    filter().setText(QStringLiteral("z ").repeated(501));
    waitFor([&] {
        return text("lblSearchResult") == "Search result (3 dictations) – filter too long";
    });
    EXPECT_EQ(told(), "The filter would need more than 500 criteria. So all rows are shown.");
    constexpr int unlessItIsTakenAway = 3'600'000; // ms
    filter().setAttribute(Qt::WA_UnderMouse);
    QToolTip::showText({}, filter().toolTip(), &filter(), {}, unlessItIsTakenAway);
    filter().clear();
    waitFor([&] { return told() == usual; });
    waitFor([] { return !QToolTip::isVisible(); });
    EXPECT_EQ(text("lblSearchResult"), "Search result (3 dictations)");
}

TEST_F(ResultFilter, CountsAsOneWrites) {
    fs::remove_all(store.folder());
    store.add("2$WAV@@14$Anna.WAV");
    open();
    typed("anna", 1);
    EXPECT_EQ(text("lblSearchResult"), "Search result (1 of 1 dictation)");
    speak("7");
    waitFor([&] { return text("lblSearchResult") == "Suchergebnis (1 von 1 Diktat)"; });
    for (int i = 0; i < 1200; ++i)
        store.add("2$WAV@@14$Berta " + std::to_string(i) + ".WAV");
    filter().clear();
    searchAll();
    EXPECT_EQ(text("lblSearchResult"), "Suchergebnis (1.201 Diktate)");
    typed("berta", 1200);
    EXPECT_EQ(text("lblSearchResult"), "Suchergebnis (1.200 von 1.201 Diktaten)");
}

TEST_F(ResultFilter, FollowsColumnsLanguageAndSearch) {
    open();
    typed("high", 1);
    speak("7");
    waitFor([&] { return model().rowCount() == 0; });
    EXPECT_EQ(typed("hoch", 1), "*Ärmel; ");
    for (auto& field : modDictation::searchFields())
        if (field.Id == 15 || field.Id == 26)
            field.Visible = false;
    list().ApplyColumns();
    waitFor([&] { return model().rowCount() == 0; });
    searchAll();
    EXPECT_EQ(filter().text(), QString()) << "all that a search finds is shown";
    EXPECT_EQ(model().rowCount(), 3);
}

TEST_F(ResultFilter, HandsOutTheRowsLeft) {
    open();
    typed("wav", 2);
    results().selectAll();
    key(results(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 3) << "headers and two rows";
    // By what the rows are filtered that are there, not by what is typed since.
    const auto save = [this] {
        filter().setText(QStringLiteral("anna"));
        key(results(), Qt::Key_S, Qt::ControlModifier);
    };
    const auto name = [this](QDialog& dialog) {
        EXPECT_EQ(model().rowCount(), 2);
        auto& file = static_cast<QFileDialog&>(dialog);
        file.selectNameFilter(file.nameFilters().filter(QStringLiteral("html")).value(0));
        file.findChild<QLineEdit*>()->setText(
            QString::fromStdString((folder() / "rows.html").native()));
        dialog.accept();
    };
    withDialog(save, name, "ExportFile");
    EXPECT_NE(read("rows.html").find("Only rows with: wav<"), std::string::npos)
        << read("rows.html");
    waitFor([&] { return model().rowCount() == 1; });
}

TEST_F(ResultFilter, LeavesSelectedWhatStays) {
    open();
    results().selectAll();
    results().selectionModel()->setCurrentIndex(model().index(2, 0), QItemSelectionModel::NoUpdate);
    EXPECT_EQ(rows(), "*Anna; *Ärmel; *Berta; ");
    filter().setText(QStringLiteral("wav")); // without the current row
    waitFor([&] { return model().rowCount() == 2; });
    EXPECT_EQ(rows(), "*Anna; *Ärmel; ");
    EXPECT_EQ(results().currentIndex().row(), 0);
}

TEST_F(ResultFilter, IsTakenBackWhateverComesBetween) {
    open();
    typed("anna", 1);
    filter().clear();
    speak("7");
    waitFor([&] { return model().rowCount() == 3; });
    EXPECT_EQ(text("lblSearchResult"), "Suchergebnis (3 Diktate)");
}

TEST_F(ResultFilter, FiltersNoListWithoutHits) {
    openControl();
    const QLabel& hint = *results().findChild<EmptyState*>()->findChild<QLabel*>();
    const QString before = hint.text();
    const std::string label = text("lblSearchResult");
    filter().setText(QStringLiteral("anna"));
    waitFor([&] { return model().kept() != nullptr; });
    QCoreApplication::processEvents();
    EXPECT_EQ(hint.text(), before);
    EXPECT_EQ(text("lblSearchResult"), label);
}

// No thread can be had while it lives: none has an address space of that size.
class NoThreads {
public:
    NoThreads() {
        pthread_getattr_default_np(&before_);
        pthread_attr_t huge;
        pthread_attr_init(&huge);
        pthread_attr_setstacksize(&huge, std::size_t{1} << 50U);
        EXPECT_EQ(pthread_setattr_default_np(&huge), 0);
        pthread_attr_destroy(&huge);
    }
    ~NoThreads() {
        pthread_setattr_default_np(&before_);
        pthread_attr_destroy(&before_);
    }

private:
    pthread_attr_t before_{};
};

bool logged(const char* part) {
    const auto lines = recentLogLines();
    return std::ranges::any_of(
        lines, [part](const auto& line) { return line.find(part) != std::string::npos; });
}

TEST_F(ResultFilter, ShowsAllRowsWhenItCannotFilter) {
    open();
    typed("anna", 1);
    {
        const NoThreads none;
        const int pumped = user->pumped;
        filter().insert(QStringLiteral("b"));
        EXPECT_EQ(user->pumped, pumped) << "a key is not the place to handle messages in";
        waitFor([&] { return model().rowCount() == 3; });
    }
    EXPECT_TRUE(logged("AsideWork - no thread can be had"));
    EXPECT_EQ(text("lblSearchResult"), "Search result (3 dictations)");
    EXPECT_EQ(typed("anna", 1), "*Anna; ") << "and filters as soon as it can";
}

TEST_F(ResultFilter, EndsWorkThatNobodyWaitsForAnyMore) {
    std::atomic<bool> ended{false};
    AsideWork aside;
    aside.start(
        [&](const std::stop_token& stop) -> AsideWork::Delivery {
            while (!stop.stop_requested())
                QThread::msleep(1);
            ended = true;
            return {};
        },
        [] {});
    bool delivered = false;
    aside.start([&](const auto&) { return [&] { delivered = true; }; }, [] {});
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended && delivered; }, 60000));
}

TEST_F(ResultFilter, SurvivesWhatItsThreadThrows) {
    openControl();
    const std::pair<AsideWork::Work, const char*> cases[] = {
        {[](const auto&) -> AsideWork::Delivery { throw std::runtime_error("gone"); }, "k - gone"},
        {[](const auto&) -> AsideWork::Delivery { throw 1; }, "k - unknown"}};
    for (const auto& [work, line] : cases) {
        bool failed = false;
        AsideWork aside;
        aside.start(work, [&] { failed = true; });
        waitFor([&] { return failed; });
        EXPECT_TRUE(logged(line)) << line;
    }
}

} // namespace
} // namespace ov
