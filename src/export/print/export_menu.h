// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QAction;
class QMenu;

namespace ov::exporting::print {

// What a window offers for a list.
enum class Command { print, preview, saveAs, pdf, xlsx, csv, html, json, copyText };

// Adds the commands, for all rows and, when some are selected, in a menu below for those alone.
// `run(command, selectedOnly)` is called when one is chosen.
void addCommands(QMenu& menu, bool someSelected,
                 const std::function<void(Command command, bool selectedOnly)>& run);

// Adds the tick for columns that tell nothing; `choose` is called when the user changes it.
QAction* addAllColumns(QMenu& menu, bool ticked, const std::function<void(bool all)>& choose);

} // namespace ov::exporting::print
