// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>

class QWidget;

namespace ov::widgets {

// Gives a window that is not shown yet its first size: `comfortable`, or more where its content
// needs it, but no more than the screen that it will be on has room for.
void resizeOnScreen(QWidget& window, QSize comfortable);

} // namespace ov::widgets
