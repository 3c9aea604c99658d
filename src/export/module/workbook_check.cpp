// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/module/workbook_check.h"

#include <array>
#include <expat.h>
#include <memory>
#include <string_view>
#include <unzip.h>

namespace ov::exporting::loaded {

namespace {

// The cells of a sheet, as its XML passes by. Elsewhere there are none.
struct CellReader {
    CellSum cells;
    std::string text;
    bool inText = false;
};

CellReader& readerOf(void* data) {
    return *static_cast<CellReader*>(data);
}

extern "C" {

void onElement(void* data, const char* name, const char** /*attributes*/) {
    CellReader& reader = readerOf(data);
    reader.inText = std::string_view(name) == "t";
    reader.text.clear();
}

void onText(void* data, const char* text, int length) {
    if (CellReader& reader = readerOf(data); reader.inText)
        reader.text.append(text, static_cast<std::size_t>(length));
}

void onElementEnd(void* data, const char* name) {
    CellReader& reader = readerOf(data);
    if (std::string_view(name) == "t")
        reader.cells.addText(reader.text);
    else if (std::string_view(name) == "v")
        reader.cells.addNumber();
    reader.inText = false;
}

} // extern "C"

class Archive {
public:
    explicit Archive(const std::string& native) : file_(unzOpen64(native.c_str())) {}
    ~Archive() { unzClose(file_); }
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    bool valid() const { return file_ != nullptr; }

    std::string partName() const {
        std::array<char, 256> name{};
        unzGetCurrentFileInfo64(file_, nullptr, name.data(), name.size() - 1, nullptr, 0, nullptr,
                                0);
        return name.data();
    }

    // Closing compares the checksum of what was read.
    bool readPart(CellReader& cells) const {
        const bool sound = unzOpenCurrentFile(file_) == UNZ_OK && parsePart(cells);
        return unzCloseCurrentFile(file_) == UNZ_OK && sound;
    }

    // UNZ_END_OF_LIST_OF_FILE after the last.
    int next() const { return unzGoToNextFile(file_); }

private:
    bool parsePart(CellReader& cells) const {
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
            XML_ParserCreate("UTF-8"), XML_ParserFree);
        XML_SetUserData(parser.get(), &cells);
        XML_SetElementHandler(parser.get(), onElement, onElementEnd);
        XML_SetCharacterDataHandler(parser.get(), onText);
        std::array<char, 65536> piece; // NOLINT(*-member-init): filled by what is read
        for (;;) {
            const int got = unzReadCurrentFile(file_, piece.data(), piece.size());
            if (got < 0 || XML_Parse(parser.get(), piece.data(), got,
                                     got == 0 ? XML_TRUE : XML_FALSE) != XML_STATUS_OK)
                return false;
            if (got == 0)
                return true;
        }
    }

    unzFile file_;
};

} // namespace

bool isWholeWorkbook(const std::string& native, const CellSum& cells) {
    const Archive archive(native);
    int sheets = 0;
    int next = archive.valid() ? UNZ_OK : UNZ_BADZIPFILE;
    for (; next == UNZ_OK; next = archive.next()) {
        CellReader reader;
        const bool isSheet = archive.partName().starts_with("xl/worksheets/");
        if (!archive.readPart(reader) || (isSheet && reader.cells != cells))
            return false;
        sheets += isSheet ? 1 : 0;
    }
    return next == UNZ_END_OF_LIST_OF_FILE && sheets == 1;
}

} // namespace ov::exporting::loaded
