// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Export and print as the user reaches them from the control.

#include "dialogs/frmExportOptionsPrint.h"
#include "tests/export/print/list_export_fixture.h"
#include "tests/window/pdf_pages.h"

#include <QProgressDialog>

namespace ov {
namespace {

// In place of a printer.
void printTo(QDialog& dialog, const std::string& file) {
    static_cast<frmExportOptionsPrint&>(dialog).printer().setOutputFileName(
        QString::fromStdString(file));
    clickOn(dialog, "cmdOK");
}

TEST_F(ListExport, WritesTheRowsAsTheyAreShown) {
    // The walk meets them in neither order.
    store.add("a/2$WAV@@14$Zeh.WAV").add("b/2$WAV@@14$Anna.WAV").add("2$WAV@@14$Max.WAV");
    openAndSearch();
    write("local.ini", read("local.ini") + "ExportAllColumns=-1\r\n");
    saved("PDF", "wide");
    EXPECT_NO_THROW(static_cast<void>(readPdf(native("wide.pdf")).at(0).find("P")))
        << "a short caption where there is little room";
    showOnly(5);
    const std::string mark = "\xEF\xBB\xBF";
    const std::string all = mark + "Author\r\nAnna\r\nMax\r\nZeh\r\n";
    QStringList filters;
    for (const auto& [entry, ending, beginning] :
         std::vector<std::array<std::string, 3>>{{"PDF document", "pdf", "%PDF"},
                                                 {"Spreadsheet", "xlsx", "PK"},
                                                 {"CSV file", "csv", all},
                                                 {"Web page", "html", "<!DOCTYPE"},
                                                 {"JSON file", "json", "[\n"}}) {
        save([&, entry = entry] { choose(entry.c_str()); }, "out",
             [&](QFileDialog& dialog) {
                 EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(),
                           QStringLiteral("Dictations found"));
                 ASSERT_EQ(dialog.nameFilters().size(), 1);
                 filters << dialog.nameFilters();
             });
        EXPECT_TRUE(filters.last().toStdString().starts_with(entry));
        EXPECT_TRUE(filters.last().toStdString().ends_with(" (*." + ending + ")"));
        EXPECT_TRUE(read("out." + ending).starts_with(beginning)) << entry;
    }
    EXPECT_TRUE(saved("CSV", "typed.htm").starts_with("<!DOCTYPE")) << "as its ending says";

    clickHeader(column(5)); // the other way round
    results().selectAll();
    choose("Copy", true);
    EXPECT_EQ(clipboard(), "Author\nZeh\nMax\nAnna\n");
    results().selectRow(2);
    choose("Copy", true);
    EXPECT_EQ(clipboard(), "Author\nAnna\n");
    save([this] { choose("CSV", true); }, "one");
    EXPECT_EQ(read("one.csv"), mark + "Author\r\nAnna\r\n");

    EXPECT_NE(read("local.ini").find("ExportFormat=.csv"), std::string::npos);
    focusRows();
    save([this] { key(QKeySequence::Save); }, "again",
         [&](QFileDialog& dialog) {
             EXPECT_EQ(dialog.nameFilters().mid(0, 5), filters);
             EXPECT_EQ(dialog.directory().path().toStdString(), folder().native());
             speakGerman(dialog);
             EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Ergebnisliste exportieren"));
             EXPECT_EQ(dialog.selectedNameFilter(), QStringLiteral("CSV-Datei (*.csv)"));
         });
    EXPECT_EQ(read("again.csv").size(), all.size()) << "the last form is offered first";
}

TEST_F(ListExport, LeavesOutWhatTellsNothing) {
    store.add("2$WAV@@14$Anna@@12$7.WAV").add("2$WAV@@14$Berta@@11$Knee.WAV");
    openAndSearch();
    showOnly(26);
    choose("Copy as");
    EXPECT_EQ(clipboard().substr(0, 15), "File name\n2$WAV") << "where nothing else tells";
    openAndSearch();
    clickHeader(column(5));
    results().setColumnHidden(column(1), true); // a folder that is another one each time
    choose("Copy as");
    EXPECT_EQ(clipboard(), "Status\tAuthor\tNumber\tPriority\tSubject\n"
                           "Dictated\tAnna\t7\tNormal\t\nDictated\tBerta\t\tNormal\tKnee\n");
    results().selectRow(1);
    choose("Copy as", true);
    EXPECT_EQ(clipboard(), "Status\tAuthor\tPriority\tSubject\nDictated\tBerta\tNormal\tKnee\n");

    choose("All columns");
    const QMenu& menu = popup();
    EXPECT_TRUE(menu.actions().constLast()->isChecked()) << "comes again";
    EXPECT_EQ(menu.activeAction(), menu.actions().constLast()) << "for the keyboard";
    click("Copy as");
    EXPECT_EQ(QApplication::clipboard()->text().section(u'\n', 0, 0).count(u'\t'), 19);
    EXPECT_TRUE(QApplication::clipboard()->text().contains(QLatin1String("2$WAV@@14$Anna@@12$7")));
    const auto printed = [this](bool all) {
        const std::string file = native("out.pdf");
        withDialog([this] { choose("Print"); },
                   [&](QDialog& dialog) {
                       auto& box = child<QAbstractButton>(dialog, "chkAllColumns");
                       EXPECT_NE(box.isChecked(), all) << "as it was left";
                       box.click();
                       printTo(dialog, file);
                   });
        const auto lines = readPdf(file).at(0).lines();
        return std::ranges::any_of(
            lines, [](const std::string& line) { return line.find("2$WAV") != std::string::npos; });
    };
    EXPECT_FALSE(printed(false));
    EXPECT_EQ(read("local.ini").find("ExportAllColumns=-1"), std::string::npos);
    EXPECT_TRUE(printed(true));
    EXPECT_NE(read("local.ini").find("ExportAllColumns=-1"), std::string::npos);
}

TEST_F(ListExport, KeepsTheChoiceOfColumnsWhereSettingsCannotBeWritten) {
    store.add("2$WAV@@14$Anna.WAV");
    openAndSearch();
    fs::remove(folder() / "local.ini");
    fs::create_directory(folder() / "local.ini");
    choose("All columns");
    click("Copy as");
    EXPECT_EQ(copiedLines(), 2);
    EXPECT_TRUE(QApplication::clipboard()->text().contains(QLatin1String("2$WAV@@14$Anna")));
    withDialog([this] { choose("Print"); },
               [&](QDialog& dialog) {
                   auto& box = child<QAbstractButton>(dialog, "chkAllColumns");
                   EXPECT_TRUE(box.isChecked());
                   box.click();
                   clickOn(dialog, "cmdOK");
               });
    choose("Copy as");
    EXPECT_FALSE(QApplication::clipboard()->text().contains(QLatin1String("2$WAV@@14$Anna")));
}

TEST_F(ListExport, AsksBeforeItReplacesAndTellsWhatFailed) {
    store.add("2$WAV@@14$Anna.WAV").add("2$WAV@@14$Anna 2.WAV");
    write("SearchCriteria.dat", criterion("5|17|Anna|\r\n"));
    openAndSearch();
    write("there.csv", "old");
    EXPECT_EQ(saved("CSV", "there.csv"), "old");
    ASSERT_EQ(user->boxes.size(), 1U);
    user->saysYes = true;
    EXPECT_NE(saved("CSV", "there.csv"), "old");
    saved("CSV", "missing/x.csv");
    ASSERT_EQ(user->boxes.size(), 3U);
    EXPECT_NE(user->boxes[2].text.find("No such file"), std::string::npos);

    // The rows of a failed search were looked for by what that looked for.
    widget<QTreeWidget>("lvSearchCriteria").topLevelItem(0)->setSelected(true);
    press("cmdSearchKriteriaOptions(2)");
    host().refused = {"PI_ProgressValue(&2)"};
    search();
    EXPECT_NE(saved("Web page", "rows.html").find("No search criteria: all dictations"),
              std::string::npos);
}

// Rows, the foot and the rest of a printout.
std::string printout(const std::string& file) {
    const auto pages = readPdf(file);
    std::vector<PdfWord> rows;
    for (const PdfPage& page : pages)
        for (const PdfWord& word : page.words)
            if (word.text.starts_with("A1") || word.text.starts_with("A2"))
                rows.push_back(word);
    if (rows.empty())
        return "nothing";
    EXPECT_TRUE(pages[0].lines()[0].ends_with("paper")) << pages[0].lines()[0];
    EXPECT_EQ(std::lround(pages[0].size.width()), 595);
    EXPECT_NEAR(rows[0].place.height(), 11 * 1.164, 0.2);
    EXPECT_NE(shellOutput("pdffonts '" + file + "'").find("DejaVuSerif"), std::string::npos);
    const std::string foot = pages[0].lines().back();
    return rows.front().text + " to " + rows.back().text + ", " + std::to_string(rows.size()) +
           ", " + foot.substr(foot.find("Page"));
}

TEST_F(ListExport, PrintsWhatTheDialogSays) {
    openControl();
    key(QKeySequence::Print);
    EXPECT_TRUE(user->onlyText().starts_with("The result list is empty."));
    addAuthors(120);
    write("local.ini", "[OVSearch.ctrlOVSearch]\r\nPrintOrientation=1\r\nPrintFontSize=11\r\n"
                       "PrintFontName=DejaVu Serif\r\n");
    openAndSearch();
    showOnly(5);
    results().clearSelection();
    for (const char* range : {"optBereich(0)", "optBereich(1)"})
        withDialog([this] { choose("Print"); },
                   [&](QDialog& dialog) {
                       clickOn(dialog, range);
                       clickOn(dialog, "cmdOK");
                   });
    ASSERT_EQ(user->boxes.size(), 2U);
    EXPECT_EQ(user->boxes[0].text, "No printer is set up.");
    EXPECT_EQ(user->boxes[1].text.substr(0, 21), "No rows are selected.");
    user->boxes.clear();
    results().selectRow(2);
    // The menu for selected rows, what is clicked in the dialog, the page (0: all), what is
    // printed.
    const std::tuple<bool, const char*, int, std::string> cases[] = {
        {false, nullptr, 0, "A100 to A219, 120, Page 1 of 3"},
        {true, nullptr, 0, "A102 to A102, 1, Page 1 of 1"},
        {false, "optBereich(1)", 0, "A102 to A102, 1, Page 1 of 1"},
        {true, "optBereich(0)", 0, "A100 to A219, 120, Page 1 of 3"},
        {false, nullptr, 1, "A100 to A143, 44, Page 1 of 3"},
        {false, nullptr, 2, "A144 to A188, 45, Page 2 of 3"},
        {false, nullptr, 4, ""}};
    for (const auto& [selectedOnly, range, page, expected] : cases) {
        const std::string file = native("out.pdf");
        const auto fillIn = [&, range = range, page = page](QDialog& dialog) {
            auto& form = static_cast<frmExportOptionsPrint&>(dialog);
            form.printer().setFromTo(std::max(page, 1), std::max(page, 1)); // stays with all pages
            form.printer().setPrintRange(page > 0 ? QPrinter::PageRange : QPrinter::AllPages);
            if (range != nullptr)
                clickOn(form, range);
            child<QLineEdit>(form, "txtTitel").setText(QStringLiteral("On paper"));
            printTo(form, file);
        };
        withDialog([&, only = selectedOnly] { choose("Print", only); }, fillIn);
        EXPECT_EQ(fs::exists(file) ? printout(file) : "", expected);
        fs::remove(file);
    }
    EXPECT_PRED2(holds, user->onlyText(), "has no page 4; its last one is page 3.");
    user->boxes.clear();
    withDialog([this] { choose("Print"); },
               [this](QDialog& dialog) { printTo(dialog, native("missing/out.pdf")); });
    EXPECT_EQ(user->boxes.size(), 1U) << "that it failed";
}

TEST_F(ListExport, CanBeStopped) {
    addAuthors(60);
    openAndSearch();
    write("there.pdf", "old");
    QString title; // of what is stopped
    int reached = 0;
    const char* language = "9";
    // The first look at the window system, which a new person brings with him, presses Cancel.
    const auto stopping = [&](const std::function<void()>& open) {
        title.clear();
        RecordingInterface impatient([&] {
            auto* bar = window().findChild<QProgressDialog*>(QStringLiteral("ExportProgress"));
            if (bar == nullptr)
                return;
            speak(language);
            title = bar->windowTitle(), reached = bar->value(), bar->cancel();
        });
        impatient.saysYes = true;
        open();
        EXPECT_FALSE(title.isEmpty());
        return impatient.boxes.empty() ? std::string() : impatient.boxes.back().text;
    };
    for (const char* form : {"PDF", "Spreadsheet", "CSV"}) {
        EXPECT_EQ(stopping([&] { saved(form, "new"); }),
                  "The export was stopped. No file was written.");
        EXPECT_EQ(read("new.pdf") + read("new.xlsx") + read("new.csv"), "");
    }
    EXPECT_EQ(stopping([&] { saved("PDF", "there.pdf"); }),
              "The export was stopped. The file " + native("there.pdf") + " is as it was.");
    EXPECT_EQ(read("there.pdf"), "old");
    const auto toFile = [this](QDialog& dialog) { printTo(dialog, native("p.pdf")); };
    EXPECT_EQ(stopping([&] { withDialog([this] { choose("Print"); }, toFile); }),
              "Printing was stopped.");
    EXPECT_EQ(title, QStringLiteral("Print result list"));
    language = "7"; // from then on
    stopping([&] { withDialog([this] { choose("Print"); }, toFile); });
    EXPECT_EQ(title, QStringLiteral("Ergebnisliste drucken"));
    speak(language = "9");
    EXPECT_EQ(stopping([this] { choose("preview"); }), "") << "no window, no word";
    QApplication::clipboard()->setText(QStringLiteral("old"));
    EXPECT_EQ(stopping([this] { choose("Copy as"); }), "");
    auto& list = dynamic_cast<ResultList&>(results());
    list.selectAll();
    focusRows();
    for (const auto request : {&ResultList::copyRequested, &ResultList::copyPathsRequested}) {
        const RecordingInterface hasty([&] { WindowTest::key(list, Qt::Key_Escape); });
        (list.*request)();
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(clipboard(), "old");
    write("local.ini", read("local.ini") + "ExportAllColumns=-1\r\n");
    for (const char* command : {"preview", "Copy as"}) {
        reached = 1000;
        stopping([&] { choose(command); });
        EXPECT_LT(reached, 250) << "nothing is done before: " << command;
    }
    reached = 1000;
    stopping([&] { withDialog([this] { choose("Print"); }, toFile); });
    EXPECT_LT(reached, 250);
}

} // namespace
} // namespace ov
