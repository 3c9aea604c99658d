// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/module/workbook.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>
#include <xlsxwriter.h>

namespace ov::exporting::loaded {

namespace {

class Workbook final : public SheetFile {
public:
    explicit Workbook(SheetSetup setup) : setup_(std::move(setup)) {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        options.tmpdir = setup_.directory.data();
        book_ = workbook_new_opt(setup_.native.c_str(), &options);
        sheet_ = workbook_add_worksheet(book_, setup_.name.empty() ? nullptr : setup_.name.c_str());
        format_set_bold(newFormat(CellStyle::caption));
        format_set_num_format(newFormat(CellStyle::date), setup_.dateFormat.c_str());
        format_set_num_format(newFormat(CellStyle::dateTime), setup_.dateTimeFormat.c_str());
        format_set_num_format(newFormat(CellStyle::length), "[hh]:mm:ss");
        // Stays text when somebody edits it.
        format_set_num_format(newFormat(CellStyle::text), "@");
    }
    ~Workbook() override {
        if (book_ != nullptr)
            lxw_workbook_free(book_);
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    void setWidth(std::size_t column, double width) override {
        const auto place = static_cast<lxw_col_t>(column);
        worksheet_set_column(sheet_, place, place, width, nullptr);
    }
    void fixCaptions(std::int64_t rows, std::size_t columns) override {
        worksheet_freeze_panes(sheet_, 1, 0);
        worksheet_repeat_rows(sheet_, 0, 0);
        worksheet_set_landscape(sheet_);
        worksheet_autofilter(sheet_, 0, 0, static_cast<lxw_row_t>(rows),
                             static_cast<lxw_col_t>(columns - 1));
    }
    void writeText(std::int64_t row, std::size_t column, const std::string& text,
                   CellStyle style) override {
        note(worksheet_write_string(sheet_, static_cast<lxw_row_t>(row),
                                    static_cast<lxw_col_t>(column), text.c_str(), format(style)));
    }
    void writeNumber(std::int64_t row, std::size_t column, double number,
                     CellStyle style) override {
        note(worksheet_write_number(sheet_, static_cast<lxw_row_t>(row),
                                    static_cast<lxw_col_t>(column), number, format(style)));
    }
    bool failed() override {
        if (sheet_ == nullptr ||
            (sheet_->optimize_tmpfile != nullptr && std::ferror(sheet_->optimize_tmpfile) != 0))
            note(LXW_ERROR_CREATING_TMPFILE);
        return error_ != LXW_NO_ERROR;
    }
    bool close() override {
        if (sheet_ != nullptr && sheet_->optimize_tmpfile != nullptr)
            static_cast<void>(std::fflush(sheet_->optimize_tmpfile));
        if (failed())
            return false;
        errno = 0;
        note(workbook_close(std::exchange(book_, nullptr)));
        return error_ == LXW_NO_ERROR;
    }

private:
    lxw_format*& format(CellStyle style) { return formats_[static_cast<std::size_t>(style)]; }
    lxw_format* newFormat(CellStyle style) { return format(style) = workbook_add_format(book_); }
    void note(lxw_error error) {
        if (error_ == LXW_NO_ERROR)
            error_ = error;
    }

    SheetSetup setup_;
    lxw_workbook* book_ = nullptr;
    lxw_worksheet* sheet_ = nullptr;
    std::array<lxw_format*, 6> formats_{}; // by CellStyle; nullptr for plain
    lxw_error error_ = LXW_NO_ERROR;
};

} // namespace

std::unique_ptr<SheetFile> createWorkbook(const SheetSetup& setup) {
    return std::make_unique<Workbook>(setup);
}

} // namespace ov::exporting::loaded
