// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <cstdint>
#include <span>

class QWidget;

// The keys that the program's windows take: the one table, which the window of shortcuts shows and
// the guide repeats.

namespace ov::widgets {

enum class KeyPlace : std::uint8_t { anywhere, criteria, results, position, preview };

struct KeyText {
    KeyPlace place;
    const char* keys; // all that do it, as Qt writes them in English: "F5, Ctrl+F"
    std::int32_t text;
};

std::span<const KeyText> keyTexts() noexcept;
QList<QKeySequence> keysOf(const KeyText& keyText);

// Shows the table, in a window of `owner` that stands beside it and whose title is translated with
// the owner's texts. Returns at once.
void showShortcuts(QWidget& owner);

} // namespace ov::widgets
