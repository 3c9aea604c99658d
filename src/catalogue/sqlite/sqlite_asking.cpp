// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "catalogue/sql/question_text.h"
#include "catalogue/sqlite/sqlite_catalogue.h"
#include "catalogue/sqlite/tables.h"
#include "platform/files.h"
#include "platform/loaded_module.h"

#include <algorithm>
#include <utility>

// How it is opened and asked.

namespace ov::catalogue::loaded {

using platform::Status;
using sql::QuestionText;

namespace {

constexpr sql::Dialect dialect;

constexpr std::size_t mostFew = 1'000'000; // sixteen megabytes

// The file and those beside it.
Status ofEach(const std::string& native, Status (*check)(std::string_view path)) {
    for (const char* const part : {"", "-wal", "-shm", "-update"})
        if (Status status = check(platform::fromNativePath(native + part)); !status.ok())
            return status;
    return {};
}

} // namespace

// Until it is known to be a catalogue nothing of it is changed: it may be anything.
std::unique_ptr<Catalogue> SqliteCatalogue::open(const std::string& native,
                                                 catalogue::Access access, Status& status) {
    const bool isForUpdate = access == catalogue::Access::update;
    std::unique_ptr<SqliteCatalogue> opened(new SqliteCatalogue(native));
    Database& database = opened->database_;
    if (status = ofEach(native, platform::refuseForeign); !status.ok())
        return nullptr;
    database.open(native, isForUpdate);
    database.stopWhen([opened = opened.get()] { return opened->isOver(); });
    status = prepareTables(database, native, isForUpdate);
    if (status.ok())
        status = ofEach(native, platform::keepToOwner);
    // Nothing is lost with a program that is killed; the last moments may be with a power failure,
    // and the next update brings them back. The usual cache is small: indexes are sorted in parts
    // of its size, which should fit the processor's.
    if (status.ok() && isForUpdate)
        database.run("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL;"
                     "PRAGMA secure_delete = ON;");
    if (status.ok())
        status = database.take();
    return status.ok() ? std::move(opened) : nullptr;
}

std::unique_ptr<sql::Rows> SqliteCatalogue::ask(const std::string& sql, const sql::Values& values) {
    auto query = std::make_unique<Query>(database_, sql);
    query->bind(values);
    return query;
}

Catalogue::Status SqliteCatalogue::takeError() {
    return database_.take();
}

Catalogue::Status SqliteCatalogue::begin() {
    toldFolder_ = 0;
    database_.run("BEGIN");
    return database_.take();
}

void SqliteCatalogue::end() {
    database_.run("COMMIT");
    static_cast<void>(database_.take()); // nothing was written
}

Catalogue::Status SqliteCatalogue::size(std::int64_t& bytes) {
    bytes = Query(database_, "SELECT page_count * page_size FROM pragma_page_count(),"
                             " pragma_page_size()")
                .only();
    return database_.take();
}

Catalogue::Status SqliteCatalogue::names(std::int64_t folder, std::vector<std::string>& names) {
    Query row(database_, "SELECT name FROM names WHERE id BETWEEN ? AND ? ORDER BY id");
    row.bind(dictationId(folder, 0)).bind(dictationId(folder, mostPositions - 1));
    while (row.step())
        names.emplace_back(row.bytes(0));
    return database_.take();
}

Catalogue::Status SqliteCatalogue::positions(std::int64_t folder,
                                             std::vector<std::int64_t>& positions) {
    Query row(database_, "SELECT id FROM names WHERE id BETWEEN ? AND ? ORDER BY id");
    row.bind(dictationId(folder, 0)).bind(dictationId(folder, mostPositions - 1));
    while (row.step())
        positions.push_back(row.number(0) - dictationId(folder, 0));
    return database_.take();
}

Catalogue::Status SqliteCatalogue::candidates(std::int64_t store, const Question& question,
                                              const Taker& take) {
    const Reach reach = reachOf(store, question);
    const QuestionText text(question, dialect);
    return question.isNarrow() ? few(reach, text, take) : many(reach, text, take);
}

// An index finds them, in no order; where they are many after all they are not collected.
Catalogue::Status SqliteCatalogue::few(const Reach& reach, const QuestionText& text,
                                       const Taker& take) {
    std::vector<std::pair<std::int64_t, std::int64_t>> found; // place, id
    {
        Query row(database_, "SELECT f.place, d.id FROM dictations d CROSS JOIN folders f"
                             " ON f.id = d.id >> " +
                                 std::to_string(positionBits) + " WHERE" + reached(reach) +
                                 "AND (" + text.sql() + ")");
        row.bind(valuesOf(reach)).bind(text.values());
        while (row.step() && found.size() <= mostFew)
            found.emplace_back(row.number(0), row.number(1));
    }
    if (found.size() > mostFew)
        return many(reach, text, take);
    std::ranges::sort(found);
    for (const auto& [place, id] : found)
        if (!tell(id, 1, take))
            break;
    return database_.take();
}

// Folder by folder, as they lie.
Catalogue::Status SqliteCatalogue::many(const Reach& reach, const QuestionText& text,
                                        const Taker& take) {
    const std::string bits = std::to_string(positionBits);
    Query row(database_, "SELECT f.path, n.name FROM folders f"
                         " CROSS JOIN dictations d ON d.id BETWEEN f.id << " +
                             bits + " AND ((f.id + 1) << " + bits +
                             ") - 1"
                             " CROSS JOIN names n ON n.id = d.id WHERE" +
                             reached(reach) + "AND (" + text.sql() + ") ORDER BY f.place, d.id");
    row.bind(valuesOf(reach)).bind(text.values());
    while (row.step())
        if (!take({row.bytes(0), row.bytes(1)}, 1))
            break;
    return database_.take();
}

bool SqliteCatalogue::tell(std::int64_t dictation, std::int64_t count, const Taker& take) {
    if (folderOf(dictation) != toldFolder_) {
        Query row(database_, "SELECT path FROM folders WHERE id = ?");
        row.bind(folderOf(dictation));
        toldPath_ = row.step() ? row.bytes(0) : std::string_view();
        toldFolder_ = folderOf(dictation);
    }
    Query row(database_, "SELECT name FROM names WHERE id = ?");
    return row.bind(dictation).step() && take({toldPath_, row.bytes(0)}, count);
}

Catalogue::Status SqliteCatalogue::counts(std::int64_t store, const Question& question,
                                          std::optional<std::size_t> column, const Taker& take) {
    const Reach reach = reachOf(store, question);
    const QuestionText text(question, dialect);
    const std::string name = column ? "d." + std::string(keptColumns()[*column].name) : "0";
    const bool asksFolders = text.asksFolders() || !reach.isWhole;
    const std::string which =
        (asksFolders ? " FROM dictations d CROSS JOIN folders f ON f.id = d.id >> " +
                           std::to_string(positionBits) + " WHERE" + reached(reach) + "AND ("
                     : " FROM dictations d WHERE (") +
        text.sql() + ")";
    const auto askEach = [&](const std::string& sql, const auto& each) {
        Query row(database_, sql);
        if (asksFolders)
            row.bind(valuesOf(reach));
        row.bind(text.values());
        while (row.step() && each(row))
            ;
    };
    bool hasOthers = false;
    // Of which dictation the id is SQLite chooses, in half the time that the first one takes.
    askEach("SELECT " + name + ", count(*), d.id" + which + " GROUP BY 1", [&](const Query& row) {
        const bool isOther = column && row.number(0) == kept::other;
        hasOthers = hasOthers || isOther;
        return isOther || tell(row.number(2), row.number(1), take);
    });
    if (hasOthers)
        askEach("SELECT d.id" + which + " AND " + name + " = " + std::to_string(kept::other),
                [&](const Query& row) { return tell(row.number(0), 1, take); });
    return database_.take();
}

} // namespace ov::catalogue::loaded

const void* ovsearchModule(const char* version) {
    static constexpr ov::catalogue::SqliteModule module{
        ov::catalogue::loaded::SqliteCatalogue::open};
    return ov::platform::isModuleVersion(version) ? &module : nullptr;
}
