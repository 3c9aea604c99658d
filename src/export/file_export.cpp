// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/file_export.h"

#include "export/xlsx_writer.h"
#include "platform/file_replacement.h"
#include "platform/files.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <system_error>

namespace ov::exporting {

using modLanguage::GetText;

namespace {

constexpr std::array<FormatInfo, 6> allFormats = {{
    {Format::pdf, ".pdf", text_id::fileTypePdf},
    {Format::xlsx, ".xlsx", text_id::fileTypeXlsx},
    {Format::csv, ".csv", text_id::fileTypeCsv},
    {Format::html, ".html", text_id::fileTypeHtml},
    {Format::json, ".json", text_id::fileTypeJson},
    {Format::text, ".txt", text_id::fileTypeText},
}};

// Gathers small pieces; remembers what went wrong.
class FileSink final : public Sink {
public:
    explicit FileSink(platform::FileReplacement& file) : file_(file) {}

    bool write(std::string_view bytes) override {
        constexpr std::size_t room = 256 * 1024UL;
        buffer_.append(bytes);
        return buffer_.size() < room ? status_.ok() : flush();
    }
    bool flush() {
        if (status_.ok())
            status_ = file_.write(buffer_);
        constexpr std::size_t keptEnd = 64;
        size_ += buffer_.size();
        end_.append(buffer_).erase(0, end_.size() - std::min(end_.size(), keptEnd));
        buffer_.clear();
        return status_.ok();
    }
    const platform::Status& status() const { return status_; }

    // Ends as a PDF does: with the place of its table of objects.
    bool holdsPdf() const {
        constexpr std::string_view table = "\nstartxref\n";
        const std::size_t at = end_.rfind(table);
        std::uint64_t place = 0;
        if (at == std::string::npos || !end_.ends_with("\n%%EOF\n"))
            return false;
        const auto read =
            std::from_chars(end_.data() + at + table.size(), end_.data() + end_.size(), place);
        return read.ec == std::errc() && place > 0 && place < size_;
    }

private:
    platform::FileReplacement& file_;
    std::string buffer_;
    std::string end_;        // of what was written
    std::uint64_t size_ = 0; // of it
    platform::Status status_;
};

class TextSink final : public Sink {
public:
    explicit TextSink(std::string& text) : text_(text) {}
    bool write(std::string_view bytes) override {
        text_.append(bytes);
        return true;
    }

private:
    std::string& text_;
};

std::unique_ptr<RowWriter> makeWriter(const Document& document, Format format, Sink& sink) {
    switch (format) {
    case Format::csv:
        return makeCsvWriter(document.columns,
                             {.forSpreadsheets = true, .separator = document.listSeparator}, sink);
    case Format::html:
        return makeHtmlWriter(document, sink);
    case Format::json:
        return makeJsonWriter(document.columns, {}, sink);
    default:
        return makeTextWriter(document.columns, sink);
    }
}

// False when `goOn` stopped it.
bool writeRows(RowWriter& writer, const RowSource& rows, const GoOn& goOn) {
    writer.begin();
    for (std::int64_t row = 0; row < rows.count(); ++row) {
        writer.write(rows.dictation(row));
        if (!goOn(row + 1))
            return false;
    }
    writer.end();
    return true;
}

ExportResult writeStream(const Document& document, const RowSource& rows, Format format,
                         platform::FileReplacement& file, const GoOn& goOn, PdfWriter pdfWriter,
                         const std::string& native) {
    FileSink sink(file);
    const GoOn whileWritable = [&](std::int64_t done) { return sink.status().ok() && goOn(done); };
    const bool complete = format == Format::pdf
                              ? pdfWriter(document, rows, sink, whileWritable)
                              : writeRows(*makeWriter(document, format, sink), rows, whileWritable);
    sink.flush();
    if (format == Format::pdf && complete && sink.status().ok() && !sink.holdsPdf())
        return {{EIO, native, GetText(text_id::exportIncomplete)}, false};
    return {sink.status(), !complete && sink.status().ok()};
}

ExportResult writeSheet(const Document& document, const RowSource& rows,
                        const platform::FileReplacement& file, const GoOn& goOn,
                        const std::string& native) {
    if (rows.count() > mostSheetRows)
        return {{EFBIG, native, std::generic_category().message(EFBIG)}, false};
    ExportResult result;
    result.status = writeWorkbook(document, rows, file.nativeName(), native, goOn, result.stopped);
    return result;
}

} // namespace

std::span<const FormatInfo> formats() noexcept {
    return allFormats;
}

const FormatInfo& formatInfo(Format format) noexcept {
    return allFormats[static_cast<std::size_t>(format)];
}

std::optional<Format> formatOfFile(std::string_view fileName) {
    const std::size_t dot = fileName.find_last_of("./\\");
    if (dot == std::string_view::npos || fileName[dot] != '.')
        return std::nullopt;
    const std::string_view ending = fileName.substr(dot);
    for (const FormatInfo& info : allFormats)
        if (platform::equalsIgnoringCase(ending, info.ending))
            return info.format;
    if (platform::equalsIgnoringCase(ending, ".htm"))
        return Format::html;
    if (platform::equalsIgnoringCase(ending, ".tsv"))
        return Format::text;
    return std::nullopt;
}

ExportResult exportFile(const Document& document, const RowSource& rows, Format format,
                        std::string_view path, const GoOn& goOn, PdfWriter pdfWriter) {
    platform::FileReplacement file;
    ExportResult result{file.open(path), false};
    if (!result.ok())
        return result;
    const std::string native = platform::toNativePath(path);
    result = format == Format::xlsx
                 ? writeSheet(document, rows, file, goOn, native)
                 : writeStream(document, rows, format, file, goOn, pdfWriter, native);
    if (result.ok())
        result.status = file.commit();
    return result;
}

std::optional<std::string> exportText(const Document& document, const RowSource& rows,
                                      Format format, const GoOn& goOn) {
    std::string text;
    TextSink sink(text);
    if (!writeRows(*makeWriter(document, format, sink), rows, goOn))
        return std::nullopt;
    return text;
}

} // namespace ov::exporting
