// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QWidget;

namespace ov::widgets {

// The chapters of the guide (docs/guide.md) that windows lead to, by their headings.
namespace chapter {
inline constexpr const char* criteria = "Criteria";
inline constexpr const char* window = "In the window";
inline constexpr const char* pedals = "Foot pedals";
inline constexpr const char* lists = "Lists on paper and in files";
} // namespace chapter

// The guide as Markdown; it is part of the program.
QString guideText();

// Shows the guide at that chapter, in a window of `owner` that stands beside it; the same window
// again while it is open, whose texts are translated with the owner's. Returns at once.
void showGuide(QWidget& owner, const QString& heading);

} // namespace ov::widgets
