// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

class QTableView;

namespace ov::bench {

// Opens the details of a row and the menu of the titles by their keys, and prints how long each
// takes until it is painted, in milliseconds.
void measureOpenedWindows(QTableView& list);

} // namespace ov::bench
