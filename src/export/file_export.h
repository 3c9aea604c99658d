// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/document.h"
#include "export/row_writer.h"
#include "export/rows.h"
#include "platform/status.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// A list as a file. The old file, if there is one, stays as it was until the new one is complete.

namespace ov::exporting {

// Stored by callers as their endings.
enum class Format : std::uint8_t { pdf, xlsx, csv, html, json, text };

struct FormatInfo {
    Format format;
    std::string_view ending;  // ".pdf"
    std::int32_t description; // text number: "PDF document"
};
// All of them, as menus and file dialogs offer them.
std::span<const FormatInfo> formats() noexcept;
const FormatInfo& formatInfo(Format format) noexcept;
// By the file's ending in any letter case, ".htm" being HTML and ".tsv" text.
std::optional<Format> formatOfFile(std::string_view fileName);

// Writes a PDF of the list; false when `goOn` stopped it or the sink refused. What it is lies
// where Qt is: print::writePdf(), or the module of pdf_module.h.
using PdfWriter = bool (*)(const Document& document, const RowSource& rows, Sink& sink,
                           const GoOn& goOn);

struct ExportResult {
    platform::Status status;
    bool stopped = false;
    bool ok() const { return status.ok() && !stopped; }
};

// Writes or replaces the file `path`. After a failure, or when `goOn` stopped it, the file is what
// it was before. `pdfWriter` may be nullptr for formats other than PDF.
ExportResult exportFile(const Document& document, const RowSource& rows, Format format,
                        std::string_view path, const GoOn& goOn, PdfWriter pdfWriter);

// The same in memory, for formats other than PDF and xlsx; nothing when `goOn` stopped it.
std::optional<std::string> exportText(const Document& document, const RowSource& rows,
                                      Format format, const GoOn& goOn);

} // namespace ov::exporting
