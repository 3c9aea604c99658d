// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/export_settings.h"

namespace ov::exporting {

namespace {

// Stored: never rename.
namespace key {
constexpr std::string_view folder = "ExportFolder";
constexpr std::string_view format = "ExportFormat"; // ".pdf"
constexpr std::string_view allColumns = "ExportAllColumns";
constexpr std::string_view fontName = "PrintFontName";
constexpr std::string_view fontSize = "PrintFontSize";       // points, 0 or 4 to 36
constexpr std::string_view orientation = "PrintOrientation"; // as enum Orientation
} // namespace key

} // namespace

std::string ExportSettings::folder() const {
    return settings_.path(key::folder);
}

void ExportSettings::setFolder(const std::string& folder) const {
    settings_.setPath(key::folder, folder);
}

Format ExportSettings::format() const {
    return formatOfFile(settings_.text(key::format)).value_or(Format::pdf);
}

void ExportSettings::setFormat(Format format) const {
    settings_.setText(key::format, formatInfo(format).ending);
}

bool ExportSettings::allColumns() const {
    return allColumns_ ? *allColumns_ : settings_.boolean(key::allColumns, false);
}

void ExportSettings::setAllColumns(bool all) {
    allColumns_ = all;
    settings_.setBoolean(key::allColumns, all);
}

PageStyle ExportSettings::pageStyle() const {
    constexpr std::int32_t smallest = 4;
    constexpr std::int32_t largest = 36;
    PageStyle style;
    style.fontName = settings_.text(key::fontName);
    style.fontSize = settings_.number(key::fontSize, 0, 0, largest);
    if (style.fontSize < smallest)
        style.fontSize = 0;
    style.orientation = static_cast<Orientation>(settings_.number(key::orientation, 0, 0, 2));
    return style;
}

} // namespace ov::exporting
