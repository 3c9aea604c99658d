// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/document.h"
#include "export/file_export.h"
#include "support/ini_section.h"

#include <optional>
#include <string>
#include <utility>

namespace ov::exporting {

// What exports remember, in the control's per-user INI file, section "OVSearch.ctrlOVSearch".
// Reading gives the default for what is missing; writing without a file does nothing.
class ExportSettings {
public:
    explicit ExportSettings(std::string file = {}) : settings_(controlSection, std::move(file)) {}

    // Where the last file went, ending in "\"; empty before the first.
    std::string folder() const;
    void setFolder(const std::string& folder) const;

    Format format() const; // of the last file; PDF
    void setFormat(Format format) const;

    // Also columns that tell nothing; false. What was set here counts, also where it could not be
    // written.
    bool allColumns() const;
    void setAllColumns(bool all);

    // How pages look. Nobody but the user's own editor writes it.
    PageStyle pageStyle() const;

private:
    IniSection settings_;
    std::optional<bool> allColumns_; // as set
};

} // namespace ov::exporting
