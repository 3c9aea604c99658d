// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

class QTableView;

namespace ov::bench {

// Asks the list what screen readers ask, and prints the worst answer and whose it was, in
// milliseconds. All rows are selected meanwhile.
void measureScreenReader(QTableView& list);

} // namespace ov::bench
