// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "export/file_export.h"

#include <QString>
#include <optional>
#include <string>

class QWidget;

namespace ov::exporting::print {

// Where a list is to be written, and as what.
struct ExportTarget {
    std::string path;
    Format format = Format::pdf;
};

struct ExportQuestion {
    std::optional<Format> only; // else any format can be chosen
    Format usual = Format::pdf; // that is offered first
    std::string folder;         // that is shown first; empty: the desktop's
    QString name;               // of the file, without its ending
};

// Asks the user. An ending that is typed and known counts more than the kind of file that is
// chosen. Nothing when the user thinks better of it.
std::optional<ExportTarget> askForTarget(const ExportQuestion& question, QWidget* owner);

} // namespace ov::exporting::print
