// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/run_program.h"

#include <QRectF>
#include <QString>
#include <QXmlStreamReader>
#include <algorithm>
#include <cmath>

// What a PDF shows, read back by another program.

namespace ov::tests {

struct PdfWord {
    QRectF place; // points
    std::string text;
};

struct PdfPage {
    QSizeF size;
    std::vector<PdfWord> words;

    const PdfWord& find(const std::string& text) const {
        const auto word = std::ranges::find(words, text, &PdfWord::text);
        if (word == words.end())
            throw std::runtime_error("not on the page: " + text);
        return *word;
    }
    // Each line from top to bottom, "top: left text | left text", whole points; what stands apart
    // is parted.
    std::vector<std::string> lines() const {
        std::vector<PdfWord> sorted = words;
        const auto line = [](const PdfWord& word) { return std::lround(word.place.bottom()); };
        std::ranges::stable_sort(sorted, [&](const PdfWord& a, const PdfWord& b) {
            return std::pair(line(a), a.place.left()) < std::pair(line(b), b.place.left());
        });
        std::vector<std::string> all;
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            const QRectF& place = sorted[i].place;
            const bool follows = i > 0 && line(sorted[i]) == line(sorted[i - 1]);
            constexpr double apart = 4.2;
            if (!follows)
                all.push_back(std::to_string(std::lround(place.top())) + ": ");
            else if (place.left() - sorted[i - 1].place.right() > apart)
                all.back() += " | ";
            else {
                all.back() += " " + sorted[i].text;
                continue;
            }
            all.back() += std::to_string(std::lround(place.left())) + " " + sorted[i].text;
        }
        return all;
    }
};

inline std::vector<PdfPage> readPdf(const std::string& file) {
    std::vector<PdfPage> pages;
    QXmlStreamReader xml(QString::fromStdString(shellOutput("pdftotext -bbox '" + file + "' -")));
    const auto number = [&xml](const char* name) {
        return xml.attributes().value(QLatin1String(name)).toDouble();
    };
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("page"))
            pages.push_back({{number("width"), number("height")}, {}});
        if (xml.name() != QLatin1String("word"))
            continue;
        const QRectF place({number("xMin"), number("yMin")},
                           QPointF(number("xMax"), number("yMax")));
        pages.back().words.push_back({place, xml.readElementText().toStdString()});
    }
    return pages;
}

} // namespace ov::tests
