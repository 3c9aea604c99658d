// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/text.h"

#include "platform/files.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "support/language/language_id.h"
#include "support/language/modLanguage.h"

namespace ov::widgets {

namespace {

QString withQtLineBreaks(const std::string& text) {
    return toQt(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

} // namespace

QString toQt(std::string_view text) {
    return QString::fromStdString(platform::textFromBytes(text));
}

std::string toUtf8(const QString& text) {
    return text.toStdString();
}

QString text(std::int32_t textId) {
    return withQtLineBreaks(modLanguage::GetText(textId));
}

QString text(std::int32_t textId, std::initializer_list<std::string_view> arguments) {
    return withQtLineBreaks(modLanguage::GetText(textId, arguments));
}

QString plainText(std::int32_t textId) {
    QString plain = text(textId).remove(QLatin1Char('&'));
    while (plain.endsWith(QChar(0x2026)) || plain.endsWith(QLatin1Char(' ')))
        plain.chop(1);
    return plain;
}

QString toolTipText(const QString& text) {
    if (text.isEmpty())
        return {};
    return QStringLiteral("<qt>%1</qt>")
        .arg(text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

QString cellText(QString text) {
    for (QChar& character : text)
        if (character == QLatin1Char('\t') || character == QLatin1Char('\n') ||
            character == QLatin1Char('\r'))
            character = QLatin1Char(' ');
    return text;
}

QString nativePathText(std::string_view path) {
    return toQt(platform::toNativePath(path));
}

QLocale languageLocale() {
    const std::int32_t language = modLanguage::Language();
    return language_id::isGerman(language) ? QLocale(QLocale::German, QLocale::Germany)
                                           : QLocale(QLocale::English, QLocale::UnitedKingdom);
}

std::string groupedNumber(std::int64_t number) {
    return toUtf8(languageLocale().toString(static_cast<qlonglong>(number)));
}

QString shortDateFormat() {
    const platform::Locale& locale = platform::locale();
    const QString day = locale.dayTwoDigits ? QStringLiteral("dd") : QStringLiteral("d");
    const QString month = locale.dayTwoDigits ? QStringLiteral("MM") : QStringLiteral("M");
    const QString year = QStringLiteral("yyyy");
    const QChar separator = QLatin1Char(locale.dateSeparator);
    switch (locale.dateOrder) {
    case platform::DateOrder::dayMonthYear:
        return day + separator + month + separator + year;
    case platform::DateOrder::monthDayYear:
        return month + separator + day + separator + year;
    case platform::DateOrder::yearMonthDay:
        break;
    }
    return year + separator + month + separator + day;
}

} // namespace ov::widgets
