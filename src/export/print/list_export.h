// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/export_settings.h"
#include "export/file_export.h"
#include "export/print/export_menu.h"
#include "export/rows.h"
#include "support/modUtil.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class QPrinter;
class QWidget;

namespace ov::exporting::print {

// What the window hands over. Everything is borrowed and stays as it is while a command runs; the
// commands let window messages be handled, so the window keeps the user from changing the list.
struct ListToExport {
    Document document; // as describe() gives it, with the columns shown from left to right; of
                       // these what tells nothing is left out unless the user wants them all
    const RowSource& all;
    const RowSource& selected; // maybe without a row
    ExportSettings& settings;
    QWidget* owner = nullptr; // of dialogs and boxes
    // True once the window goes away: the command then ends without a word. Whoever says so has
    // rejected the dialogs below the owner.
    std::function<bool()> isEnding;
};

// Runs one command to its end, with all questions and messages.
class ListExport {
public:
    explicit ListExport(ListToExport list);

    void run(Command command, bool selectedOnly);

private:
    void print(bool selectedOnly);
    void preview(bool selectedOnly);
    // Asks for a file of that format, or of any.
    void save(std::optional<Format> format, bool selectedOnly);
    void copyText(bool selectedOnly);

    const RowSource& rows(bool selectedOnly) const;
    // The document with the columns to show; nothing when `goOn` stopped it.
    std::optional<Document> documentOf(const RowSource& chosen, const GoOn& goOn) const;
    void printOn(QPrinter& printer, const RowSource& chosen);
    bool mayReplace(const std::string& path) const;
    void tell(modUtil::Message message) const;
    void tellResult(const ExportResult& result, const std::string& path, bool existed);

    ListToExport list_;
};

} // namespace ov::exporting::print
