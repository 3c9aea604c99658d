// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/export_settings.h"

#include "support/modINI.h"

namespace ov::exporting {

namespace {

constexpr std::string_view section = "OVSearch.ctrlOVSearch";

// Stored: never rename.
namespace key {
constexpr std::string_view folder = "ExportFolder";
constexpr std::string_view format = "ExportFormat"; // ".pdf"
constexpr std::string_view fontName = "PrintFontName";
constexpr std::string_view fontSize = "PrintFontSize";       // points, 0 or 4 to 36
constexpr std::string_view orientation = "PrintOrientation"; // as enum Orientation
} // namespace key

} // namespace

std::string ExportSettings::folder() const {
    return file_.empty() ? std::string()
                         : modINI::ReadIniPath(section, key::folder, {}, file_, false);
}

void ExportSettings::setFolder(const std::string& folder) const {
    if (!file_.empty())
        modINI::WriteIniPath(section, key::folder, folder, file_);
}

Format ExportSettings::format() const {
    if (file_.empty())
        return Format::pdf;
    return formatOfFile(modINI::ReadIniValueDirect(section, key::format, {}, file_))
        .value_or(Format::pdf);
}

void ExportSettings::setFormat(Format format) const {
    if (!file_.empty())
        modINI::WriteIniString(section, key::format, formatInfo(format).ending, file_);
}

PageStyle ExportSettings::pageStyle() const {
    PageStyle style;
    if (file_.empty())
        return style;
    constexpr std::int32_t smallest = 4;
    constexpr std::int32_t largest = 36;
    style.fontName = modINI::ReadIniValueDirect(section, key::fontName, {}, file_);
    style.fontSize = modINI::ReadIniNumber(section, key::fontSize, 0, 0, largest, file_);
    if (style.fontSize < smallest)
        style.fontSize = 0;
    style.orientation =
        static_cast<Orientation>(modINI::ReadIniNumber(section, key::orientation, 0, 0, 2, file_));
    return style;
}

} // namespace ov::exporting
