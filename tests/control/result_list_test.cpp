// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/authors_fixture.h"
#include "tests/scripted_media.h"
#include "tests/wave_files.h"

#include <QAccessible>
#include <QMimeData>
#include <QProgressBar>
#include <QTableWidget>

namespace ov {
namespace {

TEST_F(AuthorRows, TheKeyboardGoesFromTheCriteriaToTheHits) {
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
        [this] { widget<QWidget>("slSearchPlayerVolume").setFocus(); });
    EXPECT_EQ(focus(), "slSearchPlayerVolume") << "the user went elsewhere";
}

TEST_F(AuthorRows, AreHandedOutAsFiles) {
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
}

TEST_F(AuthorRows, ShowTheirDetails) {
    store.add("2$WAV@@14$-@@11$Knee\tleft.WAV");
    open();
    const auto copied = [](QDialog& dialog) {
        clickOn(dialog, "cmdCopy");
        return QApplication::clipboard()->text();
    };
    const auto details = [this] { key(results(), Qt::Key_Return, Qt::AltModifier); };
    results().selectRow(0);
    withDialog(details, [&](QDialog& dialog) {
        const QString all = copied(dialog);
        EXPECT_TRUE(all.contains(u"Author\t-\t-\n")) << "that is its value";
        EXPECT_TRUE(all.contains(u"Subject\tKnee left\tKnee left\n"));
        EXPECT_EQ(all.count(u'\t'), 2 * all.count(u'\n'));
    });
    key(results(), Qt::Key_End);
    withDialog(details, [&](QDialog& dialog) {
        auto& list = child<QTableWidget>(dialog, "lstDetails");
        const QString all = copied(dialog);
        EXPECT_TRUE(all.contains(u"Author\tBerta\tBerta\n")) << all.toStdString();
        EXPECT_TRUE(all.contains(u"Length\t00:10:00\t00$10$00\n"));
        EXPECT_EQ(all.count(u'\n'), list.rowCount());
        EXPECT_TRUE(all.contains(u"Subject\t\t(missing)\n")) << all.toStdString();
        EXPECT_EQ(list.currentRow(), 0) << "where keys begin";
        list.selectRow(0);
        QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 1);
        speakGerman(dialog);
        EXPECT_TRUE(list.selectionModel()->isRowSelected(0)) << "stays selected";
        EXPECT_TRUE(copied(dialog).startsWith(u"Status\t"));
        EXPECT_TRUE(isTidy(dialog));
    });
}

TEST_F(AuthorRows, AreAddedUp) {
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
    speak("7");
    waitFor([&] { return text("lblResultSummary").starts_with("Diktate: 2, Länge 00:10:00"); });
}

TEST_F(AuthorRows, MarkWhatPlays) {
    const Environment silent("SDL_AUDIODRIVER", "dummy");
    const std::string second = "2$WAV@@14$Berta@@12$2@@6$00$10$00.WAV";
    for (const std::string& name :
         {std::string("2$ROH@@14$Anna@@12$2@@11$Knie & Hüfte.WAV"), second})
        writeWave(store.native(name), {}, sweep(8000, 80000));
    open();
    const auto spoken = [&] {
        std::string all;
        for (int row = 0; row < model().rowCount(); ++row) {
            const QModelIndex cell = model().index(row, column(5));
            all += cell.data(Qt::AccessibleTextRole).toString().toStdString() + ";";
        }
        return all;
    };
    auto& played = widget<QToolButton>("cmdPlayedDictation");
    EXPECT_FALSE(played.isVisible());
    clickHeader(column(18));
    clickHeader(column(18));
    results().selectRow(0);
    results().setFocus();
    const auto at = [this](int place) {
        return model().index(0, results().horizontalHeader()->logicalIndex(place));
    };
    int left = 0;
    while (results().isColumnHidden(at(left).column()))
        ++left;
    const std::pair unmarked(picture(at(left)), picture(at(left + 1)));
    key(results(), Qt::Key_Return);
    EXPECT_EQ(spoken(), "In the player: Anna;;;;");
    auto& state = widget<QProgressBar>("prgSearchPlayerStatus");
    waitFor([&] {
        return QAccessible::queryAccessibleInterface(&state)->text(QAccessible::Name) ==
               QLatin1String("Playback state: Playing");
    });
    EXPECT_EQ(played.accessibleName().toStdString(), "Anna: Knie & Hüfte");
    EXPECT_NE(picture(at(left)), unmarked.first);
    EXPECT_EQ(picture(at(left + 1)), unmarked.second);
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
    const int last = model().columnCount() - 1; // also when it is the only one
    for (int place = 0; place <= last; ++place)
        results().setColumnHidden(at(place).column(), place < last);
    const QModelIndex cell = model().index(results().currentIndex().row(), at(last).column());
    const QImage marked = picture(cell);
    press("cmdSearchPlayer(2)");
    EXPECT_NE(picture(cell), marked);
    EXPECT_FALSE(spoken().find("In the player") != std::string::npos);
    EXPECT_FALSE(played.isVisible());
}

} // namespace
} // namespace ov
