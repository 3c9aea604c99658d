// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the terminal loads when it is asked for a PDF.

#include "export/pdf_module.h"
#include "export/print/pdf.h"
#include "platform/loaded_module.h"

#include <QGuiApplication>
#include <iterator>
#include <memory>

namespace {

bool writePdfWithoutWindows(const ov::exporting::Document& document,
                            const ov::exporting::RowSource& rows, ov::exporting::Sink& sink,
                            const ov::exporting::GoOn& goOn) {
    // A terminal has no windows; fonts are all that is needed.
    static char program[] = "ovsearch";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char* arguments[] = {program, option, platform};
    static int count = static_cast<int>(std::size(arguments));
    std::unique_ptr<QGuiApplication> application;
    // What Qt misses in a terminal's surroundings is of no interest to who waits for a file.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    if (QCoreApplication::instance() == nullptr)
        application = std::make_unique<QGuiApplication>(count, arguments);
    return ov::exporting::print::writePdf(document, rows, sink, goOn);
}

} // namespace

const void* ovsearchModule(const char* version) {
    static constexpr ov::exporting::PdfModule module{writePdfWithoutWindows};
    return ov::platform::isModuleVersion(version) ? &module : nullptr;
}
