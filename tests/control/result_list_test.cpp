// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/result_list.h"
#include "support/modINI.h"
#include "tests/control/rows_fixture.h"
#include "tests/environment.h"
#include "tests/scripted_media.h"
#include "tests/wave_files.h"

#include <QMimeData>
#include <QTableWidget>

namespace ov {
namespace {

using namespace tests;

class Rows : public RowsTest {
protected:
    Rows() {
        for (const char* name :
             {"2$WAV@@14$Berta@@12$2@@6$00$10$00", "2$WAV@@14$Anna@@12$1@@6$01$00$05",
              "2$ROH@@14$Berta@@12$1@@6$x", "2$ROH@@14$Anna@@12$2@@11$Knie & Hüfte"})
            store.add(std::string(name) + ".WAV");
    }
    void open() {
        openControl();
        searchAll();
        clickHeader(column(5));
    }
    // The menu of the title of that field, with the mouse.
    void openMenu(int field) {
        QHeaderView* header = results().horizontalHeader();
        results().scrollTo(model().index(0, column(field)));
        const QPoint place(header->sectionViewportPosition(column(field)) + 3, 3);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                header->viewport()->mapToGlobal(place));
        QApplication::sendEvent(header->viewport(), &event);
    }
    void choose(int field, const char* entry) {
        openMenu(field);
        click(entry);
    }
    std::string authorsWithNumbers() {
        std::string all;
        for (int row = 0; row < model().rowCount(); ++row)
            all +=
                (model().text(row, column(5)) + model().text(row, column(8))).toStdString() + " ";
        return all;
    }
    std::string titles() {
        std::string all;
        for (const std::int32_t field : dynamic_cast<ResultList&>(results()).shownFields())
            all += std::to_string(field) + " ";
        return all;
    }
    std::string setting(const char* key) {
        return modINI::ReadIniValueDirect("OVSearch.ctrlOVSearch", key, "", path("local.ini"));
    }
    std::string focus() { return window().focusWidget()->objectName().toStdString(); }
};

TEST_F(Rows, SortByTwoColumns) {
    open();
    choose(8, "Then ascending");
    EXPECT_EQ(authorsWithNumbers(), "Anna1 Anna2 Berta1 Berta2 ");
    choose(5, "Sort descending");
    EXPECT_EQ(authorsWithNumbers(), "Berta1 Berta2 Anna1 Anna2 ");
    choose(8, "Then descending");
    EXPECT_EQ(authorsWithNumbers(), "Berta2 Berta1 Anna2 Anna1 ");
    openControl();
    searchAll();
    EXPECT_EQ(authorsWithNumbers(), "Berta2 Berta1 Anna2 Anna1 ") << "remembered";
    choose(8, "Then descending");
    choose(5, "Sort ascending");
    EXPECT_EQ(rows(18).size(), std::string("*; Knie & Hüfte; ; ; ").size());
    openMenu(8);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (const QAction* entry : menu->actions())
        EXPECT_FALSE(entry->isChecked()) << entry->text().toStdString();
    menu->close();
}

TEST_F(Rows, TakeBackASecondColumnThatIsHidden) {
    open();
    choose(8, "Then descending");
    EXPECT_EQ(authorsWithNumbers(), "Anna2 Anna1 Berta2 Berta1 ");
    modDictation::searchFields()[8].Visible = false;
    dynamic_cast<ResultList&>(results()).ApplyColumns();
    EXPECT_EQ(model().columnOf(8), -1);
    choose(5, "No second column");
    modDictation::searchFields()[8].Visible = true;
    dynamic_cast<ResultList&>(results()).ApplyColumns();
    EXPECT_NE(authorsWithNumbers(), "Anna2 Anna1 Berta2 Berta1 ");
    EXPECT_EQ(setting("ListSortSecond"), "0");
}

// What the titles say while the rows are being sorted, looked at by the first of the messages that
// are handled meanwhile.
TEST_F(Rows, TitlesShowTheWishedSortAtOnce) {
    open();
    const std::string before = authorsWithNumbers();
    QHeaderView& titles = *results().horizontalHeader();
    const auto shown = [&] {
        return std::to_string(titles.sortIndicatorSection() == column(8)) +
               (titles.sortIndicatorOrder() == Qt::AscendingOrder ? "up" : "down") +
               (titles.isEnabled() ? "" : " dim");
    };
    QObject::connect(&titles, &QHeaderView::sectionClicked, &titles,
                     [&] { EXPECT_EQ(shown(), "1up") << "before any work"; });
    std::string meanwhile;
    bool escapes = true;
    const auto sort = [&] {
        meanwhile.clear();
        const RecordingInterface onlooker([&] {
            if (meanwhile.empty() && !titles.isEnabled()) {
                meanwhile = shown();
                if (escapes)
                    key(results(), Qt::Key_Escape);
            }
        });
        clickHeader(column(8));
    };
    sort();
    EXPECT_EQ(meanwhile, "1up dim");
    EXPECT_EQ(shown(), "0up") << "stopped: as it was";
    EXPECT_EQ(authorsWithNumbers(), before);
    EXPECT_NE(setting("ListSortKey"), std::to_string(column(8)));
    escapes = false;
    sort();
    EXPECT_EQ(shown(), "1up");
    EXPECT_NE(authorsWithNumbers(), before);
    EXPECT_EQ(setting("ListSortKey"), std::to_string(column(8)));
}

TEST_F(Rows, ColumnsFollowTheirMenu) {
    open();
    const std::string before = titles();
    choose(1, "Move right");
    choose(4, "Move left");
    EXPECT_TRUE(titles().starts_with("2 1 4 3 5 ")) << titles();
    results().setColumnWidth(column(5), 400);
    choose(5, "Best width");
    EXPECT_LT(results().columnWidth(column(5)), 120);
    EXPECT_GT(results().columnWidth(column(5)),
              results().fontMetrics().horizontalAdvance(QStringLiteral("Berta")));
    for (const char* expected : {"2 1 4 3 5 7 ", "2 1 4 3 5 6 "}) {
        openMenu(5);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions())
            if (action->menu() != nullptr)
                for (QAction* field : action->menu()->actions())
                    if (field->text() == QLatin1String("Typist"))
                        field->trigger();
        menu->close();
        QCoreApplication::processEvents();
        EXPECT_TRUE(titles().starts_with(expected)) << titles();
        EXPECT_EQ(modINI::ReadIniValueDirect("ColumnVisible", "6", "", path("SearchColumns.dat")),
                  expected[10] == '7' ? "0" : "-1");
    }
    choose(5, "Reset columns");
    EXPECT_EQ(titles(), before);
    EXPECT_EQ(authorsWithNumbers().substr(0, 4), "Anna");
}

TEST_F(Rows, TitlesHaveAMenuForTheKeyboard) {
    open();
    key(results(), Qt::Key_H, Qt::ControlModifier | Qt::ShiftModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* column : menu->actions())
        if (column->text() == QLatin1String("Author"))
            for (QAction* entry : column->menu()->actions())
                if (entry->text().contains(QLatin1String("descending")) && !entry->isChecked())
                    entry->trigger();
    menu->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(rows().substr(0, 5), "Berta");
    const auto* header = results().horizontalHeader();
    EXPECT_EQ(header->model()->headerData(column(8), Qt::Horizontal, Qt::AccessibleTextRole),
              QStringLiteral("Number"));
}

TEST_F(Rows, TheKeyboardGoesFromTheCriteriaToTheHits) {
    openControl();
    user->saysYes = true;
    auto& criteria = widget<QTreeWidget>("lvSearchCriteria");
    criteria.setFocus();
    key(criteria, Qt::Key_F5);
    EXPECT_EQ(focus(), "lvSearchResult");
    EXPECT_EQ(rows().front(), '*') << "the first hit is selected";
    std::string way;
    for (int i = 0; i < 3; ++i) {
        key(*window().focusWidget(), Qt::Key_F6);
        way += focus() + " ";
    }
    EXPECT_EQ(way, "cmdSearchPlayer(0) lvSearchCriteria lvSearchResult ");
    key(results(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focus(), "lvSearchCriteria");
    key(criteria, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(focus(), "lvSearchResult");
    criteria.setFocus();
    inCall(
        "PI_ProgressValue", [&] { key(criteria, Qt::Key_F5); },
        [&] {
            widget<QWidget>("cmdSearchOptions(0)")
                .parentWidget()
                ->window()
                ->findChild<QWidget*>(QStringLiteral("slSearchPlayerVolume"))
                ->setFocus();
        });
    EXPECT_EQ(focus(), "slSearchPlayerVolume") << "the user went elsewhere";
}

TEST_F(Rows, AreHandedOutAsFiles) {
    open();
    results().selectAll();
    key(results(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    ASSERT_EQ(copied->urls().size(), 4);
    EXPECT_EQ(copied->urls().last().toLocalFile().toStdString(),
              store.native("2$WAV@@14$Berta@@12$2@@6$00$10$00.WAV"));
    const QByteArray forFileManagers = copied->data(QStringLiteral("x-special/gnome-copied-files"));
    EXPECT_TRUE(forFileManagers.startsWith("copy\nfile:///")) << forFileManagers.toStdString();
    EXPECT_EQ(forFileManagers.count('\n'), 4);
    EXPECT_TRUE(results().dragEnabled());
}

TEST_F(Rows, ShowTheirDetails) {
    open();
    key(results(), Qt::Key_End);
    withDialog([&] { key(results(), Qt::Key_Return, Qt::AltModifier); },
               [&](QDialog& dialog) {
                   auto& list = child<QTableWidget>(dialog, "lstDetails");
                   clickOn(dialog, "cmdCopy");
                   const QString all = QApplication::clipboard()->text();
                   EXPECT_TRUE(all.contains(u"Author\tBerta\tBerta\n")) << all.toStdString();
                   EXPECT_TRUE(all.contains(u"Length\t00:10:00\t00$10$00\n"));
                   EXPECT_EQ(all.count(u'\n'), list.rowCount());
                   EXPECT_TRUE(all.contains(u"Subject\t\t(missing)\n")) << all.toStdString();
                   list.selectRow(0);
                   QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
                   EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 1);
                   speakGerman(dialog);
                   EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Einzelheiten des Diktats"));
                   EXPECT_TRUE(list.selectionModel()->isRowSelected(0)) << "stays selected";
                   clickOn(dialog, "cmdCopy");
                   EXPECT_TRUE(QApplication::clipboard()->text().startsWith(u"Status\t"));
                   EXPECT_TRUE(isTidy(dialog));
               });
}

TEST_F(Rows, ShowDetailsOfOddNames) {
    store.add("2$WAV@@14$-@@11$Knee\tleft.WAV");
    open();
    for (int row = 0; row < model().rowCount(); ++row)
        if (model().text(row, column(5)) == QLatin1String("-"))
            results().selectRow(row);
    withDialog([&] { key(results(), Qt::Key_Return, Qt::AltModifier); },
               [&](QDialog& dialog) {
                   clickOn(dialog, "cmdCopy");
                   const QString all = QApplication::clipboard()->text();
                   EXPECT_TRUE(all.contains(u"Author\t-\t-\n")) << "that is its value";
                   EXPECT_TRUE(all.contains(u"Subject\tKnee left\tKnee left\n"));
                   for (const QString& line : all.chopped(1).split(u'\n'))
                       EXPECT_EQ(line.count(u'\t'), 2) << line.toStdString();
               });
}

TEST_F(Rows, AreAddedUp) {
    openControl();
    EXPECT_EQ(text("lblResultSummary"), "");
    searchAll();
    waitFor([&] { return text("lblResultSummary").starts_with("Dictations: 4, length 01:10:05"); });
    clickHeader(column(13));
    results().selectRow(3);
    waitFor([&] { return text("lblResultSummary").ends_with("Selected: 1, length 01:00:05"); });
    results().selectAll();
    waitFor([&] { return text("lblResultSummary").ends_with("Selected: 4, length 01:10:05"); });
    widget<QLineEdit>("txtResultFilter").setText(QStringLiteral("berta"));
    waitFor([&] { return text("lblResultSummary").starts_with("Dictations: 2, length 00:10:00"); });
    host().answers["PI_GetLanguage"] = "7";
    action("language");
    waitFor([&] { return text("lblResultSummary").starts_with("Diktate: 2, Länge 00:10:00"); });
}

TEST_F(Rows, MarkWhatPlays) {
    const Environment silent("SDL_AUDIODRIVER", "dummy");
    const std::string second = "2$WAV@@14$Berta@@12$2@@6$00$10$00.WAV";
    for (const std::string& name :
         {std::string("2$ROH@@14$Anna@@12$2@@11$Knie & Hüfte.WAV"), second})
        writeWave(store.native(name), {}, sweep(8000, 80000));
    open();
    const auto spoken = [&] {
        std::string all;
        for (int row = 0; row < model().rowCount(); ++row)
            all += model()
                       .data(model().index(row, column(5)), Qt::AccessibleTextRole)
                       .toString()
                       .toStdString() +
                   ";";
        return all;
    };
    auto& played = widget<QToolButton>("cmdPlayedDictation");
    EXPECT_FALSE(played.isVisible());
    clickHeader(column(18));
    clickHeader(column(18));
    results().selectRow(0);
    results().setFocus();
    const auto picture = [this](int place) {
        const QModelIndex cell =
            model().index(0, results().horizontalHeader()->logicalIndex(place));
        results().scrollTo(cell);
        return results().viewport()->grab(results().visualRect(cell)).toImage();
    };
    int left = 0;
    while (results().isColumnHidden(results().horizontalHeader()->logicalIndex(left)))
        ++left;
    const std::pair unmarked(picture(left), picture(left + 1));
    key(results(), Qt::Key_Return);
    EXPECT_EQ(spoken(), "In the player: Anna;;;;");
    EXPECT_EQ(played.accessibleName().toStdString(), "Anna: Knie & Hüfte");
    EXPECT_NE(picture(left), unmarked.first);
    EXPECT_EQ(picture(left + 1), unmarked.second);
    results().selectRow(3);
    played.click();
    QCoreApplication::processEvents();
    EXPECT_TRUE(results().selectionModel()->isRowSelected(0));
    EXPECT_TRUE(results().hasFocus());
    widget<QLineEdit>("txtResultFilter").setText(QStringLiteral("berta"));
    waitFor([&] { return model().rowCount() == 2; });
    played.click();
    waitFor([&] { return rows(18).starts_with("*Knie & Hüfte"); });
    dynamic_cast<ResultList&>(results()).selectPath(store.path(second));
    key(results(), Qt::Key_Return);
    EXPECT_TRUE(played.text().startsWith(u"Berta")) << played.text().toStdString();
    press("cmdSearchPlayer(2)");
    EXPECT_FALSE(spoken().find("In the player") != std::string::npos);
    EXPECT_FALSE(played.isVisible());
}

} // namespace
} // namespace ov
