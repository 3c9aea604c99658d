// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/postgres/address.h"
#include "catalogue/postgres/binary.h"
#include "catalogue/sql/sql_database.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct pg_conn;
struct pg_result;

// libpq with errors that last: after the first one nothing is done any more until it was taken.

namespace ov::catalogue::loaded {

struct Forget {
    void operator()(pg_conn* connection) const noexcept;
    void operator()(pg_result* result) const noexcept;
};
using Result = std::unique_ptr<pg_result, Forget>;

// The values of one statement.
class Parameters {
public:
    Parameters() = default;
    explicit Parameters(const sql::Values& values);

    Parameters& add(std::int64_t value);
    Parameters& add(std::string_view bytes, unsigned bytesType = type::bytes);
    Parameters& add(const ArrayOf& array) { return add(array.bytes(), array.arrayType()); }

private:
    friend class Connection;
    std::vector<std::string> bytes_;
    std::vector<unsigned> types_;
};

// All rows of an answer; none of what has failed.
class Answer final : public sql::Rows {
public:
    explicit Answer(Result result);

    bool step() override { return ++row_ < count_; }
    std::int64_t number(int column) const override { return numberIn(bytes(column)); }
    std::string_view bytes(int column) const override;
    int count() const noexcept { return count_; }
    // The number in the first column of the first row; 0 without one.
    std::int64_t only() { return step() ? number(0) : 0; }

private:
    Result result_;
    int count_ = 0;
    int row_ = -1;
};

class Connection {
public:
    explicit Connection(Address address) : address_(std::move(address)) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() = default;

    // `setUp` is run at once. Again for one that was lost.
    void open(const std::string& setUp);
    bool isOpen() const noexcept;

    // Several statements, without values and rows.
    void run(const std::string& sql);
    // One, with "?" for each value.
    Answer ask(const std::string& sql, const Parameters& values = {});
    // "COPY ... FROM STDIN (FORMAT binary)", then its rows, then the end.
    void beginCopy(const std::string& sql);
    void copy(std::string_view bytes);
    void endCopy();

    // While it waits for an answer: once it says true the statement is given up, and all that is
    // asked in the same transaction. That counts as answers without rows or, where something is to
    // be written, as a failure. A server that does not even answer that is left.
    void stopWhen(std::function<bool()> isOver, bool isFailure) {
        isOver_ = std::move(isOver);
        isStopFailure_ = isFailure;
    }
    bool isGivenUp() const noexcept { return isGivenUp_; }

    bool failed() const noexcept { return !error_.ok(); }
    const platform::Status& error() const noexcept { return error_; }
    void fail(int number, std::string text);
    // The first error since it was taken the last time.
    platform::Status take();
    const std::string& name() const noexcept { return address_.name; }

private:
    bool waitOn(bool (*wait)(int socket, std::chrono::milliseconds longest));
    bool flush();
    Result await();
    Result checked(Result result);
    void giveUp();
    void failAs(const pg_result* result);
    void failToOpen();
    void failLost();
    void failStopped();

    const Address address_;
    std::unique_ptr<pg_conn, Forget> connection_;
    std::function<bool()> isOver_;
    bool isStopFailure_ = false;
    bool isGivenUp_ = false;
    std::chrono::steady_clock::time_point leaves_; // when it was given up
    platform::Status error_;
};

} // namespace ov::catalogue::loaded
