// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the terminal loads when it is asked for a PDF.

#include "export/print/pdf.h"

#include <QGuiApplication>
#include <memory>

extern "C" Q_DECL_EXPORT bool ovsearchWritePdf(const ov::exporting::Document& document,
                                               const ov::exporting::RowSource& rows,
                                               ov::exporting::Sink& sink,
                                               const ov::exporting::GoOn& goOn) {
    // A terminal has no windows; fonts are all that is needed.
    static int count = 3;
    static char program[] = "ovsearch";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char* arguments[] = {program, option, platform, nullptr};
    std::unique_ptr<QGuiApplication> application;
    // What Qt misses in a terminal's surroundings is of no interest to who waits for a file.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    if (QCoreApplication::instance() == nullptr)
        application = std::make_unique<QGuiApplication>(count, arguments);
    return ov::exporting::print::writePdf(document, rows, sink, goOn);
}
