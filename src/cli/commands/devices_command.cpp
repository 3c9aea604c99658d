// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/commands/devices_command.h"

#include "cli/messages.h"
#include "cli/output.h"
#include "cli/play/outputs.h"
#include "cli/shown_text.h"
#include "export/machine/json_object.h"
#include "platform/text.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace ov::cli {

namespace {

// A name may come from a device, and hold what is no UTF-8.
std::string jsonText(const std::vector<std::string>& names, bool lines) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        exporting::JsonObject object;
        object.add("number", static_cast<std::int64_t>(i + 1));
        object.add("name", platform::textFromBytes(names[i]));
        text.append(lines || i == 0 ? "" : ",\n").append(object.text()).append(lines ? "\n" : "");
    }
    return lines ? text : "[" + text + "]\n";
}

std::string tableText(const std::vector<std::string>& names) {
    std::vector<Row> rows = {{"NUMBER", "NAME"}};
    for (std::size_t i = 0; i < names.size(); ++i)
        rows.push_back({std::to_string(i + 1), shownText(names[i])});
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::string text;
    for (const Row& row : rows)
        text += tableLine(row, widths);
    return text;
}

} // namespace

ExitCode runDevices(DeviceFormat format) {
    std::vector<std::string> names;
    if (const ExitCode read = readOutputs(names); read != ExitCode::found)
        return read;
    if (names.empty())
        complain("there is no sound output; is the sound service of the desktop running?");
    Output output(stdout);
    output.write(format == DeviceFormat::table ? tableText(names)
                                               : jsonText(names, format == DeviceFormat::jsonl));
    return output.finish(names.empty() ? ExitCode::nothingFound : ExitCode::found);
}

} // namespace ov::cli
