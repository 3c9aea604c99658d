// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/ending_signals.h"
#include "host/folder_check.h"
#include "host/options.h"
#include "host/paths.h"
#include "host/self_test.h"
#include "host/window/main_window.h"

#include <QApplication>
#include <QIcon>
#include <QStandardPaths>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <system_error>

namespace {

using namespace ov::host;
using namespace Qt::StringLiterals;

constexpr int wrongUse = 2;

void print(std::FILE* stream, const QString& text) {
    std::fputs(text.toLocal8Bit().constData(), stream);
}

void complain(const QString& text) {
    print(stderr, "ovhost: %1\n"_L1.arg(text));
}

// Without one Qt ends the process with an abort.
bool hasDisplay() {
    if (QSysInfo::kernelType() != "linux"_L1)
        return true;
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

void nameProgram() {
    QApplication::setApplicationName(u"ovhost"_s);
    QApplication::setApplicationDisplayName(u"OVHost"_s);
    QApplication::setApplicationVersion(QStringLiteral(OV_HOST_VERSION));
    QApplication::setDesktopFileName(u"org.orvanta.OVHost"_s);
}

// What is given for this run is not remembered.
void apply(const Options& options, HostSettings& settings) {
    if (options.language)
        settings.useLanguageForThisRun(*options.language);
    if (!options.store.empty())
        settings.useDictationFolderForThisRun(options.store);
}

int runWindow(const Options& options) {
    HostSettings settings(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    apply(options, settings);
    Texts texts(settings.language());
    ProgressNotes progress;
    PluginSession session(settings, texts, progress);
    MainWindow window(session, progress, settings, texts);
    std::unique_ptr<SelfTest> selfTest;
    if (options.selfTest)
        selfTest = std::make_unique<SelfTest>(window, options.screenshot);
    const EndingSignals ending(window);
    window.show();
    QTimer::singleShot(0, &window, [&] { window.load(options.plugin); });
    QApplication::exec();

    if (const QString file = settings.save(); !file.isEmpty())
        complain("%1: the settings cannot be written"_L1.arg(file));
    if (!selfTest || selfTest->failure().isEmpty())
        return 0;
    complain(selfTest->failure());
    return 1;
}

// Not by Qt, which knows no name that is no text. A server that does not answer yet may have it.
bool mayBeFolder(const std::filesystem::path& store) {
    return answerInTime([store] {
               std::error_code ignored;
               return std::filesystem::is_directory(store, ignored);
           })
        .value_or(true);
}

int run(int argc, char** argv) {
    nameProgram();
    const auto commandLine = readCommandLine(argc, argv);
    if (const auto* end = std::get_if<EndAtOnce>(&commandLine)) {
        print(end->exitCode == 0 ? stdout : stderr, end->text);
        return end->exitCode;
    }
    const auto& options = std::get<Options>(commandLine);
    if (!options.store.empty() && !mayBeFolder(options.store)) {
        complain("%1: there is no such folder"_L1.arg(shownPath(boundaryPath(options.store))));
        return wrongUse;
    }
    if (!hasDisplay()) {
        complain(u"there is no display; set DISPLAY or WAYLAND_DISPLAY"_s);
        return 1;
    }
    // Before anything asks where settings lie, the plug-in too.
    if (!options.settings.isEmpty())
        for (const char* place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            qputenv(place, options.settings.toLocal8Bit());

    // Qt has a "--plugin" of its own: it gets no argument of ours.
    int onlyName = 1;
    const QApplication application(onlyName, argv);
    QApplication::setWindowIcon(QIcon(u":/icon.svg"_s));
    return runWindow(options);
}

} // namespace

int main(int argc, char** argv) {
    try {
        const int exitCode = run(argc, argv);
        ov::host::EndingSignals::passOn();
        return exitCode;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ovhost: %s\n", error.what());
        return 1;
    }
}
