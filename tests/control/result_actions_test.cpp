// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Menus, pictures, playing, copying: what can be done with rows.

#include "playback/modMultimedia.h"
#include "playback/panel/seek/seek_slider.h"
#include "tests/control/control_fixture.h"
#include "tests/scripted_media.h"
#include "tests/wave_files.h"

#include <QDesktopServices>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBrowser>

namespace ov {
namespace {

using Control = ControlTest;

TEST_F(Control, OffersMenusAndTranslatesTheOpenOne) {
    store.add("2$WAV.WAV");
    openControl();
    const auto openAndTranslate = [this](const std::function<void()>& open) {
        speak("9");
        open();
        speak("7");
        QCoreApplication::processEvents();
        std::string entries;
        for (const QAction* entry : popup().actions())
            entries += (entry->isEnabled() ? "" : "-") +
                       (entry->text() + entry->shortcut().toString()).toStdString() +
                       (entry->icon().isNull() ? ";" : "*;");
        popup().close();
        return entries;
    };
    const auto ofResults = [&] { rightClick(results()); };
    const auto ofCriteria = [&] { rightClick(criteria()); };
    const auto ofButton = [&] { press("cmdSearchOptions(2)"); };
    EXPECT_EQ(openAndTranslate(ofResults),
              "-&WiedergebenReturn*;-&Stoppen*;-&Protokoll anzeigen*;-&Einzelheiten …Alt+Return;;"
              "-Zeilen &kopierenCtrl+C*;-Date&ien kopierenCtrl+Shift+C;-&Dateipfad "
              "kopieren;-&Verzeichnis öffnen*;;-&Alles markierenCtrl+A;"
              "Spal&ten auswählen …*;Alle Verzeichnisse &neu lesen und suchenShift+F5;Im Katal&og "
              "suchen;");
    EXPECT_EQ(openAndTranslate(ofCriteria),
              "&Neu …Ins*;-&Bearbeiten …F2*;-&LöschenDel*;-Du&plizieren …Ctrl+D;;"
              "-&RückgängigCtrl+Z;-&WiederherstellenCtrl+Shift+Z;;"
              "-&AusschneidenCtrl+X;-&KopierenCtrl+C;E&infügenCtrl+V;;"
              "-Nach &obenAlt+Up*;-Nach &untenAlt+Down*;"
              "-Mit dem vorigen &gruppierenAlt+Right;-Aus der Gruppe lö&senAlt+Left;");
    searchAll();
    store.add("2$WAV@@5$HOCH.WAV");
    user->saysYes = true;
    key(window(), Qt::Key_F5, Qt::ShiftModifier);
    user->saysYes = false;
    EXPECT_EQ(model().rowCount(), 2);
    results().clearSelection();
    EXPECT_TRUE(openAndTranslate(ofButton).ends_with(";-&Nur markierte Zeilen;;A&lle Spalten;"));
    results().selectRow(0);
    clickOn(window(), "chkFollow");
    enter([&] { key(criteria(), Qt::Key_Insert); }, "Anna");
    EXPECT_EQ(openAndTranslate(ofResults).find('-'), std::string::npos);
    EXPECT_EQ(openAndTranslate(ofCriteria).find("-&L"), std::string::npos);
    EXPECT_EQ(openAndTranslate(ofButton),
              "&Drucken …Ctrl+P*;Druck&vorschau …;;&PDF-Dokument …;&Tabelle (.xlsx) …;"
              "&CSV-Datei …;&Webseite …;&JSON-Datei …;;Als Te&xt kopieren*;;"
              "&Nur markierte Zeilen;;A&lle Spalten;");
}

TEST_F(Control, ShowsCodesAsPicturesWhereWordsDoNotFit) {
    store.add("2$WAV@@5$HOCH@@14$Anna@@17$4@@98$D.WAV")
        .add("2$ROH@@98$X.WAV")
        .add("2$STOP@@98$d.WAV");
    openAndSearch();
    QString icons;
    for (const int field : {2, 3, 5, 7, 15})
        for (const int row : {0, 1, 2})
            icons += cell(row, field).data(ResultModel::codeIconRole).toString() + u';';
    EXPECT_EQ(icons.toStdString(), "status-6;status-7;status-8;marker;;marker;;;;flags;;;"
                                   "priority-3;priority-1;priority-1;");
    EXPECT_EQ(toolTip(0, 5), "");
    for (const int field : {3, 5, 7})
        results().setColumnWidth(column(field), 24);
    EXPECT_EQ(toolTip(0, 5), "<qt>Anna</qt>");
    EXPECT_EQ(toolTip(0, 3), "<qt>Marker</qt>");
    const auto neededWidth = [&](int field, int width) {
        QStyleOptionViewItem option;
        option.initFrom(&results());
        option.rect = QRect(0, 0, width, 20);
        return results().itemDelegate()->sizeHint(option, cell(0, field)).width();
    };
    EXPECT_LT(neededWidth(15, 20), neededWidth(15, 500));
    EXPECT_EQ(neededWidth(3, 20), neededWidth(3, 500));
    results().clearSelection();
    EXPECT_EQ(picture(cell(0, 3)), picture(cell(2, 3))) << "the letter is not shown";
    EXPECT_NE(picture(cell(0, 3)), picture(cell(2, 7))) << "nothing but its icon is";
}

TEST_F(Control, PlaysByKeyAndByMouse) {
    const Environment silent("SDL_AUDIODRIVER", "dummy");
    for (const char* name : {"2$WAV.WAV", "2$ROH.WAV"})
        writeWave(store.native(name), {}, sweep(8000, 80000));
    ScriptedMedia media;
    openAndSearch();
    std::string rows;
    for (const Qt::Key to : {Qt::Key_End, Qt::Key_Right, Qt::Key_Left, Qt::Key_Home}) {
        key(results(), to);
        rows += std::to_string(results().currentIndex().row()) +
                (results().horizontalScrollBar()->value() > 0 ? "> " : " ");
    }
    EXPECT_EQ(rows, "1 1> 1 0 ") << "the right key moves the view";
    results().clearSelection();
    QWidget* list = results().viewport();
    const QPoint row = results().visualRect(model().index(0, 0)).center();
    const auto opened = [&] {
        const auto count = media.takeOpened();
        press("cmdSearchPlayer(2)");
        media.takeSent();
        return count;
    };
    key(results(), Qt::Key_Return);
    EXPECT_EQ(opened(), 0) << "no row";
    QTest::mouseClick(list, Qt::LeftButton, {}, row);
    EXPECT_EQ(opened(), 0);
    for (const Qt::Key pressed : {Qt::Key_Return, Qt::Key_Space}) {
        key(results(), pressed);
        EXPECT_EQ(opened(), 1);
    }
    QTest::mouseDClick(list, Qt::LeftButton, {}, row);
    EXPECT_EQ(opened(), 1);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&results(), &held);
    QTest::mouseDClick(list, Qt::RightButton, {}, row);
    QTest::mouseRelease(list, Qt::RightButton, {}, row);
    QTest::mouseDClick(list, Qt::LeftButton, {}, row + QPoint(0, 60));
    EXPECT_EQ(opened(), 0) << "held down, the other button, below the rows";

    key(results(), Qt::Key_Return);
    key(results(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_GE(modMultimedia::MciGetPosition("PBWave"), 5000);
    key(results(), Qt::Key_Left, Qt::ControlModifier);
    EXPECT_LT(modMultimedia::MciGetPosition("PBWave"), 5000);
    key(results(), Qt::Key_Space);
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "paused");
    widget<SeekSlider>("slSearchPlayerSeek").setValue(0);
    auto& criteria = widget<QTreeWidget>("lvSearchCriteria"); // also outside the list
    key(criteria, Qt::Key_Right, Qt::ControlModifier);
    key(criteria, Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("[00:00:05]"));
    key(criteria, Qt::Key_J, Qt::ControlModifier);
    EXPECT_TRUE(widget<QLineEdit>("txtGoToTime").isVisible());
    key(widget<QLineEdit>("txtGoToTime"), Qt::Key_Escape);
    key(criteria, Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(QToolTip::text().contains(u"Repeats from 00:00:05 on"));
    key(criteria, Qt::Key_F7);
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
    EXPECT_LT(modMultimedia::MciGetPosition("PBWave"), 5000);
    control_ = nullptr;
    EXPECT_EQ(modMultimedia::MciGetPosition("PBWave"), -1) << "plays on without its control";
}

TEST_F(Control, HandsOutTheSelectedRows) {
    const std::string name = "ward/2$WAV@@14$Anna@@11$Knee\tleft.WAV";
    store.add(name).add("ward/2$ROH@@14$Berta.WAV");
    openAndSearch();
    results().selectRow(0);
    press("cmdSearchOptions(4)");
    const std::string logOfFirst = "PI_LogView(&\"" + store.path(name) + "\", &\"\")";
    EXPECT_EQ(host().calls.back(), logOfFirst);
    results().selectionModel()->setCurrentIndex(model().index(1, 0), QItemSelectionModel::NoUpdate);
    host().calls.clear();
    press("cmdSearchOptions(4)");
    EXPECT_EQ(calls(logOfFirst), 1) << "the selected row, wherever the keyboard is";
    QTextBrowser opened;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &opened, "setSource");
    rightClick(results());
    click("Open folder");
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    EXPECT_EQ(opened.source().toLocalFile().toStdString(), store.native("ward/"));

    key(results(), Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text().count(u'\t'), 2 * 20) << "hidden columns are left out";
    EXPECT_EQ(copied->text().count(u'\n'), 2);
    EXPECT_TRUE(copied->text().contains(u"Knee left"));
    EXPECT_EQ(copied->urls().value(0).toLocalFile().toStdString(), store.native(name));
    results().clearSelection();
    key(results(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->mimeData(), copied) << "nothing to copy";
    results().selectRow(0);
    fs::remove_all(store.native("ward"));
    press("cmdSearchOptions(4)");
    EXPECT_EQ(user->beeps, 1) << "the dictation is gone";
    EXPECT_NE(QToolTip::text(), button("cmdSearchOptions(4)").toolTip()) << "and one is selected";
}

} // namespace
} // namespace ov
