// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Export and print as the user reaches them from the control.

#include "dialogs/frmExportOptionsPrint.h"
#include "tests/window/pdf_pages.h"
#include "tests/window/window_fixture.h"

#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QProgressDialog>
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
    void showOnlyAuthors() { // sorted
        for (int column = 0; column < results().model()->columnCount(); ++column)
            results().setColumnHidden(column, column != authorColumn());
        const QHeaderView* header = results().horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(authorColumn()) + 8, 8});
        QCoreApplication::processEvents();
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
    // Cancels the progress of what `open` starts; gives back what the user is told.
    std::string stopping(const std::function<void()>& open) {
        QTimer look;
        look.callOnTimeout([&] {
            if (auto* progress =
                    window().findChild<QProgressDialog*>(QStringLiteral("ExportProgress"))) {
                look.stop();
                progress->cancel();
            }
        });
        look.start(0);
        open();
        EXPECT_FALSE(look.isActive());
        const std::string said = user->boxes.empty() ? std::string() : user->boxes.back().text;
        user->boxes.clear();
        return said;
    }
    std::string native(const std::string& name) { return (folder() / name).native(); }
};

TEST_F(ListExport, WritesTheRowsAsTheyAreShown) {
    store.add("2$WAV@@14$Zeh.WAV").add("a/2$WAV@@14$Anna.WAV").add("b/2$WAV@@14$Max.WAV");
    searchAll();
    showOnlyAuthors();
    const std::string all = saved("all.csv");
    EXPECT_EQ(all, "\xEF\xBB\xBF"
                   "Author\r\nAnna\r\nMax\r\nZeh\r\n");
    results().selectAll();
    choose("Copy", true);
    EXPECT_EQ(QApplication::clipboard()->text().count(QLatin1Char('\n')), 4);
    results().selectRow(1);
    choose("Copy", true);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "Author\nMax\n");
    save([this] { choose("CSV", true); }, native("one"));
    EXPECT_EQ(read("one.csv"), "\xEF\xBB\xBF"
                               "Author\r\nMax\r\n");
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

// From the menu for all or for selected rows, with the range chosen in the dialog, pages of a
// printer that writes into a file.
struct Printing {
    bool fromSelected;
    int range; // -1: as it is offered
    int page;  // 0: all
    std::string rows;
    std::string foot;
};

void fillIn(frmExportOptionsPrint& form, const Printing& printing, const std::string& file) {
    form.printer().setOutputFileName(QString::fromStdString(file));
    if (printing.page > 0) {
        form.printer().setPrintRange(QPrinter::PageRange);
        form.printer().setFromTo(printing.page, printing.page);
    }
    EXPECT_EQ(form.DruckBereichIndex, printing.fromSelected ? 1 : 0);
    if (printing.range >= 0)
        child<QRadioButton>(form, printing.range == 0 ? "optBereich(0)" : "optBereich(1)").click();
    child<QLineEdit>(form, "txtTitel").setText(QStringLiteral("On paper"));
    child<QPushButton>(form, "cmdOK").click();
}

void expectPrinted(const std::string& file, const Printing& expected) {
    const auto pages = tests::readPdf(file);
    std::vector<tests::PdfWord> rows;
    for (const tests::PdfPage& page : pages)
        for (const tests::PdfWord& word : page.words)
            if (word.text.starts_with("A1") || word.text.starts_with("A2"))
                rows.push_back(word);
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front().text + " to " + rows.back().text + ", " + std::to_string(rows.size()),
              expected.rows);
    const std::vector<std::string> lines = pages[0].lines();
    EXPECT_NE(lines.back().find(expected.foot), std::string::npos) << lines.back();
    EXPECT_TRUE(lines[0].ends_with("paper")) << lines[0];
    EXPECT_EQ(std::lround(pages[0].size.width()), 595);
    EXPECT_NEAR(rows[0].place.height(), 11 * 1.164, 0.2);
    EXPECT_NE(tests::shellOutput("pdffonts '" + file + "'").find("DejaVuSerif"), std::string::npos);
}

TEST_F(ListExport, PrintsWhatTheDialogSays) {
    for (int i = 100; i < 220; ++i)
        store.add("2$WAV@@14$A" + std::to_string(i) + ".WAV");
    write("local.ini", "[OVSearch.ctrlOVSearch]\r\nPrintOrientation=1\r\nPrintFontSize=11\r\n"
                       "PrintFontName=DejaVu Serif\r\n");
    searchAll();
    showOnlyAuthors();
    results().selectRow(2);
    const std::vector<Printing> cases = {{false, -1, 0, "A100 to A219, 120", "Page 1 of 3"},
                                         {true, -1, 0, "A102 to A102, 1", "Page 1 of 1"},
                                         {false, 1, 0, "A102 to A102, 1", "Page 1 of 1"},
                                         {true, 0, 0, "A100 to A219, 120", "Page 1 of 3"},
                                         {false, -1, 2, "A144 to A188, 45", "Page 2 of 3"}};
    for (const Printing& printing : cases) {
        const std::string file = native("out.pdf");
        withDialog([&] { choose("Print", printing.fromSelected); },
                   [&](QDialog& dialog) {
                       fillIn(static_cast<frmExportOptionsPrint&>(dialog), printing, file);
                   });
        expectPrinted(file, printing);
    }
    EXPECT_EQ(user->boxLines(), std::vector<std::string>());
}

TEST_F(ListExport, OffersEachForm) {
    store.add("2$WAV@@14$Zeh.WAV");
    searchAll();
    struct Form {
        const char* entry;
        QString filter;
        std::string ending;
        std::string beginning;
    };
    const std::vector<Form> forms = {
        {"PDF", QStringLiteral("PDF document (*.pdf)"), ".pdf", "%PDF"},
        {"Spreadsheet", QStringLiteral("Spreadsheet (Excel workbook) (*.xlsx)"), ".xlsx", "PK"},
        {"CSV", QStringLiteral("CSV file (*.csv)"), ".csv", "\xEF\xBB\xBF"},
        {"Web", QStringLiteral("Web page (HTML) (*.html)"), ".html", "<!DOCTYPE"},
        {"JSON", QStringLiteral("JSON file (*.json)"), ".json", "["}};
    QStringList filters;
    for (const Form& form : forms) {
        withDialog([&] { choose(form.entry); },
                   [&](QDialog& dialog) {
                       auto& chooser = static_cast<QFileDialog&>(dialog);
                       EXPECT_EQ(chooser.nameFilters(), QStringList(form.filter));
                       auto& name = *dialog.findChild<QLineEdit*>();
                       EXPECT_EQ(name.text().toStdString(), "Dictations found");
                       name.setText(QString::fromStdString(native("out")));
                       dialog.accept();
                   });
        EXPECT_TRUE(read("out" + form.ending).starts_with(form.beginning)) << form.entry;
        filters << form.filter;
    }
    focusRows();
    withDialog([&] { key(QKeySequence::Save); },
               [&](QDialog& dialog) {
                   auto& chooser = static_cast<QFileDialog&>(dialog);
                   EXPECT_EQ(chooser.nameFilters().mid(0, 5), filters);
                   EXPECT_EQ(chooser.selectedNameFilter(), forms.back().filter) << "the last one";
                   EXPECT_EQ(chooser.directory().path().toStdString(), folder().native());
                   dialog.findChild<QLineEdit*>()->setText(
                       QString::fromStdString(native("typed.htm")));
                   dialog.accept();
               });
    EXPECT_TRUE(read("typed.htm").starts_with("<!DOCTYPE")) << "as its ending says";
}

TEST_F(ListExport, CanBeStopped) {
    for (int i = 0; i < 1500; ++i)
        store.add("2$WAV@@14$A" + std::to_string(i) + ".WAV");
    searchAll();
    write("there.pdf", "old");
    const auto pdf = [this](const std::string& name) {
        save([this] { choose("PDF"); }, native(name));
    };
    EXPECT_EQ(stopping([&] { pdf("new.pdf"); }), "The export was stopped. No file was written.");
    EXPECT_EQ(read("new.pdf"), "");
    user->saysYes = true;
    EXPECT_EQ(stopping([&] { pdf("there.pdf"); }),
              "The export was stopped. The file " + native("there.pdf") + " is as it was.");
    EXPECT_EQ(read("there.pdf"), "old");
    EXPECT_EQ(stopping([&] {
                  withDialog(
                      [this] { choose("Print"); },
                      [this](QDialog& dialog) {
                          static_cast<frmExportOptionsPrint&>(dialog).printer().setOutputFileName(
                              QString::fromStdString(native("p.pdf")));
                          child<QPushButton>(dialog, "cmdOK").click();
                      });
              }),
              "Printing was stopped.");
    EXPECT_EQ(stopping([this] { choose("preview"); }), "") << "no window, no word";
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
                   QTest::keyClick(&dialog, Qt::Key_PageDown);
                   child<QToolButton>(dialog, "cmdNextPage").click();
                   QTest::keyClick(&dialog, Qt::Key_PageUp);
                   EXPECT_EQ(number.value(), 2);
                   number.setValue(1);
                   EXPECT_EQ(view.grab().toImage(), first);
                   EXPECT_FALSE(child<QToolButton>(dialog, "cmdPreviousPage").isEnabled());
                   EXPECT_TRUE(child<QToolButton>(dialog, "cmdNextPage").isEnabled());
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

TEST_F(ListExport, PreviewZoomsAndPrints) {
    store.add("2$WAV@@14$Zeh.WAV").add("2$WAV@@14$Anna.WAV");
    searchAll();
    withDialog([this] { choose("preview"); },
               [](QDialog& dialog) {
                   auto& view = child<QWidget>(dialog, "PageView");
                   const QSize whole = view.size();
                   const auto wider = [&] { return (view.width() - 6.0) / (whole.width() - 6.0); };
                   QTest::keyClick(&dialog, Qt::Key_Plus);
                   child<QToolButton>(dialog, "cmdZoomIn").click();
                   EXPECT_NEAR(wider(), 1.25 * 1.25, 0.01);
                   QTest::keyClick(&dialog, Qt::Key_Minus);
                   child<QToolButton>(dialog, "cmdZoomOut").click();
                   EXPECT_NEAR(wider(), 1, 0.01);
                   dialog.resize(dialog.size() * 0.8);
                   EXPECT_NEAR(wider(), 1, 0.01) << "stays as the user wants it";
                   child<QPushButton>(dialog, "cmdWholePage").click();
                   EXPECT_LT(wider(), 0.9);
                   for (int i = 0; i < 30; ++i)
                       QTest::keyClick(&dialog, i < 15 ? Qt::Key_Minus : Qt::Key_Plus);
                   EXPECT_NEAR(view.height() - 6, 400.0 * 595 / 72, 1) << "as large as it gets";
               },
               "PrintPreview");
    results().selectRow(1);
    withDialog(
        [this] {
            withDialog([this] { choose("preview", true); },
                       [](QDialog& dialog) {
                           EXPECT_EQ(child<QSpinBox>(dialog, "PageNumber").maximum(), 1);
                           child<QPushButton>(dialog, "cmdPrint").click();
                       },
                       "PrintPreview");
        },
        [](QDialog& dialog) {
            EXPECT_TRUE(child<QRadioButton>(dialog, "optBereich(1)").isChecked());
        },
        "frmExportOptionsPrint");
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
