// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/text.h"

#include "platform/files.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"

namespace ov::widgets {

namespace {

constexpr std::int32_t german = 7;

QString withQtLineBreaks(const std::string& text) {
    return toQt(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

} // namespace

QString toQt(std::string_view text) {
    const auto fromUtf8 = [](std::string_view utf8) {
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    };
    return platform::isValidUtf8(text) ? fromUtf8(text) : fromUtf8(platform::textFromBytes(text));
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

QString toolTipText(const QString& text) {
    if (text.isEmpty())
        return {};
    return QStringLiteral("<qt>%1</qt>")
        .arg(text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

QString nativePathText(std::string_view path) {
    return toQt(platform::toNativePath(path));
}

QLocale languageLocale() {
    const std::int32_t language = modLanguage::Language();
    return language == 0 || language == german ? QLocale(QLocale::German, QLocale::Germany)
                                               : QLocale(QLocale::English, QLocale::UnitedKingdom);
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
