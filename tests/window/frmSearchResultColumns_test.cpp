// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/frmSearchResultColumns.h"
#include "tests/window/window_fixture.h"

#include <QListWidget>
#include <QPushButton>

namespace ov {
namespace {

using tests::child;

class ColumnChooser : public tests::WindowTest {
protected:
    void open() {
        form_ = std::make_unique<frmSearchResultColumns>();
        form_->show();
    }
    QListWidget& left() { return child<QListWidget>(*form_, "lstLeft"); }
    QListWidget& right() { return child<QListWidget>(*form_, "lstRight"); }
    void press(const char* name) { child<QPushButton>(*form_, name).click(); }
    static std::string captions(const QListWidget& list, int from = 0) {
        std::string all;
        for (int i = from; i < list.count(); ++i)
            all += list.item(i)->text().toStdString() + (i == list.currentRow() ? "*;" : ";");
        return all;
    }
    static std::string visibleFields() {
        std::string ids;
        for (const modDictation::SearchField& field : modDictation::searchFields())
            if (field.Visible)
                ids += std::to_string(field.Id) + " ";
        return ids;
    }

    std::unique_ptr<frmSearchResultColumns> form_;
};

TEST_F(ColumnChooser, MovesFieldsBetweenTheLists) {
    open();
    EXPECT_EQ(left().count(), 0);
    EXPECT_EQ(right().count(), 21);
    press("cmdTransfer(1)");
    EXPECT_EQ(left().count(), 0) << "nothing was selected";

    right().setCurrentRow(1);
    press("cmdTransfer(1)");
    EXPECT_EQ(captions(left()), "Status*;");
    EXPECT_EQ(right().currentRow(), 1) << "the next one";
    right().setCurrentRow(right().count() - 1);
    press("cmdTransfer(1)");
    EXPECT_EQ(captions(left()), "Status;File name*;");
    EXPECT_EQ(right().currentRow(), right().count() - 1) << "the one before the last";

    Q_EMIT left().itemDoubleClicked(left().item(1));
    press("cmdTransfer(0)");
    EXPECT_EQ(captions(left()), "") << "an empty list has no selection";
    EXPECT_EQ(captions(right(), 19), "File name;Status*;");
}

TEST_F(ColumnChooser, MovesTheSelectedColumnUpAndDown) {
    open();
    right().setCurrentRow(0);
    press("cmdUpDown(0)");
    press("cmdUpDown(1)");
    EXPECT_EQ(captions(right()).substr(0, 21), "Status;Folder*;Marker");
    right().setCurrentRow(right().count() - 1);
    press("cmdUpDown(1)");
    EXPECT_EQ(right().currentRow(), right().count() - 1);
    press("cmdOK");
    EXPECT_EQ(visibleFields().substr(0, 6), "1 2 3 ") << "the order is not handed back";
}

TEST_F(ColumnChooser, TouchesTheTableOnlyWithOK) {
    const std::string before = visibleFields();
    open();
    right().setCurrentRow(0);
    press("cmdTransfer(1)");
    press("cmdCancel");
    EXPECT_FALSE(form_->OKPressed());
    EXPECT_EQ(visibleFields(), before);

    open();
    right().setCurrentRow(0);
    while (right().count() > 0)
        press("cmdTransfer(1)");
    press("cmdOK");
    EXPECT_TRUE(form_->OKPressed());
    EXPECT_EQ(visibleFields(), "10 12 17 ") << "those that cannot be chosen stay";
}

} // namespace
} // namespace ov
