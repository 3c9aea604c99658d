// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "catalogue/postgres/postgres_catalogue.h"
#include "catalogue/postgres/postgres_tables.h"
#include "catalogue/sql/question_text.h"
#include "platform/loaded_module.h"

#include <algorithm>

// How it is opened and asked.

namespace ov::catalogue::loaded {

using sql::QuestionText;

namespace {

constexpr sql::Dialect dialect{"pg_catalog.position", true,
                               "ward = ANY (ARRAY(SELECT id FROM wards)) AND "};

} // namespace

PostgresCatalogue::PostgresCatalogue(Address address, catalogue::Access access)
    : access_(access), connection_(std::move(address)) {
    connection_.stopWhen([this] { return isOver(); }, access == catalogue::Access::update);
}

std::unique_ptr<Catalogue> PostgresCatalogue::open(const std::string& server,
                                                   catalogue::Access access, Status& status) {
    auto address = addressOf(server, status);
    if (!address)
        return nullptr;
    std::unique_ptr<PostgresCatalogue> opened(new PostgresCatalogue(std::move(*address), access));
    opened->openConnection();
    if (status = opened->connection_.take(); status.ok())
        status = prepareServerTables(opened->connection_, access == catalogue::Access::update);
    return status.ok() ? std::move(opened) : nullptr;
}

void PostgresCatalogue::openConnection() {
    connection_.open(setUpOf(access_ == catalogue::Access::update));
}

// What nothing was begun for, and a server that was restarted since, is asked once more.
template <typename Act>
void PostgresCatalogue::tryTwice(const Act& act) {
    act();
    if (connection_.isOpen() || connection_.isGivenUp() || isInside_ || isWriting_)
        return;
    static_cast<void>(connection_.take());
    openConnection();
    act();
}

std::unique_ptr<sql::Rows> PostgresCatalogue::ask(const std::string& sql,
                                                  const sql::Values& values) {
    std::unique_ptr<sql::Rows> rows;
    tryTwice([&] { rows.reset(new Answer(connection_.ask(sql, Parameters(values)))); });
    return rows;
}

Catalogue::Status PostgresCatalogue::begin() {
    tryTwice([this] { connection_.run("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"); });
    isInside_ = !connection_.failed();
    return connection_.take();
}

void PostgresCatalogue::end() {
    isInside_ = false;
    connection_.run("ROLLBACK"); // nothing was written
    static_cast<void>(connection_.take());
}

Catalogue::Status PostgresCatalogue::size(std::int64_t& bytes) {
    bytes = connection_
                .ask("SELECT CAST(sum(pg_total_relation_size(oid)) AS bigint) FROM pg_class"
                     " WHERE relnamespace = to_regnamespace('ovsearch') AND relkind = 'r'")
                .only();
    return connection_.take();
}

Catalogue::Status PostgresCatalogue::names(std::int64_t folder, std::vector<std::string>& names) {
    const auto row =
        ask("SELECT name FROM dictations WHERE folder = ? ORDER BY position", {folder});
    while (row->step())
        names.emplace_back(row->bytes(0));
    return connection_.take();
}

Catalogue::Status PostgresCatalogue::positions(std::int64_t folder,
                                               std::vector<std::int64_t>& positions) {
    const auto row =
        ask("SELECT position FROM dictations WHERE folder = ? ORDER BY position", {folder});
    while (row->step())
        positions.push_back(row->number(0));
    return connection_.take();
}

// By a cursor, so that the first are there at once and never all of them.
Catalogue::Status PostgresCatalogue::tellAll(const std::string& sql, const sql::Values& values,
                                             const Taker& take) {
    constexpr int mostAtOnce = 10'000;
    const bool isAlone = !isInside_ && !isWriting_;
    if (Status begun = isAlone ? begin() : Status(); !begun.ok())
        return begun;
    connection_.ask("DECLARE hits NO SCROLL CURSOR FOR " + sql, Parameters(values));
    bool goesOn = true;
    for (int count = 500; goesOn; count = std::min(2 * count, mostAtOnce)) {
        Answer row = connection_.ask("FETCH " + std::to_string(count) + " FROM hits");
        while (goesOn && row.step())
            goesOn = take({row.bytes(0), row.bytes(1)}, row.number(2));
        goesOn = goesOn && row.count() == count;
    }
    if (!connection_.isGivenUp())
        connection_.run("CLOSE hits");
    Status status = connection_.take();
    if (isAlone)
        end();
    return status;
}

// Which texts meet a condition is known before the server plans how to find their dictations: how
// many these are decides on the best way by far.
Question PostgresCatalogue::lookedUp(Question question) {
    constexpr int most = 1'000; // of one condition
    std::size_t room = 20'000;  // of values that a statement takes
    for (auto& group : question.groups)
        for (Condition& condition : group) {
            if (!QuestionText::asksTexts(condition))
                continue;
            const QuestionText text(condition, dialect);
            std::vector<std::int64_t> numbers;
            const auto row = ask("SELECT number FROM texts WHERE " + text.sql() + " LIMIT " +
                                     std::to_string(most + 1),
                                 text.values());
            while (row->step())
                numbers.push_back(row->number(0));
            if (numbers.size() > std::min<std::size_t>(most, room))
                continue;
            room -= numbers.size();
            condition.test = Test::numbers;
            condition.numbers = std::move(numbers);
        }
    return question;
}

std::string PostgresCatalogue::indexedPath(const std::string& root) const {
    return root.size() > mostIndexedBytes
               ? "f.path"
               : "substr(f.path, 1, " + std::to_string(mostIndexedBytes) + ")";
}

// The server keeps the other rows back by itself, but how few are left it does not know when it
// plans. Nothing where it keeps none back.
std::vector<std::int64_t> PostgresCatalogue::wardsOf(std::int64_t store) {
    constexpr std::size_t most = 100;
    const auto row =
        ask("SELECT id FROM wards WHERE store = ? AND row_security_active('ovsearch.folders')"
            " AND NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'ovsearch_reader_of_all'"
            " AND pg_has_role(oid, 'USAGE')) LIMIT " +
                std::to_string(most + 1),
            {store});
    std::vector<std::int64_t> wards;
    while (row->step())
        wards.push_back(row->number(0));
    return wards.size() > most ? std::vector<std::int64_t>() : wards;
}

Catalogue::Status PostgresCatalogue::candidates(std::int64_t store, const Question& question,
                                                const Taker& take) {
    const Reach reach = reachOf(store, question);
    const Question asked = lookedUp(question);
    const QuestionText text(asked, dialect);
    sql::Values values = valuesOf(reach);
    values.insert(values.end(), text.values().begin(), text.values().end());
    return tellAll("SELECT f.path, d.name, 1 FROM folders f"
                   " JOIN dictations d ON d.folder = f.id WHERE" +
                       reached(reach) + "AND (" + text.sql() + ") ORDER BY f.place, d.position",
                   values, take);
}

Catalogue::Status PostgresCatalogue::counts(std::int64_t store, const Question& question,
                                            std::optional<std::size_t> column, const Taker& take) {
    const Reach reach = reachOf(store, question);
    const Question asked = lookedUp(question);
    const QuestionText text(asked, dialect);
    const std::string name = column ? "d." + std::string(keptColumns()[*column].name) : "0";
    const bool asksFolders = text.asksFolders() || !reach.isWhole;
    sql::Values values = asksFolders ? valuesOf(reach) : sql::Values();
    values.insert(values.end(), text.values().begin(), text.values().end());
    const std::string which =
        std::string(" FROM dictations d") +
        (asksFolders ? " JOIN folders f ON f.id = d.folder WHERE" + reached(reach) + "AND ("
                     : " WHERE (") +
        text.sql() + ")";
    const std::string isOther = name + " = " + std::to_string(kept::other);
    // Each of those that have none of their own is a group by itself.
    const std::string first = "min(CAST(d.folder AS bigint) << 32 | d.position)";
    const std::string key = "CASE WHEN " + isOther +
                            " THEN -1 - (CAST(d.folder AS bigint) << 32"
                            " | d.position) ELSE " +
                            name + " END";
    return tellAll("SELECT one.path, one.name, g.count FROM (SELECT count(*) AS count, " + first +
                       " AS first" + which + " GROUP BY " + (column ? key : "()") +
                       ") g CROSS JOIN LATERAL (SELECT f.path, d.name FROM dictations d JOIN"
                       " folders f ON f.id = d.folder WHERE d.folder = CAST(g.first >> 32 AS"
                       " integer) AND d.position = CAST(g.first & 4294967295 AS integer) LIMIT 1)"
                       " one",
                   values, take);
}

} // namespace ov::catalogue::loaded

const void* ovsearchModule(const char* version) {
    static constexpr ov::catalogue::PostgresModule module{
        ov::catalogue::loaded::PostgresCatalogue::open};
    return ov::platform::isModuleVersion(version) ? &module : nullptr;
}
