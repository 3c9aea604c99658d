// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

class QString;
class QWidget;

namespace ov {

// Writes in the middle of an empty list what the user can do. Called from its paint event.
void paintListHint(QWidget& viewport, const QString& hint);

} // namespace ov
