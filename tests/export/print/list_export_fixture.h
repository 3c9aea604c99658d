// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/control/rows_fixture.h"

#include <QFileDialog>

namespace ov {

class ListExport : public RowsTest {
protected:
    void openAndSearch() {
        RowsTest::openAndSearch();
        user->boxes.clear();
    }
    // Dictations of the authors "A100", "A101" ...
    void addAuthors(int count) {
        for (int i = 100; i < 100 + count; ++i)
            store.add("2$WAV@@14$A" + std::to_string(i) + ".WAV");
    }
    void showOnly(int field) { // sorted
        for (int at = 0; at < model().columnCount(); ++at)
            results().setColumnHidden(at, at != column(field));
        clickHeader(column(field));
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
    void save(
        const std::function<void()>& open, const std::string& name,
        const std::function<void(QFileDialog&)>& look = [](auto&) {}) {
        const auto drive = [&](QDialog& dialog) {
            look(static_cast<QFileDialog&>(dialog));
            dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(native(name)));
            dialog.accept();
        };
        withDialog(open, drive, "ExportFile");
    }
    std::string saved(const char* form, const std::string& name) {
        save([&] { choose(form); }, name);
        return read(name);
    }
    std::string native(const std::string& name) { return (folder() / name).native(); }
    static std::string clipboard() { return QApplication::clipboard()->text().toStdString(); }
    static auto copiedLines() { return QApplication::clipboard()->text().count(QLatin1Char('\n')); }
};

} // namespace ov
