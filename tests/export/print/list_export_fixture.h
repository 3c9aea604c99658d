// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/window/window_fixture.h"

#include <QFileDialog>
#include <functional>
#include <stdexcept>
#include <string>

namespace ov {

using namespace tests;

class ListExport : public WindowTest {
protected:
    void openAndSearch() {
        openControl();
        searchAll();
        user->boxes.clear();
    }
    // Dictations of the authors "A100", "A101" ...
    void addAuthors(int count) {
        for (int i = 100; i < 100 + count; ++i)
            store.add("2$WAV@@14$A" + std::to_string(i) + ".WAV");
    }
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
        clickHeader(authorColumn());
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
