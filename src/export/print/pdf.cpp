// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/pdf.h"

#include "export/print/list_pages.h"

#include <QIODevice>
#include <QLocale>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <algorithm>

namespace ov::exporting::print {

namespace {

class SinkDevice final : public QIODevice {
public:
    explicit SinkDevice(Sink& sink) : sink_(sink) { open(QIODevice::WriteOnly); }
    bool isSequential() const override { return true; }
    bool failed() const { return failed_; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        failed_ = failed_ || !sink_.write({data, static_cast<std::size_t>(size)});
        return failed_ ? -1 : size;
    }

private:
    Sink& sink_;
    bool failed_ = false;
};

QPageLayout fullPage(const ListPages& pages) {
    QPageLayout layout(pages.paper(), pages.orientation(), QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

} // namespace

QPageSize usualPaper() {
    const bool metric = QLocale::system().measurementSystem() != QLocale::ImperialUSSystem;
    return {metric ? QPageSize::A4 : QPageSize::Letter};
}

bool writePdf(const Document& document, const RowSource& rows, Sink& sink, const GoOn& goOn) {
    ListPages pages(document, rows, usualPaper());
    if (!pages.layOut([&goOn](std::int64_t done) { return goOn(done / 2); }))
        return false;
    SinkDevice device(sink);
    QPdfWriter writer(&device);
    writer.setResolution(static_cast<int>(unitsPerInch));
    writer.setTitle(pageText(document.title));
    writer.setCreator(QStringLiteral("OVSearch"));
    writer.setPageLayout(fullPage(pages));
    QPainter painter(&writer);
    for (int page = 0; page < pages.count(); ++page) {
        if (page > 0)
            writer.newPage();
        pages.paint(painter, page, pages.pageSize());
        if (device.failed() || !goOn((rows.count() + pages.rowsBefore(page + 1)) / 2))
            return false;
    }
    return painter.end() && !device.failed();
}

Printed printPages(const ListPages& pages, QPrinter& printer, const GoOn& goOn) {
    const bool some = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const int first = some ? printer.fromPage() : 1;
    if (first > pages.count())
        return Printed::noSuchPage;
    printer.setPageLayout(fullPage(pages));
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        return Printed::failed;
    const int last =
        some && printer.toPage() > 0 ? std::min(printer.toPage(), pages.count()) : pages.count();
    const QSizeF target = printer.pageLayout().fullRectPixels(printer.resolution()).size();
    for (int page = first; page <= last; ++page) {
        if (page > first)
            printer.newPage();
        pages.paint(painter, page - 1, target);
        if (!goOn(pages.rowsBefore(page))) {
            printer.abort();
            return Printed::failed;
        }
    }
    return painter.end() && printer.printerState() != QPrinter::Error ? Printed::whole
                                                                      : Printed::failed;
}

} // namespace ov::exporting::print
