// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/xlsx_writer.h"

#include "export/cell.h"
#include "export/xlsx_check.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <type_traits>
#include <xlsxwriter.h>

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

class Workbook {
public:
    Workbook(const Document& document, const std::string& native, const std::string& shown)
        : document_(document),
          directory_(std::filesystem::path(native).parent_path().native()),
          native_(native),
          shown_(shown) {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        options.tmpdir = directory_.data(); // a full disk shall be the one that the user knows of
        book_ = workbook_new_opt(native.c_str(), &options);
        const std::string name = sheetName(document.sheetName);
        sheet_ = workbook_add_worksheet(book_, name.empty() ? nullptr : name.c_str());
        addFormats();
    }
    ~Workbook() {
        if (book_ != nullptr)
            lxw_workbook_free(book_);
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    void writeCaptions(std::int64_t rows) {
        for (std::size_t i = 0; i < document_.columns.size(); ++i) {
            const Column& column = document_.columns[i];
            const auto place = static_cast<lxw_col_t>(i);
            constexpr double twipsPerCharacter = 100;
            worksheet_set_column(sheet_, place, place,
                                 std::clamp(column.width / twipsPerCharacter, 8.0, 60.0), nullptr);
            writeText(0, place, column.caption, bold_);
        }
        if (document_.columns.empty())
            return;
        worksheet_freeze_panes(sheet_, 1, 0);
        worksheet_repeat_rows(sheet_, 0, 0);
        worksheet_set_landscape(sheet_);
        worksheet_autofilter(sheet_, 0, 0, static_cast<lxw_row_t>(rows),
                             static_cast<lxw_col_t>(document_.columns.size() - 1));
    }

    void write(std::int64_t row, const Dictation& dictation) {
        const auto line = static_cast<lxw_row_t>(row + 1);
        for (std::size_t i = 0; i < document_.columns.size(); ++i) {
            const Column& column = document_.columns[i];
            const auto place = static_cast<lxw_col_t>(i);
            const auto value = cellValue(column, dictation);
            const bool written =
                value &&
                std::visit([&](const auto& v) { return writeValue(line, place, v); }, *value);
            if (!written)
                writeText(line, place, cellText(column, dictation), text_);
        }
    }

    // What could not be written so far; rows are noticed when their buffer goes to the disk.
    bool failed() {
        if (sheet_ == nullptr ||
            (sheet_->optimize_tmpfile != nullptr && std::ferror(sheet_->optimize_tmpfile) != 0))
            note(LXW_ERROR_CREATING_TMPFILE);
        return error_ != LXW_NO_ERROR;
    }

    platform::Status finish() {
        if (sheet_ != nullptr && sheet_->optimize_tmpfile != nullptr)
            static_cast<void>(std::fflush(sheet_->optimize_tmpfile));
        if (failed())
            return status();
        errno = 0;
        note(workbook_close(std::exchange(book_, nullptr)));
        if (error_ == LXW_NO_ERROR && !isWholeWorkbook(native_, cells_))
            note(LXW_ERROR_ZIP_FILE_OPERATION);
        return status();
    }

    platform::Status status() const {
        if (error_ == LXW_NO_ERROR)
            return {};
        const int number = reason();
        return {number, shown_,
                number != EIO ? std::generic_category().message(number)
                              : modLanguage::GetText(text_id::exportIncomplete)};
    }

private:
    void addFormats() {
        bold_ = workbook_add_format(book_);
        format_set_bold(bold_);
        date_ = workbook_add_format(book_);
        format_set_num_format(date_, dateFormat().c_str());
        dateTime_ = workbook_add_format(book_);
        format_set_num_format(dateTime_, (dateFormat() + " hh:mm:ss").c_str());
        length_ = workbook_add_format(book_);
        format_set_num_format(length_, "[hh]:mm:ss");
        text_ = workbook_add_format(book_);
        format_set_num_format(text_, "@"); // stays text when somebody edits it
    }

    // The library does not say, and much else may have set the number.
    static int reason() {
        constexpr std::array known = {ENOSPC, EFBIG, EDQUOT, EACCES, EMFILE, ENFILE};
        return std::ranges::find(known, errno) != known.end() ? errno : EIO;
    }

    void note(lxw_error error) {
        if (error_ == LXW_NO_ERROR)
            error_ = error;
    }

    bool writeValue(lxw_row_t row, lxw_col_t column, const modDictation::DateSerial& date) {
        if (date.day < firstSafeDay)
            return false;
        return writeNumber(row, column, daysOf(date), date.hasTime ? dateTime_ : date_);
    }
    bool writeValue(lxw_row_t row, lxw_col_t column, modDictation::Seconds seconds) {
        return writeNumber(
            row, column, seconds.count / static_cast<double>(modDictation::secondsPerDay), length_);
    }
    bool writeValue(lxw_row_t row, lxw_col_t column, std::int64_t number) {
        return writeNumber(row, column, static_cast<double>(number), nullptr);
    }
    bool writeNumber(lxw_row_t row, lxw_col_t column, double number, lxw_format* format) {
        note(worksheet_write_number(sheet_, row, column, number, format));
        cells_.addNumber();
        return true;
    }
    void writeText(lxw_row_t row, lxw_col_t column, const std::string& text, lxw_format* format) {
        if (text.empty())
            return;
        const std::string stored = sheetText(text);
        note(worksheet_write_string(sheet_, row, column, stored.c_str(), format));
        cells_.addText(stored);
    }

    const Document& document_;
    std::string directory_;
    std::string native_;
    std::string shown_; // the name in messages
    lxw_workbook* book_ = nullptr;
    lxw_worksheet* sheet_ = nullptr;
    lxw_format* bold_ = nullptr;
    lxw_format* date_ = nullptr;
    lxw_format* dateTime_ = nullptr;
    lxw_format* length_ = nullptr;
    lxw_format* text_ = nullptr;
    lxw_error error_ = LXW_NO_ERROR;
    CellSum cells_;
};

} // namespace

platform::Status writeWorkbook(const Document& document, const RowSource& rows,
                               const std::string& native, const std::string& shown,
                               const GoOn& goOn, bool& stopped) {
    stopped = false;
    errno = 0;
    Workbook book(document, native, shown);
    if (book.failed())
        return book.status();
    book.writeCaptions(rows.count());
    for (std::int64_t row = 0; row < rows.count() && !book.failed(); ++row) {
        book.write(row, rows.dictation(row));
        if (!goOn(row + 1)) {
            stopped = true;
            return {};
        }
    }
    return book.finish();
}

} // namespace ov::exporting
