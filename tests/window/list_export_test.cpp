// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Export and print as the user reaches them from the control.

#include "export/print/print_preview.h"
#include "tests/run_program.h"
#include "tests/window/window_fixture.h"

#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>
#include <QTreeWidget>

namespace ov {
namespace {

using namespace std::string_literals;
using tests::child;
using tests::withDialog;

class ListExport : public tests::WindowTest {
protected:
    void searchAll() {
        openControl();
        user->saysYes = true;
        press("cmdSearchOptions(0)");
        user->saysYes = false;
        user->boxes.clear();
    }
    QTableView& results() { return widget<QTableView>("lvSearchResult"); }
    int authorColumn() {
        const QAbstractItemModel& model = *results().model();
        for (int column = 0; column < model.columnCount(); ++column)
            if (model.headerData(column, Qt::Horizontal).toString() == QStringLiteral("Author"))
                return column;
        throw std::runtime_error("no authors");
    }
    std::string author(int row) {
        return results().model()->index(row, authorColumn()).data().toString().toStdString();
    }
    // Menus have taken the keyboard.
    void focusRows() {
        window().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
        results().setFocus();
    }
    void key(QKeySequence::StandardKey standard) {
        WindowTest::key(results(), Qt::Key(QKeySequence(standard)[0].key()), Qt::ControlModifier);
    }
    // Chooses an entry of the button's menu, or of the one for selected rows.
    void choose(const char* part, bool selectedOnly = false) {
        press("cmdSearchOptions(2)");
        if (selectedOnly)
            click("Selected");
        click(part);
    }
    // Answers the file dialog that `open` brings up.
    static void save(const std::function<void()>& open, const std::string& name) {
        const auto drive = [&](QDialog& dialog) {
            dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(name));
            dialog.accept();
        };
        withDialog(open, drive, "ExportFile");
    }
    std::string saved(const std::string& name) {
        save([this] { choose("CSV"); }, native(name));
        return read(name);
    }
    std::string native(const std::string& name) { return (folder() / name).native(); }
};

TEST_F(ListExport, WritesTheRowsAsTheyAreShown) {
    store.add("2$WAV@@14$Zeh.WAV").add("a/2$WAV@@14$Anna.WAV").add("b/2$WAV@@14$Max.WAV");
    searchAll();
    for (int column = 0; column < results().model()->columnCount(); ++column)
        results().setColumnHidden(column, column != authorColumn());
    results().sortByColumn(authorColumn(), Qt::AscendingOrder);
    const std::string all = saved("all.csv");
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 4);
    EXPECT_TRUE(all.starts_with("\xEF\xBB\xBF"
                                "Author\r\n"))
        << all;
    results().selectRow(1);
    choose("Copy", true);
    EXPECT_EQ(QApplication::clipboard()->text().count(QLatin1Char('\n')), 2);
    save([this] { choose("CSV", true); }, native("one"));
    const std::string one = read("one.csv");
    EXPECT_EQ(std::count(one.begin(), one.end(), '\n'), 2);
    withDialog(
        [this] { choose("preview", true); },
        [](QDialog& dialog) { EXPECT_EQ(child<QSpinBox>(dialog, "PageNumber").maximum(), 1); });
    save([this] { choose("CSV"); }, native("typed.json"));
    EXPECT_TRUE(read("typed.json").starts_with("[\n")) << "the ending that was typed counts";
    save([this] { choose("CSV"); }, native("last"));

    EXPECT_NE(read("local.ini").find("ExportFormat=.csv"), std::string::npos);
    focusRows();
    withDialog([this] { key(QKeySequence::Save); },
               [&](QDialog& dialog) {
                   tests::speakGerman(dialog);
                   EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Ergebnisliste exportieren"));
                   EXPECT_EQ(dynamic_cast<QFileDialog&>(dialog).selectedNameFilter(),
                             QStringLiteral("CSV-Datei (*.csv)"));
                   dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(native("again")));
                   dialog.accept();
               });
    EXPECT_EQ(read("again.csv"), all) << "the last form is offered first";
}

TEST_F(ListExport, AsksBeforeItReplacesAndTellsWhatFailed) {
    store.add("2$WAV@@14$Zeh.WAV");
    searchAll();
    write("there.csv", "old");
    EXPECT_EQ(saved("there.csv"), "old");
    ASSERT_EQ(user->boxes.size(), 1U);
    user->saysYes = true;
    EXPECT_NE(saved("there.csv"), "old");
    user->boxes.clear();
    save([this] { choose("CSV"); }, native("missing/x.csv"));
    ASSERT_EQ(user->boxes.size(), 1U);
    EXPECT_NE(user->boxes[0].text.find("No such file"), std::string::npos);
}

TEST_F(ListExport, SaysOfTheRowsOfAFailedSearchWhatThatLookedFor) {
    store.add("2$WAV@@14$Anna.WAV").add("2$WAV@@14$Anna 2.WAV");
    write("SearchCriteria.dat", tests::criterion("5|17|Anna|\r\n"));
    searchAll();
    widget<QTreeWidget>("lvSearchCriteria").topLevelItem(0)->setSelected(true);
    press("cmdSearchKriteriaOptions(2)");
    host().refused = {"PI_ProgressValue(&2)"};
    user->saysYes = true;
    press("cmdSearchOptions(0)");
    save([this] { choose("Web page"); }, native("rows.html"));
    EXPECT_NE(read("rows.html").find("No search criteria: all dictations"), std::string::npos);
}

TEST_F(ListExport, NeedsRowsAndAPrinter) {
    store.add("2$WAV@@14$Zeh.WAV");
    openControl();
    press("cmdSearchOptions(2)");
    key(QKeySequence::Print);
    EXPECT_EQ(user->boxes.size(), 2U) << "the list is empty";
    closeControl();
    searchAll();
    withDialog([this] { key(QKeySequence::Print); },
               [](QDialog& dialog) {
                   EXPECT_EQ(dialog.objectName().toStdString(), "frmExportOptionsPrint");
               });
    EXPECT_TRUE(user->boxes.empty()) << "cancelled";
    withDialog([this] { choose("Print"); },
               [](QDialog& dialog) {
                   child<QRadioButton>(dialog, "optBereich(1)").click();
                   child<QPushButton>(dialog, "cmdOK").click();
               });
    ASSERT_EQ(user->boxes.size(), 1U) << "nothing is selected";
}

TEST_F(ListExport, PreviewTurnsItsPages) {
    for (int i = 0; i < 120; ++i)
        store.add("2$WAV@@14$Author " + std::to_string(i) + ".WAV");
    searchAll();
    withDialog([this] { choose("preview"); },
               [](QDialog& dialog) {
                   auto& view = child<QWidget>(dialog, "PageView");
                   auto& number = child<QSpinBox>(dialog, "PageNumber");
                   ASSERT_GT(number.maximum(), 2);
                   const QImage first = view.grab().toImage();
                   QTest::keyClick(&dialog, Qt::Key_End);
                   EXPECT_EQ(number.value(), number.maximum());
                   EXPECT_NE(view.grab().toImage(), first);
                   child<QToolButton>(dialog, "cmdPreviousPage").click();
                   EXPECT_EQ(number.value(), number.maximum() - 1);
                   QTest::keyClick(&dialog, Qt::Key_Home);
                   EXPECT_EQ(view.grab().toImage(), first);
               },
               "PrintPreview");
}

// A command lets messages be handled, and these delete the menu it was chosen from. (Seen where
// freed memory is overwritten, and with the events of a real window system.)
TEST_F(ListExport, EntriesOutliveTheirMenus) {
    for (int i = 0; i < 480; ++i)
        store.add("2$WAV@@14$Author " + std::to_string(i) + ".WAV");
    searchAll();
    const auto escape = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    withDialog([this] { choose("preview"); }, escape, "PrintPreview");
    focusRows();
    withDialog([this] { key(QKeySequence::Save); }, escape, "ExportFile");
    withDialog([this] { choose("Print…"); }, escape, "frmExportOptionsPrint");
    for (const auto& [entry, file] : std::map<const char*, std::string>{
             {"PDF", "a.pdf"}, {"Spread", "a.xlsx"}, {"Web", "a.html"}}) {
        save([&, entry = entry] { choose(entry); }, native(file));
        EXPECT_FALSE(read(file).empty()) << file;
    }
    choose("Copy as");
    EXPECT_EQ(QApplication::clipboard()->text().count(QLatin1Char('\n')), 481);

    const auto chooseInList = [this](const char* entry) {
        QContextMenuEvent asked(QContextMenuEvent::Mouse, {20, 20},
                                results().viewport()->mapToGlobal(QPoint(20, 20)));
        QApplication::sendEvent(results().viewport(), &asked);
        click(entry);
    };
    chooseInList("Select all");
    chooseInList("Copy rows");
    EXPECT_EQ(QApplication::clipboard()->text().count(QLatin1Char('\n')), 481);
    chooseInList("Copy file path");
    EXPECT_EQ(QApplication::clipboard()->text().count(QLatin1Char('\n')), 479);
    chooseInList("Show log");
    EXPECT_TRUE(host().calls.back().starts_with("PI_LogView"));
    withDialog([&] { chooseInList("Choose columns"); }, escape, "frmSearchResultColumns");
}

// Where with_printer has set up a printer.
class PrintServer : public ListExport {
protected:
    // What came out of the printer's n-th job.
    static std::string printed(int job) {
        const std::string file =
            qEnvironmentVariable("OV_PRINTED").toStdString() + "/" + std::to_string(job);
        EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(file); }, 60'000));
        return tests::shellOutput("pdftotext -layout '" + file + "' -");
    }
};

TEST_F(PrintServer, PrintsAllRowsOrTheSelectedOnes) {
    if (qEnvironmentVariableIsEmpty("OV_PRINTED"))
        GTEST_SKIP() << "there is no printer";
    for (int i = 10; i < 50; ++i)
        store.add("2$WAV@@14$A" + std::to_string(i) + ".WAV");
    searchAll();
    results().selectRow(7);
    for (const bool selectedOnly : {false, true})
        withDialog([&] { choose("Print", selectedOnly); },
                   [](QDialog& dialog) {
                       child<QLineEdit>(dialog, "txtTitel").setText(QStringLiteral("On paper"));
                       child<QPushButton>(dialog, "cmdOK").click();
                   });
    EXPECT_EQ(user->boxLines(), std::vector<std::string>());
    for (const int job : {1, 2}) {
        const std::string pages = printed(job);
        for (const std::string& part : {"On paper"s, author(7), "Page 1 of "s})
            EXPECT_NE(pages.find(part), std::string::npos) << part << job;
        EXPECT_EQ(pages.find(author(8)) == std::string::npos, job == 2) << job;
    }
}

TEST_F(ListExport, EndsWithItsWindow) {
    store.add("2$WAV@@14$Zeh.WAV");
    searchAll();
    withDialog([this] { choose("preview"); },
               [this](QDialog& dialog) {
                   control_ = nullptr;
                   EXPECT_FALSE(dialog.isVisible());
               },
               "PrintPreview");
    EXPECT_TRUE(user->boxes.empty());
}

} // namespace
} // namespace ov
