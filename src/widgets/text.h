// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLocale>
#include <QString>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

// Where the engine's UTF-8 meets Qt's strings.

namespace ov::widgets {

// Bytes that are no UTF-8 are read as Windows-1252, as everywhere in the program.
QString toQt(std::string_view text);
std::string toUtf8(const QString& text);

// The language file's text of that number, with its line breaks as Qt wants them.
QString text(std::int32_t textId);
QString text(std::int32_t textId, std::initializer_list<std::string_view> arguments);

// The same without the marks of keys and the dots that a button or a menu has.
QString plainText(std::int32_t textId);

// `text` as it stands for a tooltip, whatever markup it may look like.
QString toolTipText(const QString& text);

// `text` as a cell of lines that are parted by tabs: names may hold tabs and line ends.
QString cellText(QString text);

// A path of the engine as a person reads it on this system.
QString nativePathText(std::string_view path);

// "1,204", in the user's language.
std::string groupedNumber(std::int64_t number);

// How Qt names days and months and groups digits in the user's language.
QLocale languageLocale();

// "dd.MM.yyyy": the short date of the user's country, for date pickers.
QString shortDateFormat();

} // namespace ov::widgets
