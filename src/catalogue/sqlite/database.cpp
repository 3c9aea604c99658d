// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/sqlite/database.h"

#include "platform/threads/coarse_clock.h"

#include <cerrno>
#include <sqlite3.h>
#include <thread>
#include <utility>

namespace ov::catalogue::loaded {

namespace {

int errorNumber(int code) noexcept {
    switch (code & 0xFF) {
    case SQLITE_INTERRUPT:
        return ECANCELED;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return EBUSY;
    case SQLITE_FULL:
        return ENOSPC;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return EACCES;
    case SQLITE_READONLY:
        return EROFS;
    case SQLITE_NOMEM:
        return ENOMEM;
    default:
        return EIO;
    }
}

const char* sentence(int code) noexcept {
    switch (code & 0xFF) {
    case SQLITE_INTERRUPT:
        return "stopped";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "another program keeps the catalogue locked; try again later";
    case SQLITE_FULL:
        return "there is no room for the catalogue on the disk";
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return "the catalogue cannot be opened";
    case SQLITE_READONLY:
        return "the catalogue may not be written";
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return "is no catalogue, or a damaged one";
    default:
        return "the catalogue cannot be read";
    }
}

} // namespace

Database::~Database() {
    for (const auto& [sql, statement] : statements_)
        sqlite3_finalize(statement);
    sqlite3_close(database_);
}

void Database::open(const std::string& native, bool forWriting) {
    native_ = native;
    const int flags = (forWriting ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) |
                      SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    if (const int code = sqlite3_open_v2(native.c_str(), &database_, flags, nullptr);
        code != SQLITE_OK)
        return fail(code);
    constexpr int steps = 4000; // some fifty microseconds
    sqlite3_busy_handler(database_, onBusy, this);
    sqlite3_progress_handler(database_, steps, onProgress, this);
}

// A hundred times a second at most.
int Database::onProgress(void* database) {
    constexpr std::int64_t intervalMs = 10;
    Database& self = *static_cast<Database*>(database);
    const std::int64_t now = platform::coarseMilliseconds();
    if (now < self.asked_ + intervalMs)
        return 0;
    self.asked_ = now;
    return self.isOver_ && self.isOver_() ? 1 : 0;
}

int Database::onBusy(void* database, int times) {
    constexpr std::chrono::milliseconds pause{10};
    Database& self = *static_cast<Database*>(database);
    if (times * pause >= self.patience_ || (self.isOver_ && self.isOver_()))
        return 0;
    std::this_thread::sleep_for(pause);
    return 1;
}

bool Database::endsQuietly(int code, sqlite3_stmt* statement) const {
    return (code & 0xFF) == SQLITE_INTERRUPT && sqlite3_stmt_readonly(statement) != 0 &&
           sqlite3_txn_state(database_, "main") != SQLITE_TXN_WRITE;
}

void Database::fail(int code) {
    if (failed())
        return;
    std::string text = sentence(code);
    if ((code & 0xFF) == SQLITE_ERROR || (code & 0xFF) == SQLITE_IOERR)
        text.append(" (").append(sqlite3_errmsg(database_)).append(")");
    if ((code & 0xFF) == SQLITE_CORRUPT && mayBeRemoved_)
        text = "the catalogue is damaged; remove it and update it anew";
    error_ = platform::Status(errorNumber(code), native_, std::move(text));
}

platform::Status Database::take() {
    return std::exchange(error_, {});
}

sqlite3_stmt* Database::prepare(const std::string& sql) {
    if (failed())
        return nullptr;
    sqlite3_stmt*& known = statements_[sql];
    if (known != nullptr)
        return known;
    const int code = sqlite3_prepare_v3(database_, sql.c_str(), static_cast<int>(sql.size() + 1),
                                        SQLITE_PREPARE_PERSISTENT, &known, nullptr);
    if (code != SQLITE_OK)
        fail(code);
    return known;
}

void Database::run(const char* sql) {
    if (failed())
        return;
    if (const int code = sqlite3_exec(database_, sql, nullptr, nullptr, nullptr); code != SQLITE_OK)
        fail(code);
}

std::int64_t Database::changedRows() const {
    return sqlite3_changes64(database_);
}

Query::~Query() {
    if (statement_ != nullptr)
        sqlite3_reset(statement_);
}

Query& Query::bind(std::int64_t value) {
    if (statement_ != nullptr)
        sqlite3_bind_int64(statement_, ++bound_, value);
    return *this;
}

// As bytes: no encoding and no collation has a say in what is equal.
Query& Query::bind(std::string_view bytes) {
    const char* const data = bytes.empty() ? "" : bytes.data(); // nullptr would be no value
    if (statement_ != nullptr)
        sqlite3_bind_blob64(statement_, ++bound_, data, bytes.size(), SQLITE_STATIC);
    return *this;
}

Query& Query::bind(const sql::Values& values) {
    for (const sql::Value& value : values)
        if (const auto* number = std::get_if<std::int64_t>(&value))
            bind(*number);
        else if (const auto* bytes = std::get_if<sql::Bytes>(&value))
            bind(bytes->of);
        else
            bind(std::get<sql::Text>(value).of);
    return *this;
}

Query& Query::bindNothing() {
    if (statement_ != nullptr)
        sqlite3_bind_null(statement_, ++bound_);
    return *this;
}

bool Query::step() {
    if (statement_ == nullptr || database_.failed())
        return false;
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE && !database_.endsQuietly(code, statement_))
        database_.fail(code);
    return code == SQLITE_ROW;
}

std::int64_t Query::number(int column) const {
    return sqlite3_column_int64(statement_, column);
}

std::string_view Query::bytes(int column) const {
    const void* const data = sqlite3_column_blob(statement_, column);
    const int size = sqlite3_column_bytes(statement_, column);
    return {static_cast<const char*>(data), data == nullptr ? 0 : static_cast<std::size_t>(size)};
}

} // namespace ov::catalogue::loaded
