// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/cell.h"
#include "export/row_writer.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <utility>

namespace ov::exporting {

namespace {

constexpr std::string_view style = R"(
body { font: 10pt/1.35 "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; color: #1a1a1a;
  background: #fff; margin: 1.5rem; }
h1 { font-size: 1.5em; margin: 0 0 .5rem; }
ul { margin: 0 0 1rem; padding-left: 1.2em; }
table { border-collapse: collapse; }
caption { text-align: left; color: #555; padding-bottom: .3rem; }
th, td { text-align: start; vertical-align: top; padding: .2rem .6rem; overflow-wrap: anywhere;
  border-bottom: 1px solid #d5d5d5; }
td { white-space: pre-wrap; min-width: 2.5em; max-width: 26em; }
th { background: #eef1f4; border-bottom: 2px solid #8a949e; position: sticky; top: 0; }
footer { margin-top: 1rem; color: #555; }
@media print {
  body { margin: 0; font-size: 8pt; }
  th { position: static; -webkit-print-color-adjust: exact; print-color-adjust: exact; }
  thead { display: table-header-group; }
  tr { break-inside: avoid; }
}
)";

// Characters that a page cannot hold: controls get their picture, what is no character a mark.
void appendCharacter(UChar32 c, std::string& out) {
    constexpr UChar32 firstPicture = 0x2400; // in the order of the controls
    constexpr UChar32 pictureOfDelete = 0x2421;
    constexpr UChar32 mark = 0xFFFD;
    if (c < ' ' && c != '\t' && c != '\n')
        c += firstPicture;
    else if (c == 0x7F)
        c = pictureOfDelete;
    else if ((c > 0x7F && c < 0xA0) || U_IS_UNICODE_NONCHAR(c))
        c = mark;
    icu::UnicodeString(c).toUTF8String(out);
}

void appendAscii(char c, std::string& out) {
    switch (c) {
    case '&':
        out.append("&amp;");
        break;
    case '<':
        out.append("&lt;");
        break;
    case '>':
        out.append("&gt;");
        break;
    case '"':
        out.append("&quot;");
        break;
    default:
        out.push_back(c);
    }
}

// `text` is UTF-8.
void appendEscaped(std::string_view text, std::string& out) {
    if (std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; })) {
        for (const char c : text)
            appendAscii(c, out);
        return;
    }
    const icu::UnicodeString characters = icu::UnicodeString::fromUTF8(text);
    for (std::int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1))
        if (const UChar32 c = characters.char32At(i); c >= ' ' && c <= '~')
            appendAscii(static_cast<char>(c), out);
        else
            appendCharacter(c, out);
}

std::string escaped(std::string_view text) {
    std::string out;
    appendEscaped(text, out);
    return out;
}

class HtmlWriter final : public RowWriter {
public:
    HtmlWriter(Document document, Sink& sink) : document_(std::move(document)), sink_(sink) {}

    void begin() override {
        const std::string title = escaped(document_.title);
        sink_.write("<!DOCTYPE html>\n<html lang=\"" + escaped(document_.language) +
                    "\">\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"viewport\" "
                    "content=\"width=device-width\">\n<title>" +
                    (title.empty() ? std::string("-") : title) + "</title>\n<style>");
        sink_.write(style);
        sink_.write("</style>\n</head>\n<body>\n<main>\n");
        if (!title.empty())
            sink_.write("<h1>" + title + "</h1>\n");
        writeCriteria();
        writeHead();
    }

    void write(const Dictation& dictation) override {
        line_.assign("<tr>");
        for (const Column& column : document_.columns) {
            line_.append("<td dir=\"auto\">");
            appendEscaped(cellText(column, dictation), line_);
            line_.append("</td>");
        }
        sink_.write(line_.append("</tr>\n"));
    }

    void end() override {
        sink_.write("</tbody>\n</table>\n</main>\n<footer>" + escaped(document_.madeOn) +
                    " · <bdi>" + escaped(document_.storeFolder) +
                    "</bdi></footer>\n</body>\n</html>\n");
    }

private:
    void writeCriteria() {
        sink_.write("<ul>\n");
        for (const std::string& line : document_.criteria)
            sink_.write("<li dir=\"auto\">" + escaped(line) + "</li>\n");
        sink_.write("</ul>\n");
    }

    void writeHead() {
        sink_.write("<table>\n<caption>" + escaped(document_.sheetName) +
                    "</caption>\n<thead>\n<tr>");
        for (const Column& column : document_.columns)
            sink_.write("<th scope=\"col\" dir=\"auto\">" + escaped(column.caption) + "</th>");
        sink_.write("</tr>\n</thead>\n<tbody>\n");
    }

    Document document_;
    Sink& sink_;
    std::string line_;
};

} // namespace

std::unique_ptr<RowWriter> makeHtmlWriter(const Document& document, Sink& sink) {
    return std::make_unique<HtmlWriter>(document, sink);
}

} // namespace ov::exporting
