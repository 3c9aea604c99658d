// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmSearchResultColumns.h"
#include "tests/window/window_fixture.h"

namespace ov {
namespace {

class ColumnChooser : public WindowTest {
protected:
    void open() {
        form_ = std::make_unique<frmSearchResultColumns>();
        form_->show();
    }
    QListWidget& left() { return child<QListWidget>(*form_, "lstLeft"); }
    QListWidget& right() { return child<QListWidget>(*form_, "lstRight"); }
    void press(const char* name) { clickOn(*form_, name); }
    static std::string captions(const QListWidget& list, int from = 0) {
        std::string all;
        for (int i = from; i < list.count(); ++i)
            all += list.item(i)->text().toStdString() + (i == list.currentRow() ? "*;" : ";");
        return all;
    }
    void doubleClick(QListWidget& list, int row) {
        list.scrollToItem(list.item(row));
        const QPoint place = list.visualItemRect(list.item(row)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    }
    // Add, remove, up, down.
    std::string enabled() {
        std::string states;
        for (const char* name :
             {"cmdTransfer(0)", "cmdTransfer(1)", "cmdUpDown(0)", "cmdUpDown(1)"})
            states += child<QPushButton>(*form_, name).isEnabled() ? '1' : '0';
        return states;
    }

    std::unique_ptr<frmSearchResultColumns> form_;
};

TEST_F(ColumnChooser, MovesFieldsBetweenTheLists) {
    open();
    EXPECT_EQ(left().count(), 0);
    EXPECT_EQ(right().count(), 21);
    EXPECT_EQ(enabled(), "0000") << "nothing is selected";

    right().setCurrentRow(1);
    press("cmdTransfer(1)");
    EXPECT_EQ(captions(left()), "Status*;");
    EXPECT_EQ(right().currentRow(), 1) << "the next one";
    doubleClick(right(), right().count() - 1);
    EXPECT_EQ(captions(left()), "Status;File name*;");
    EXPECT_EQ(right().currentRow(), right().count() - 1) << "the one before the last";
    doubleClick(left(), 1);
    press("cmdTransfer(0)");
    EXPECT_EQ(captions(left()), "") << "an empty list has no selection";
    EXPECT_EQ(captions(right(), 19), "File name;Status*;");

    std::string states;
    for (const int row : {0, 1, right().count() - 1}) {
        right().setCurrentRow(row);
        states += enabled() + " ";
    }
    EXPECT_EQ(states, "0101 0111 0110 ");
    right().setCurrentRow(1);
    press("cmdUpDown(0)");
    EXPECT_EQ(captions(right()).substr(0, 15), "Marker*;Folder;");
    press("cmdUpDown(1)");
    EXPECT_EQ(captions(right()).substr(0, 15), "Folder;Marker*;");
}

// A key that is pressed twice on a button that the first press disables.
TEST_F(ColumnChooser, DoesNotUndoByASecondPressOfTheKey) {
    open();
    const auto focusAfter = [this](const char* name) {
        auto& button = child<QPushButton>(*form_, name);
        button.setFocus();
        QTest::keyClick(&button, Qt::Key_Space);
        EXPECT_FALSE(button.isEnabled()) << name;
        return form_->focusWidget()->objectName().toStdString();
    };
    right().setCurrentRow(1);
    EXPECT_EQ(focusAfter("cmdUpDown(0)"), "lstRight");
    right().setCurrentRow(right().count() - 2);
    EXPECT_EQ(focusAfter("cmdUpDown(1)"), "lstRight");
    press("cmdTransfer(1)");
    EXPECT_EQ(focusAfter("cmdTransfer(0)"), "lstRight");
    while (right().count() > 1)
        press("cmdTransfer(1)");
    EXPECT_EQ(focusAfter("cmdTransfer(1)"), "lstLeft");
}

TEST_F(ColumnChooser, TouchesTheTableOnlyWithOK) {
    for (const char* button : {"cmdCancel", "cmdOK"}) {
        open();
        right().setCurrentRow(0);
        while (right().count() > 0)
            press("cmdTransfer(1)");
        button == std::string("cmdOK") ? QTest::keyClick(&left(), Qt::Key_Return) // from everywhere
                                       : press(button);
        EXPECT_FALSE(form_->isVisible());
        std::string visible;
        for (const modDictation::SearchField& field : modDictation::searchFields())
            visible += field.Visible ? std::to_string(field.Id) + " " : "";
        EXPECT_EQ(visible == "10 12 17 ", form_->OKPressed()) << "these cannot be chosen";
    }
    EXPECT_TRUE(form_->OKPressed());
}

TEST_F(ColumnChooser, BringsBackTheDefaultColumns) {
    open();
    const std::string before = captions(right());
    right().setCurrentRow(2);
    press("cmdTransfer(1)");
    left().setCurrentRow(left().count() - 2);
    press("cmdTransfer(0)");
    EXPECT_NE(captions(right()).substr(0, before.size() - 1), before.substr(0, before.size() - 1));
    press("cmdDefault");
    right().setCurrentRow(-1);
    EXPECT_EQ(captions(right()), before);
    EXPECT_EQ(left().count() + right().count(), 21);
    press("cmdOK");
    for (const modDictation::SearchField& field : modDictation::searchFields())
        EXPECT_EQ(field.Visible, modDictation::fieldDefinition(field.Id).visible) << field.Id;
}

TEST_F(ColumnChooser, ReadsAsOneGoesAndFollowsTheLanguage) {
    open();
    right().setCurrentRow(1);
    EXPECT_EQ(tabOrder(*form_), "lstLeft cmdTransfer(1) lstRight cmdUpDown(0) cmdUpDown(1) "
                                "cmdFold cmdDefault cmdOK cmdCancel ");
    auto& fixed = child<QListWidget>(*form_, "lstNonCustomizable");
    EXPECT_FALSE(fixed.isVisible()) << "folded away";
    press("cmdFold");
    EXPECT_TRUE(fixed.isVisible());
    speakGerman(*form_);
    EXPECT_EQ(captions(right()).substr(0, 19), "Verzeichnis;Status*");
    EXPECT_EQ(captions(child<QListWidget>(*form_, "lstNonCustomizable")),
              "(kein Feld);-;-;-;Diktatart;Zweiter Status;");
    EXPECT_TRUE(isTidy(*form_));
}

} // namespace
} // namespace ov
