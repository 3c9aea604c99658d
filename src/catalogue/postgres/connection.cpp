// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/postgres/connection.h"

#include "catalogue/postgres/server_errors.h"
#include "platform/threads/errand.h"
#include "platform/threads/socket_wait.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <libpq-fe.h>
#include <utility>

namespace ov::catalogue::loaded {

namespace {

constexpr int binary = 1;

// "?" as the server wants it: "$1", "$2".
std::string numbered(const std::string& sql) {
    std::string out;
    int number = 0;
    for (const char c : sql)
        if (c == '?')
            out.append("$").append(std::to_string(++number));
        else
            out.push_back(c);
    return out;
}

// The messages of libpq have several lines.
std::string oneLine(std::string text) {
    std::erase(text, '\t');
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    std::ranges::replace(text, '\n', ' ');
    return text;
}

bool isPasswordOfEnvironment(const pg_conn& connection) {
    const char* const named = std::getenv("PGPASSWORD");
    const char* const used = PQpass(&connection);
    return named != nullptr && used != nullptr && PQconnectionUsedPassword(&connection) == 1 &&
           std::string_view(named) == used;
}

std::string_view fieldOf(const PGresult* result, int field) {
    const char* const text = PQresultErrorField(result, field);
    return text != nullptr ? text : "";
}

} // namespace

void Forget::operator()(pg_conn* connection) const noexcept {
    PQfinish(connection);
}

void Forget::operator()(pg_result* result) const noexcept {
    PQclear(result);
}

Parameters::Parameters(const sql::Values& values) {
    for (const sql::Value& value : values)
        if (const auto* number = std::get_if<std::int64_t>(&value))
            add(*number);
        else if (const auto* bytes = std::get_if<sql::Bytes>(&value))
            add(bytes->of);
        else
            add(std::get<sql::Text>(value).of, type::text);
}

Parameters& Parameters::add(std::int64_t value) {
    appendNumber(bytes_.emplace_back(), value);
    types_.push_back(type::int64);
    return *this;
}

Parameters& Parameters::add(std::string_view bytes, unsigned bytesType) {
    bytes_.emplace_back(bytes);
    types_.push_back(bytesType);
    return *this;
}

Answer::Answer(Result result) : result_(std::move(result)) {
    if (result_ != nullptr)
        count_ = PQntuples(result_.get());
}

std::string_view Answer::bytes(int column) const {
    return {PQgetvalue(result_.get(), row_, column),
            static_cast<std::size_t>(PQgetlength(result_.get(), row_, column))};
}

void Connection::open(const std::string& setUp) {
    std::vector<const char*> keywords;
    std::vector<const char*> values;
    for (const auto& [keyword, value] : address_.options) {
        keywords.push_back(keyword.c_str());
        values.push_back(value.c_str());
    }
    keywords.push_back(nullptr);
    values.push_back(nullptr);
    connection_.reset(PQconnectdbParams(keywords.data(), values.data(), 0));
    if (!isOpen())
        return failToOpen();
    if (isPasswordOfEnvironment(*connection_)) {
        connection_.reset();
        fail(EACCES, "passwords are taken from the password file only, not from PGPASSWORD, which"
                     " others may read");
        return;
    }
    PQsetNoticeProcessor(
        connection_.get(), [](void*, const char*) {}, nullptr);
    PQsetnonblocking(connection_.get(), 1); // flush() waits
    run(setUp);
}

// A password that is missing or wrong is no server that does not answer.
void Connection::failToOpen() {
    const bool isLocked = PQconnectionNeedsPassword(connection_.get()) == 1 ||
                          PQconnectionUsedPassword(connection_.get()) == 1;
    const std::string said = " (" + oneLine(PQerrorMessage(connection_.get())) + "); ";
    isLocked ? fail(EACCES, "the server does not let you in" + said +
                                "see your password file, or ask whoever runs the server")
             : fail(ENOTCONN, "the server cannot be reached" + said +
                                  "ask whoever runs it, or search without the catalogue");
}

bool Connection::isOpen() const noexcept {
    return PQstatus(connection_.get()) == CONNECTION_OK;
}

void Connection::fail(int number, std::string text) {
    if (!failed())
        error_ = platform::Status(number, name(), std::move(text));
}

platform::Status Connection::take() {
    return std::exchange(error_, {});
}

void Connection::failStopped() {
    if (isStopFailure_)
        fail(ECANCELED, "was stopped");
}

// Also one that was left, as it was given up and did not answer.
void Connection::failLost() {
    if (isGivenUp_)
        return failStopped();
    fail(ECONNRESET, "the connection to the server was lost; try again, or search without the "
                     "catalogue");
}

void Connection::failAs(const pg_result* result) {
    if (!isOpen())
        return failLost();
    ServerError error =
        serverError(fieldOf(result, PG_DIAG_SQLSTATE), fieldOf(result, PG_DIAG_MESSAGE_PRIMARY));
    fail(error.number, std::move(error.text));
}

// Nothing in place of what has failed.
Result Connection::checked(Result result) {
    switch (PQresultStatus(result.get())) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_COPY_IN:
        return result;
    default:
        break;
    }
    if (!isGivenUp_ || fieldOf(result.get(), PG_DIAG_SQLSTATE) != stateOfCancelled)
        failAs(result.get());
    else
        failStopped();
    return nullptr;
}

void Connection::run(const std::string& sql) {
    isGivenUp_ = false;
    if (failed())
        return;
    if (PQsendQuery(connection_.get(), sql.c_str()) == 0)
        return failLost();
    checked(await());
}

// A server that hangs does not take that up either.
void Connection::giveUp() {
    constexpr std::chrono::seconds longest{3};
    isGivenUp_ = true;
    leaves_ = std::chrono::steady_clock::now() + longest;
    const std::shared_ptr<PGcancel> cancel(PQgetCancel(connection_.get()), PQfreeCancel);
    const platform::Errand<int> errand([cancel] {
        std::array<char, 256> why{};
        return PQcancel(cancel.get(), why.data(), static_cast<int>(why.size()));
    });
}

// False once nothing more comes of it.
bool Connection::waitOn(bool (*wait)(int socket, std::chrono::milliseconds longest)) {
    constexpr std::chrono::milliseconds betweenLooks{50};
    if (wait(PQsocket(connection_.get()), betweenLooks))
        return PQconsumeInput(connection_.get()) != 0;
    if (!isGivenUp_ && isOver_ && isOver_())
        giveUp();
    else if (isGivenUp_ && std::chrono::steady_clock::now() > leaves_)
        connection_.reset();
    return isOpen();
}

// False when the connection was lost.
bool Connection::flush() {
    int left = 0;
    while ((left = PQflush(connection_.get())) > 0)
        if (!waitOn(platform::waitForInputOrRoom))
            break;
    return left == 0;
}

Result Connection::await() {
    flush(); // whether it could is told with the answer
    Result last;
    while (isOpen()) {
        while (PQisBusy(connection_.get()) != 0 && waitOn(platform::waitForInput))
            ;
        Result next(PQgetResult(connection_.get()));
        if (next == nullptr)
            break;
        last = std::move(next);
        if (PQresultStatus(last.get()) == PGRES_COPY_IN) // there is no end before the rows
            break;
    }
    return connection_ != nullptr ? std::move(last) : nullptr;
}

Answer Connection::ask(const std::string& sql, const Parameters& values) {
    isGivenUp_ = isGivenUp_ && PQtransactionStatus(connection_.get()) != PQTRANS_IDLE;
    if (failed() || isGivenUp_)
        return Answer(nullptr);
    std::vector<const char*> bytes;
    std::vector<int> lengths;
    for (const std::string& one : values.bytes_) {
        bytes.push_back(one.data());
        lengths.push_back(static_cast<int>(one.size()));
    }
    const std::vector<int> formats(bytes.size(), binary);
    if (PQsendQueryParams(connection_.get(), numbered(sql).c_str(), static_cast<int>(bytes.size()),
                          values.types_.data(), bytes.data(), lengths.data(), formats.data(),
                          binary) == 0) {
        failLost();
        return Answer(nullptr);
    }
    return Answer(checked(await()));
}

void Connection::beginCopy(const std::string& sql) {
    using namespace std::string_view_literals;
    run(sql);
    copy("PGCOPY\n\xff\r\n\0\0\0\0\0\0\0\0\0"sv); // then no flags and no extension
}

void Connection::copy(std::string_view bytes) {
    if (failed())
        return;
    if (PQputCopyData(connection_.get(), bytes.data(), static_cast<int>(bytes.size())) != 1 ||
        !flush())
        failLost();
}

void Connection::endCopy() {
    copy({"\xff\xff", 2});
    if (failed())
        return;
    if (PQputCopyEnd(connection_.get(), nullptr) != 1)
        return failLost();
    checked(await());
}

} // namespace ov::catalogue::loaded
