// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

class QBoxLayout;
class QPushButton;

namespace ov {

// Names and labels the buttons "cmdOK" and "cmdCancel" of a dialog and puts them below its
// content, in the order of the desktop. Enter presses OK.
void addOkAndCancel(QBoxLayout& column, QPushButton& ok, QPushButton& cancel);

} // namespace ov
