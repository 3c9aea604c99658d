// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/icons.h"

#include "widgets/resources.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QImageReader>
#include <QPalette>
#include <QPixmap>
#include <QString>
#include <array>

namespace ov::widgets {

namespace {

// Large enough for any icon of ours on a screen with three pixels to the point.
constexpr std::array<int, 6> sides{16, 20, 24, 32, 48, 64};

void addDrawing(QIcon& icon, QByteArray drawing, QIcon::Mode mode) {
    for (const int side : sides) {
        QBuffer buffer(&drawing);
        QImageReader reader(&buffer, "svg");
        reader.setScaledSize({side, side});
        if (const QImage image = reader.read(); !image.isNull())
            icon.addPixmap(QPixmap::fromImage(image), mode);
    }
}

QIcon load(const QString& path) {
    QFile file(path);
    QIcon icon;
    if (!file.open(QIODevice::ReadOnly))
        return icon;
    QByteArray drawing = file.readAll();
    addDrawing(icon, drawing, QIcon::Normal);
    // In a selected row the blue, grey and green lines of the set would vanish in the highlight.
    const QByteArray highlighted =
        QGuiApplication::palette().color(QPalette::HighlightedText).name().toLatin1();
    for (const char* colour : {"#3d6fb4", "#6b7480", "#9aa3ad", "#2e8b57"})
        drawing.replace(colour, highlighted);
    addDrawing(icon, drawing, QIcon::Selected);
    return icon;
}

} // namespace

QIcon icon(const char* name) {
    thread_local QHash<QString, QIcon> loaded;
    if (loaded.isEmpty())
        initResources();
    const QString path = QStringLiteral(":/ovsearch/%1.svg").arg(QLatin1String(name));
    auto found = loaded.find(path);
    if (found == loaded.end())
        found = loaded.insert(path, load(path));
    return *found;
}

} // namespace ov::widgets
