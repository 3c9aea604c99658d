// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/xlsx_writer.h"

#include "export/cell.h"
#include "export/sheet_module.h"
#include "platform/loaded_module.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <variant>

namespace ov::exporting {

namespace {

// Spreadsheets hold 29 February 1900 for a day, so only from here on do their serials agree.
constexpr std::int32_t firstSafeDay = 61;

// Day and month in the order of the user's country. The backslash keeps a spreadsheet from
// putting in the separator of its own.
std::string dateFormat() {
    const platform::Locale& locale = platform::locale();
    const std::string separator = {'\\', locale.dateSeparator};
    const std::string day = locale.dayTwoDigits ? "dd" : "d";
    const std::string month = locale.dayTwoDigits ? "mm" : "m";
    switch (locale.dateOrder) {
    case platform::DateOrder::dayMonthYear:
        return day + separator + month + separator + "yyyy";
    case platform::DateOrder::monthDayYear:
        return month + separator + day + separator + "yyyy";
    case platform::DateOrder::yearMonthDay:
        break;
    }
    return "yyyy" + separator + month + separator + day;
}

// A name of a sheet has no brackets, slashes and the like, no quote at its ends, and 31
// characters at most.
std::string sheetName(std::string_view wanted) {
    constexpr std::size_t longest = 31;
    std::string name;
    for (const char c : platform::truncateUtf8(wanted, longest))
        name.push_back(std::string_view("[]:*?/\\'").find(c) == std::string_view::npos ? c : ' ');
    return std::string(platform::trimmed(name));
}

// Spreadsheets take "_x0041_" for an escaped letter, and XML cannot hold every character.
std::string sheetText(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view rest = text.substr(i);
        if (rest.starts_with("_x") && rest.size() >= 7 && rest[6] == '_') {
            out.append("_x005F_");
        } else if (rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF")) {
            out.append("\xEF\xBF\xBD");
            i += 2;
        } else if (const char c = text[i]; c >= 0 && c < ' ' && c != '\t' && c != '\n') {
            const auto code = static_cast<unsigned char>(c);
            out.append("_x00").append({digits[code / 16U], digits[code % 16U], '_'});
        } else {
            out.push_back(c);
        }
    }
    return out;
}

SheetSetup setupOf(const Document& document, const std::string& native) {
    return {native, std::filesystem::path(native).parent_path().native(),
            sheetName(document.sheetName), dateFormat(), dateFormat() + " hh:mm:ss"};
}

// The library does not say, and much else may have set the number.
int reason() {
    constexpr std::array known = {ENOSPC, EFBIG, EDQUOT, EACCES, EMFILE, ENFILE};
    return std::ranges::find(known, errno) != known.end() ? errno : EIO;
}

class Workbook {
public:
    Workbook(const SheetModule& module, const Document& document, const std::string& native)
        : module_(module),
          document_(document),
          native_(native),
          file_(module.create(setupOf(document, native))) {}

    bool failed() const { return file_->failed(); }

    void writeCaptions(std::int64_t rows) {
        for (std::size_t i = 0; i < document_.columns.size(); ++i) {
            const Column& column = document_.columns[i];
            constexpr double twipsPerCharacter = 100;
            file_->setWidth(i, std::clamp(column.width / twipsPerCharacter, 8.0, 60.0));
            writeText(0, i, column.caption, CellStyle::caption);
        }
        if (!document_.columns.empty())
            file_->fixCaptions(rows, document_.columns.size());
    }

    void write(std::int64_t row, const Dictation& dictation) {
        for (std::size_t i = 0; i < document_.columns.size(); ++i) {
            const Column& column = document_.columns[i];
            const auto value = cellValue(column, dictation);
            const bool written =
                value &&
                std::visit([&](const auto& v) { return writeValue(row + 1, i, v); }, *value);
            if (!written)
                writeText(row + 1, i, cellText(column, dictation), CellStyle::text);
        }
    }

    bool finish() { return file_->close() && module_.isWhole(native_, cells_); }

private:
    bool writeValue(std::int64_t row, std::size_t column, const modDictation::DateSerial& date) {
        if (date.day < firstSafeDay)
            return false;
        return writeNumber(row, column, daysOf(date),
                           date.hasTime ? CellStyle::dateTime : CellStyle::date);
    }
    bool writeValue(std::int64_t row, std::size_t column, modDictation::Seconds seconds) {
        return writeNumber(row, column,
                           seconds.count / static_cast<double>(modDictation::secondsPerDay),
                           CellStyle::length);
    }
    bool writeValue(std::int64_t row, std::size_t column, std::int64_t number) {
        return writeNumber(row, column, static_cast<double>(number), CellStyle::plain);
    }
    bool writeNumber(std::int64_t row, std::size_t column, double number, CellStyle style) {
        file_->writeNumber(row, column, number, style);
        cells_.addNumber();
        return true;
    }
    void writeText(std::int64_t row, std::size_t column, const std::string& text, CellStyle style) {
        if (text.empty())
            return;
        const std::string stored = sheetText(text);
        file_->writeText(row, column, stored, style);
        cells_.addText(stored);
    }

    const SheetModule& module_;
    const Document& document_;
    std::string native_;
    std::unique_ptr<SheetFile> file_;
    CellSum cells_;
};

platform::Status failure(const std::string& shown) {
    const int number = reason();
    return {number, shown,
            number != EIO ? std::generic_category().message(number)
                          : modLanguage::GetText(text_id::exportIncomplete)};
}

} // namespace

platform::Status writeWorkbook(const Document& document, const RowSource& rows,
                               const std::string& native, const std::string& shown,
                               const GoOn& goOn, bool& stopped) {
    stopped = false;
    platform::Status loaded;
    const auto* module = platform::loadModule<SheetModule>(loaded);
    if (module == nullptr)
        return loaded;
    errno = 0;
    Workbook book(*module, document, native);
    if (book.failed())
        return failure(shown);
    book.writeCaptions(rows.count());
    for (std::int64_t row = 0; row < rows.count() && !book.failed(); ++row) {
        book.write(row, rows.dictation(row));
        if (!goOn(row + 1)) {
            stopped = true;
            return {};
        }
    }
    return book.finish() ? platform::Status() : failure(shown);
}

} // namespace ov::exporting
