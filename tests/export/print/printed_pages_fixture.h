// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "export/print/list_pages.h"
#include "export/print/pdf.h"
#include "tests/settings_fixture.h"
#include "tests/window/pdf_pages.h"

#include <QImage>

// Lists as PDF, read back as another program sees their pages.

namespace ov::exporting::print {

using tests::PdfPage;
using tests::PdfWord;
using Texts = std::vector<std::string>;

// Cells of which column i has the key "i".
class Cells final : public RowSource {
public:
    std::vector<Texts> rows;
    std::int64_t count() const override { return static_cast<std::int64_t>(rows.size()); }
    Dictation dictation(std::int64_t /*row*/) const override { return {}; }
    std::string text(const Column& column, std::int64_t row) const override {
        return rows[static_cast<std::size_t>(row)][std::stoul(column.key)];
    }
};

class PdfFile final : public Sink {
public:
    std::string bytes;
    bool write(std::string_view more) override {
        bytes.append(more);
        return true;
    }
};

inline constexpr std::int32_t textField = 5;
inline constexpr std::int32_t dateField = 9;

class PrintedPages : public tests::SettingsTest {
protected:
    PrintedPages() {
        document.pageNumber = "Page %1% of %2%";
        document.madeOn = "Printed today";
        document.storeFolder = "/store/";
        document.style.fontName = "DejaVu Sans";
    }
    void add(const std::string& caption, const std::string& shortCaption = {},
             std::int32_t field = textField) {
        document.columns.push_back({std::to_string(document.columns.size()), field, caption,
                                    shortCaption.empty() ? caption : shortCaption, 0});
    }
    // A list with as many columns, each with this text in all of its rows.
    void addColumns(int count, const std::string& text, int rowCount = 1) {
        for (int i = 0; i < count; ++i)
            add("Caption", "Cap");
        cells.rows.assign(static_cast<std::size_t>(rowCount),
                          Texts(static_cast<std::size_t>(count), text));
    }
    std::vector<PdfPage> pages() {
        PdfFile file;
        EXPECT_TRUE(writePdf(document, cells, file, [](std::int64_t) { return true; }));
        write("list.pdf", file.bytes);
        return tests::readPdf((folder() / "list.pdf").native());
    }
    // What is not white from top to bottom of the first page, "top-bottom grey" in points.
    Texts shades(int x) const {
        constexpr int dots = 4; // to the point
        const std::string file = (folder() / "list").native();
        tests::shellOutput("pdftoppm -singlefile -png -r 288 -W 1 -H 4000 -x " +
                           std::to_string(x * dots) + " '" + file + ".pdf' '" + file + "'");
        const QImage image(QString::fromStdString(file + ".png"));
        Texts all;
        for (int y = 1, top = 0; y < image.height(); ++y) {
            const int grey = qGray(image.pixel(0, y - 1));
            if (grey == qGray(image.pixel(0, y)))
                continue;
            if (grey != 255)
                all.push_back(std::to_string(top / dots) + "-" + std::to_string(y / dots) + " " +
                              std::to_string(grey));
            top = y;
        }
        return all;
    }

    Document document;
    Cells cells;
};

} // namespace ov::exporting::print
