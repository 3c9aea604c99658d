// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <algorithm>
#include <array>
#include <cstddef>

namespace ov::host {

namespace {

struct Row {
    Text text;
    const char16_t* english;
    const char16_t* german;
};

constexpr std::size_t textCount = static_cast<std::size_t>(Text::count_);

constexpr std::array<Row, textCount> table{{
    {Text::fileMenu, u"&File", u"&Datei"},
    {Text::openFolder, u"&Open dictation folder…", u"Diktatverzeichnis ö&ffnen …"},
    {Text::recentFolders, u"&Recent folders", u"&Zuletzt verwendete Verzeichnisse"},
    {Text::forgetRecentFolders, u"&Clear this list", u"&Liste leeren"},
    {Text::quit, u"&Quit", u"&Beenden"},
    {Text::viewMenu, u"Vie&w", u"&Ansicht"},
    {Text::logView, u"&Log", u"&Protokoll"},
    {Text::languageMenu, u"Lang&uage", u"&Sprache"},
    {Text::helpMenu, u"&Help", u"&Hilfe"},
    {Text::about, u"&About", u"&Info"},
    {Text::traceDock, u"Trace", u"Ablaufverfolgung"},
    {Text::traceTime, u"Time", u"Zeit"},
    {Text::traceText, u"Message", u"Meldung"},
    {Text::copy, u"Cop&y", u"K&opieren"},
    {Text::clear, u"Clea&r", u"Leeren"},
    {Text::chooseFolder, u"Open dictation folder", u"Diktatverzeichnis öffnen"},
    {Text::folderIsGone, u"The folder %1 cannot be opened.",
     u"Das Verzeichnis %1 kann nicht geöffnet werden."},
    {Text::folderIsSilent, u"The folder %1 does not answer. Perhaps its server is down.",
     u"Das Verzeichnis %1 antwortet nicht. Vielleicht ist sein Server ausgefallen."},
    {Text::settingsUnsaved,
     u"The settings cannot be saved: %1\n\nWhat you change holds until the program ends.",
     u"Die Einstellungen können nicht gespeichert werden: %1\n\nWas Sie ändern, gilt bis zum Ende "
     u"des Programms."},
    {Text::noFolderChosen, u"No dictation folder has been chosen yet.",
     u"Es ist noch kein Diktatverzeichnis gewählt."},
    {Text::chooseFirstFolder, u"&Choose the dictation folder…", u"Diktatverzeichnis &wählen …"},
    {Text::progressBar, u"Progress", u"Fortschritt"},
    {Text::working, u"Working…", u"In Arbeit …"},
    {Text::logViewTitle, u"Log", u"Protokoll"},
    {Text::logViewOf, u"Dictation: %1", u"Diktat: %1"},
    {Text::caption, u"Field", u"Feld"},
    {Text::value, u"Value", u"Inhalt"},
    {Text::logLines, u"&Recent log lines:", u"&Letzte Protokollzeilen:"},
    {Text::noLogLines, u"Nothing was logged.", u"Es wurde nichts protokolliert."},
    {Text::aboutPlugIn, u"Plug-in %1, version %2", u"Plug-in %1, Version %2"},
    {Text::aboutNoPlugIn, u"No plug-in is loaded.", u"Es ist kein Plug-in geladen."},
    {Text::plugInFailed, u"The plug-in %1 could not create its control.",
     u"Das Plug-in %1 konnte sein Steuerelement nicht erzeugen."},
    {Text::callFailed, u"The plug-in reports: %1", u"Das Plug-in meldet: %1"},
    {Text::errorNumber, u"%1 (error %2)", u"%1 (Fehler %2)"},
    {Text::notLoadedTitle, u"The search is not available", u"Die Suche ist nicht verfügbar"},
    {Text::notLoadedAdvice,
     u"Install the plug-in that belongs to this program, or start the program with the plug-in's "
     u"file: ovhost --plugin FILE",
     u"Installieren Sie das Plug-in, das zu diesem Programm gehört, oder starten Sie das Programm "
     u"mit der Datei des Plug-ins: ovhost --plugin DATEI"},
    {Text::notStartedAdvice,
     u"Start the program again. The log (View, Log) tells what the plug-in has noted.",
     u"Starten Sie das Programm neu. Das Protokoll (Ansicht, Protokoll) nennt, was das Plug-in "
     u"vermerkt hat."},
    {Text::notFound, u"The plug-in was not found. Looked for: %1",
     u"Das Plug-in wurde nicht gefunden. Gesucht wurde: %1"},
    {Text::missingFile, u"%1: there is no such file.", u"%1: Diese Datei gibt es nicht."},
    {Text::noPlugIn, u"%1: the file is no plug-in.", u"%1: Die Datei ist kein Plug-in."},
    {Text::otherInterface, u"%1: the plug-in has the interface %2; this program needs %3.",
     u"%1: Das Plug-in hat die Schnittstelle %2; dieses Programm braucht %3."},
    {Text::otherVersion, u"%1: the plug-in has version %2 of the interface; this program needs %3.",
     u"%1: Das Plug-in hat Version %2 der Schnittstelle; dieses Programm braucht %3."},
    {Text::loaderFailed, u"%1: the file cannot be loaded: %2",
     u"%1: Die Datei kann nicht geladen werden: %2"},
    {Text::noLibrary, u"%1: the plug-in has no %2 inside.", u"%1: Das Plug-in enthält kein %2."},
    {Text::noConnector, u"%1: the plug-in does not know %2.", u"%1: Das Plug-in kennt %2 nicht."},
    {Text::startFailed, u"%1: the plug-in could not be started: %2",
     u"%1: Das Plug-in konnte nicht gestartet werden: %2"},
    {Text::none, u"none", u"keine"},
}};

consteval bool isInOrder() {
    for (std::size_t i = 0; i < table.size(); ++i)
        if (table.at(i).text != static_cast<Text>(i))
            return false;
    return true;
}
static_assert(isInOrder(), "a text's row stands at its number");

// In one go, so that an argument with a "%1" of its own stays as it is.
QString filled(QStringView pattern, const QStringList& arguments) {
    QString result;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const bool mark = pattern[i] == u'%' && i + 1 < pattern.size();
        const int number = mark ? pattern[i + 1].digitValue() : -1;
        if (number < 1 || number > arguments.size()) {
            result += pattern[i];
        } else {
            result += arguments.at(number - 1);
            ++i;
        }
    }
    return result;
}

} // namespace

Texts::Texts(Language language) : language_(language) {
    loadTextsOfQt();
}

QString Texts::operator()(Text text, const QStringList& arguments) const {
    const Row& row = table.at(static_cast<std::size_t>(text));
    return filled(QStringView(language_ == Language::german ? row.german : row.english), arguments);
}

void Texts::setLanguage(Language language) {
    if (language == language_)
        return;
    language_ = language;
    loadTextsOfQt();
    emit changed();
}

void Texts::loadTextsOfQt() {
    QCoreApplication::removeTranslator(&textsOfQt_);
    const QLocale locale(language_ == Language::german ? QLocale::German : QLocale::English);
    if (textsOfQt_.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&textsOfQt_);
}

} // namespace ov::host
