// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/options.h"

#include "host/paths.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <span>
#include <string_view>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

void addOptions(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        u"Shows the dictation search plug-in in a window of its own."_s);
    parser.addOptions({
        {u"store"_s, u"Search this folder of dictations in this run."_s, u"DIR"_s},
        {u"language"_s, u"Language of this run: de or en."_s, u"LANGUAGE"_s},
        {u"settings"_s, u"Keep all settings below this folder."_s, u"DIR"_s},
        {u"plugin"_s, u"Load the plug-in from this file."_s, u"FILE"_s},
        {u"self-test"_s, u"Load and show the plug-in, then quit."_s},
        {u"screenshot"_s, u"The same, and save a picture of the window."_s, u"FILE"_s},
        {{u"h"_s, u"help"_s}, u"Print this help."_s},
        {{u"v"_s, u"version"_s}, u"Print the version."_s},
    });
}

EndAtOnce wrong(const QString& message) {
    return {u"ovhost: %1\nRun with --help for more information.\n"_s.arg(message), 2};
}

// The name of an option that was given without a value; a mistake, mostly a variable of a script
// that was never set.
QString emptyOption(const QCommandLineParser& parser) {
    for (const QString& name : {u"store"_s, u"settings"_s, u"plugin"_s, u"screenshot"_s})
        if (parser.isSet(name) && parser.value(name).isEmpty())
            return name;
    return {};
}

std::optional<Language> languageNamed(const QString& name) {
    if (name == "de"_L1)
        return Language::german;
    if (name == "en"_L1)
        return Language::english;
    return std::nullopt;
}

// The parser knows texts only; a folder whose name is no text is taken from the arguments.
std::string storeBytes(std::span<char*> arguments, const QString& parsed) {
    std::string bytes = nativeBytes(parsed);
    for (const std::string_view argument : arguments) {
        const std::size_t start = argument.starts_with("--store=") ? 8 : 0;
        const std::string_view value = argument.substr(start);
        if (QString::fromLocal8Bit(value.data(), static_cast<qsizetype>(value.size())) == parsed)
            bytes = value;
    }
    if (!bytes.starts_with('/') && QDir::isRelativePath(parsed))
        bytes.insert(0, nativeBytes(QDir::currentPath()) + "/");
    return bytes;
}

QString absolutePath(const QCommandLineParser& parser, const QString& option) {
    return parser.isSet(option) ? QFileInfo(parser.value(option)).absoluteFilePath() : QString();
}

std::variant<Options, EndAtOnce> checkedOptions(const QCommandLineParser& parser,
                                                std::span<char*> arguments) {
    if (!parser.positionalArguments().isEmpty())
        return wrong(u"unexpected argument '%1'."_s.arg(parser.positionalArguments().constFirst()));
    if (const QString name = emptyOption(parser); !name.isEmpty())
        return wrong(u"--%1 must not be empty."_s.arg(name));
    Options options;
    if (parser.isSet(u"language"_s)) {
        options.language = languageNamed(parser.value(u"language"_s));
        if (!options.language)
            return wrong(u"--language is de or en, not '%1'."_s.arg(parser.value(u"language"_s)));
    }
    if (parser.isSet(u"store"_s))
        options.store = storeBytes(arguments, parser.value(u"store"_s));
    options.settings = absolutePath(parser, u"settings"_s);
    options.plugin = absolutePath(parser, u"plugin"_s);
    options.screenshot = absolutePath(parser, u"screenshot"_s);
    options.selfTest = parser.isSet(u"self-test"_s) || !options.screenshot.isEmpty();
    return options;
}

} // namespace

std::variant<Options, EndAtOnce> readCommandLine(int argc, char** argv) {
    // Gone again before the real one: that needs a display, which help must not.
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(QCoreApplication::arguments()))
        return wrong(parser.errorText());
    if (parser.isSet(u"help"_s))
        return EndAtOnce{parser.helpText(), 0};
    if (parser.isSet(u"version"_s))
        return EndAtOnce{u"ovhost %1\n"_s.arg(QCoreApplication::applicationVersion()), 0};
    return checkedOptions(parser, {argv, static_cast<std::size_t>(argc)});
}

} // namespace ov::host
