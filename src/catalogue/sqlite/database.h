// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/sql/sql_database.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

// SQLite with errors that last: after the first one nothing is done any more until it was taken.

namespace ov::catalogue::loaded {

class Database {
public:
    Database() = default;
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void open(const std::string& native, bool forWriting);

    // As Catalogue has it; asked in statements and while another program is waited for.
    void stopWhen(std::function<bool()> isOver) { isOver_ = std::move(isOver); }
    static constexpr std::chrono::milliseconds usualPatience{10'000}; // commits of others are short
    // How long another program is waited for.
    void setPatience(std::chrono::milliseconds longest) noexcept { patience_ = longest; }

    // Whether one that is damaged holds nothing that cannot be had again.
    void setMayBeRemoved(bool mayBe) noexcept { mayBeRemoved_ = mayBe; }

    // Kept until the end, for one Query at a time; nullptr after an error.
    sqlite3_stmt* prepare(const std::string& sql);
    // Several statements, without values and rows.
    void run(const char* sql);

    // By the last statement.
    std::int64_t changedRows() const;

    bool failed() const noexcept { return !error_.ok(); }
    const platform::Status& error() const noexcept { return error_; }
    // Whether it may end early as if there were no more rows: not while anything is written.
    bool endsQuietly(int code, sqlite3_stmt* statement) const;
    // What the last call answered that is neither success nor a row.
    void fail(int code);
    // The first error since it was taken the last time.
    platform::Status take();

private:
    static int onProgress(void* database);
    static int onBusy(void* database, int times);

    std::string native_;
    sqlite3* database_ = nullptr;
    std::function<bool()> isOver_;
    std::chrono::milliseconds patience_ = usualPatience;
    bool mayBeRemoved_ = false;
    std::int64_t asked_ = 0; // coarse milliseconds
    std::unordered_map<std::string, sqlite3_stmt*> statements_;
    platform::Status error_;
};

// One use of a statement. Values are bound in their order, and must live as long; nothing is ever
// pasted into SQL.
class Query final : public sql::Rows {
public:
    Query(Database& database, sqlite3_stmt* statement)
        : database_(database), statement_(statement) {}
    Query(Database& database, const std::string& sql) : Query(database, database.prepare(sql)) {}
    ~Query() override;

    Query& bind(std::int64_t value);
    Query& bind(std::string_view bytes);
    Query& bind(const sql::Values& values);
    Query& bindNothing();

    bool step() override;
    std::int64_t number(int column) const override;
    std::string_view bytes(int column) const override;
    // The number in the first column of the first row; 0 without one.
    std::int64_t only() { return step() ? number(0) : 0; }

private:
    Database& database_;
    sqlite3_stmt* statement_;
    int bound_ = 0;
};

} // namespace ov::catalogue::loaded
