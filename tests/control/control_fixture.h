// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/criteria/criterion_delegate.h"
#include "tests/control/rows_fixture.h"

#include <QSplitter>

namespace ov::tests {

// What the tests of the whole control share.
class ControlTest : public RowsTest {
protected:
    QTreeWidget& criteria() { return widget<QTreeWidget>("lvSearchCriteria"); }
    QPushButton& button(const char* name) { return widget<QPushButton>(name); }
    std::string label() { return text("lblSearchResult"); }
    std::string notice() { return text("lblSearchNotice"); }
    // With these criteria in place of those that were kept: "5|17|Anna|\n".
    void openWith(const std::string& criteria) {
        closeControl();
        write("SearchCriteria.dat", criterion(criteria));
        openControl();
    }
    void tick(int row, bool on) {
        criteria().topLevelItem(row)->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
        QCoreApplication::processEvents();
    }
    // All of them or any; the list of hits may follow.
    void compare(bool all) {
        clickOn(window(), all ? "optCriteriaCompare(1)" : "optCriteriaCompare(0)");
        QCoreApplication::processEvents();
    }
    void deleteCriteria() {
        key(criteria(), Qt::Key_A, Qt::ControlModifier);
        key(criteria(), Qt::Key_Delete);
    }
    // "2 of 3; !0 of 3; " with a mark at those that alone emptied the list.
    std::string counts() {
        std::string line;
        for (int i = 0; i < criteria().topLevelItemCount(); ++i) {
            const auto* item = criteria().topLevelItem(i);
            line += (item->data(0, emptyingRole).toBool() ? "!" : "") +
                    item->data(0, countRole).toString().toStdString() + "; ";
        }
        return line;
    }
    // Answers the editor that `open` brings up: the author is to contain `text`.
    static void enter(const std::function<void()>& open, const char* text) {
        withDialog(open, [text](QDialog& dialog) {
            choose(child<QComboBox>(dialog, "cboField"), 5);
            child<QLineEdit>(dialog, "txtValue(0)").setText(QString::fromLatin1(text));
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
    }
    // "A*B>-C" : B is selected, C is in a group with it and left out.
    std::string line() {
        std::string all;
        for (int i = 0; i < criteria().topLevelItemCount(); ++i) {
            const auto* item = criteria().topLevelItem(i);
            const std::string text = item->data(0, Qt::UserRole).toByteArray().toStdString();
            all += std::string(item->data(0, indentedRole).toBool() ? ">" : "") +
                   (item->isSelected() ? "*" : "") +
                   std::string(item->checkState(0) == Qt::Checked ? "" : "-") +
                   modDictation::ParseCriteriaString(text).Value1;
        }
        return all;
    }
    std::string columnTexts(int field) {
        std::string all = rows(field);
        std::erase(all, '*');
        return all;
    }
    // Takes columns from a list of the chooser that `open` brings up, by their places there; each
    // place counts without those before it.
    static void transfer(const std::function<void()>& open, const char* list, const char* button,
                         const std::vector<int>& places) {
        withDialog(open, [&](QDialog& dialog) {
            for (const int place : places) {
                child<QListWidget>(dialog, list).setCurrentRow(place);
                clickOn(dialog, button);
            }
            clickOn(dialog, "cmdOK");
        });
    }
    void hideColumns(const std::vector<int>& places) {
        transfer([this] { press("cmdSearchOptions(3)"); }, "lstRight", "cmdTransfer(1)", places);
    }
    void sortBy(int field) { clickHeader(column(field)); }
    std::string selectedRows() {
        std::string rows;
        for (int row = 0; row < model().rowCount(); ++row)
            rows += results().selectionModel()->isRowSelected(row) ? '*' : '-';
        return rows;
    }
    // How often the host was called with what begins so.
    auto calls(std::string_view beginning) {
        return std::count_if(host().calls.begin(), host().calls.end(),
                             [&](const auto& call) { return call.starts_with(beginning); });
    }
};

} // namespace ov::tests
