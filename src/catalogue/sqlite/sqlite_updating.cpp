// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "catalogue/sqlite/sqlite_catalogue.h"
#include "catalogue/sqlite/tables.h"
#include "dictation/dictation_record.h"
#include "platform/text.h"

#include <algorithm>
#include <cerrno>
#include <sqlite3.h>
#include <system_error>
#include <utility>

// How it is updated.

namespace ov::catalogue::loaded {

using platform::Status;

namespace {

// Of a statement that adds a row.
std::string sqlOfNumbers() {
    std::string columns;
    std::string values;
    for (const KeptColumn& column : keptColumns()) {
        columns.append(", ").append(column.name);
        values.append(", ?");
    }
    return "INSERT INTO dictations (id" + columns + ") VALUES (?" + values + ")";
}

std::string sqlOfFolder(bool isNew) {
    constexpr const char* columns =
        "(store, path, upper, depth, place, device, file, modified, changed, first_seen, settled,"
        " digest, dictations, skipped, problem)";
    constexpr const char* values = " (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";
    return isNew ? std::string("INSERT INTO folders ") + columns + " VALUES" + values
                 : std::string("UPDATE folders SET ") + columns + " =" + values + " WHERE id = ?";
}

} // namespace

Status SqliteCatalogue::lockForUpdate() {
    Status status = lock_.take(platform::fromNativePath(native_ + "-update"));
    if (status.number() == static_cast<int>(std::errc::operation_would_block))
        status = {EBUSY, native_, "another program is updating it; try again when that is through"};
    return status;
}

void SqliteCatalogue::startWriting() {
    if (isWriting_)
        return;
    database_.run("BEGIN IMMEDIATE");
    isWriting_ = !database_.failed();
}

Status SqliteCatalogue::commit() {
    if (isWriting_)
        database_.run("COMMIT");
    Status status = database_.error();
    if (status.ok())
        isWriting_ = false;
    else
        rollBack();
    return status;
}

void SqliteCatalogue::rollBack() {
    static_cast<void>(database_.take());
    if (std::exchange(isWriting_, false))
        database_.run("ROLLBACK");
    static_cast<void>(database_.take()); // it may be rolled back already
}

Status SqliteCatalogue::putStore(Store& store) {
    startWriting();
    Query(database_, "INSERT INTO stores (root, as_of, begun) VALUES (?, ?, ?) ON CONFLICT (root)"
                     " DO UPDATE SET as_of = excluded.as_of, begun = excluded.begun")
        .bind(store.root)
        .bind(store.asOf)
        .bind(store.begun)
        .step();
    store.id = Query(database_, "SELECT id FROM stores WHERE root = ?").bind(store.root).only();
    return database_.error();
}

Status SqliteCatalogue::putFolder(std::int64_t store, Folder& folder) {
    startWriting();
    const bool isNew = folder.id == 0;
    const std::string upper = platform::upperCase(modDictation::GetDirectoryText(folder.path));
    {
        Query query(database_, sqlOfFolder(isNew));
        query.bind(store).bind(folder.path).bind(upper).bind(folder.depth).bind(folder.place);
        query.bind(static_cast<std::int64_t>(folder.stamp.id.device))
            .bind(static_cast<std::int64_t>(folder.stamp.id.file))
            .bind(folder.stamp.modified)
            .bind(folder.stamp.changed)
            .bind(folder.firstSeen)
            .bind(static_cast<std::int64_t>(folder.settled))
            .bind(static_cast<std::int64_t>(folder.digest))
            .bind(folder.dictations)
            .bind(folder.skipped)
            .bind(folder.problem);
        if (!isNew)
            query.bind(folder.id);
        query.step();
    }
    if (isNew)
        folder.id = Query(database_, "SELECT last_insert_rowid()").only();
    return database_.error();
}

Status SqliteCatalogue::removeDictations(std::int64_t folder) {
    startWriting();
    for (const char* const table : {"dictations", "names"})
        Query(database_, std::string("DELETE FROM ") + table + " WHERE id BETWEEN ? AND ?")
            .bind(dictationId(folder, 0))
            .bind(dictationId(folder, mostPositions - 1))
            .step();
    Query(database_, "UPDATE due SET removed = removed + changes()").step();
    hasChanged_ = true;
    return database_.error();
}

Status SqliteCatalogue::removeDictations(std::int64_t folder,
                                         const std::vector<std::int64_t>& positions) {
    startWriting();
    for (const char* const table : {"dictations", "names"})
        for (const std::int64_t position : positions)
            Query(database_, std::string("DELETE FROM ") + table + " WHERE id = ?")
                .bind(dictationId(folder, position))
                .step();
    Query(database_, "UPDATE due SET removed = removed + ?")
        .bind(static_cast<std::int64_t>(positions.size()))
        .step();
    hasChanged_ = true;
    return database_.error();
}

Status SqliteCatalogue::removeFolder(std::int64_t folder) {
    if (Status status = removeDictations(folder); !status.ok())
        return status;
    Query(database_, "DELETE FROM folders WHERE id = ?").bind(folder).step();
    return database_.error();
}

Status SqliteCatalogue::removeStore(std::int64_t store) {
    std::vector<Folder> all;
    if (Status status = folders(store, all); !status.ok())
        return status;
    startWriting();
    for (const Folder& folder : all)
        if (Status status = removeFolder(folder.id); !status.ok())
            return status;
    Query(database_, "DELETE FROM stores WHERE id = ?").bind(store).step();
    return database_.error();
}

// By number: those that a dictation refers to.
std::vector<bool> SqliteCatalogue::usedTexts() {
    std::string columns;
    int count = 0;
    for (const KeptColumn& column : keptColumns())
        if (column.keeping == Keeping::text)
            columns.append(count++ > 0 ? ", " : "").append(column.name);
    const std::int64_t last = Query(database_, "SELECT max(number) FROM texts").only();
    if (constexpr std::int64_t most = std::int64_t{1} << 33; last < 0 || last > most) {
        database_.fail(SQLITE_CORRUPT);
        return {};
    }
    std::vector<bool> used(static_cast<std::size_t>(last) + 1);
    Query row(database_, "SELECT " + columns + " FROM dictations");
    while (row.step())
        for (int i = 0; i < count; ++i)
            if (const std::int64_t number = row.number(i); number > kept::first && number <= last)
                used[static_cast<std::size_t>(number)] = true;
    return used;
}

// What nothing refers to any more is not to be found in the file either.
Status SqliteCatalogue::removeUnusedTexts() {
    if (Query(database_, "SELECT removed FROM due").only() == 0)
        return database_.error();
    startWriting();
    const std::vector<bool> used = usedTexts();
    database_.run("CREATE TEMP TABLE IF NOT EXISTS unused (number INTEGER PRIMARY KEY)");
    {
        Query row(database_, "SELECT number FROM texts");
        while (row.step())
            if (const std::int64_t number = row.number(0);
                number >= 0 && !used.at(static_cast<std::size_t>(number)))
                Query(database_, "INSERT OR IGNORE INTO temp.unused VALUES (?)")
                    .bind(number)
                    .step();
    }
    Query(database_, "DELETE FROM texts WHERE number IN (SELECT number FROM temp.unused)").step();
    database_.run("DELETE FROM temp.unused; UPDATE due SET removed = 0");
    return commit();
}

Status SqliteCatalogue::addDictation(std::int64_t folder, std::int64_t position,
                                     std::string_view name, const KeptValues& values) {
    startWriting();
    hasChanged_ = true;
    if (position >= mostPositions)
        return {EFBIG, native_, "a folder has too many dictations for a catalogue"};
    if (addName_ == nullptr) {
        addName_ = database_.prepare("INSERT INTO names (id, name) VALUES (?, ?)");
        addNumbers_ = database_.prepare(sqlOfNumbers());
    }
    const std::int64_t id = dictationId(folder, position);
    Query(database_, addName_).bind(id).bind(name).step();
    Query numbers(database_, addNumbers_);
    numbers.bind(id);
    for (std::size_t i = 0; i < columnCount; ++i) {
        const std::int64_t number = values.numbers[i];
        if (keptColumns()[i].keeping != Keeping::ownText)
            numbers.bind(number);
        else if (number == kept::absent)
            numbers.bindNothing();
        else
            numbers.bind(values.ownText);
    }
    numbers.step();
    return database_.error();
}

// Twice, as no two may have the same one in between.
Status SqliteCatalogue::setPlaces(const std::vector<Folder>& folders) {
    startWriting();
    for (const bool isAside : {true, false})
        for (const Folder& folder : folders)
            Query(database_, "UPDATE folders SET place = ? WHERE id = ?")
                .bind(isAside ? -1 - folder.place : folder.place)
                .bind(folder.id)
                .step();
    return database_.error();
}

std::int64_t SqliteCatalogue::numberOfText(std::int64_t /*ward*/, std::int32_t field,
                                           std::string_view upper, std::string_view text) {
    startWriting();
    if (lastText_ == 0)
        lastText_ = std::max(kept::first, Query(database_, "SELECT max(number) FROM texts").only());
    if (addText_ == nullptr) {
        addText_ = database_.prepare("INSERT OR IGNORE INTO texts (field, upper, text, number)"
                                     " VALUES (?, ?, ?, ?)");
        findText_ = database_.prepare("SELECT number FROM texts WHERE field = ? AND upper = ?"
                                      " AND text = ?");
    }
    // Most that are asked for are new.
    Query(database_, addText_).bind(field).bind(upper).bind(text).bind(lastText_ + 1).step();
    if (!database_.failed() && database_.changedRows() == 1)
        return ++lastText_;
    return Query(database_, findText_).bind(field).bind(upper).bind(text).only();
}

// The file of what was written ahead has removed names in it too: it is emptied, unless somebody
// asks for longer than that.
Status SqliteCatalogue::tidy(bool isSmall) {
    constexpr std::chrono::milliseconds untilReadersAreGone{500};
    makeIndexes(database_);
    Status status = isSmall ? database_.take() : removeUnusedTexts();
    if (!isSmall && status.ok()) {
        const bool isAnalysed =
            Query(database_, "SELECT count(*) FROM sqlite_schema WHERE name = 'sqlite_stat1'")
                .only() > 0;
        if (std::exchange(hasChanged_, false) || !isAnalysed)
            database_.run("PRAGMA analysis_limit = 1000; ANALYZE;");
        const std::int64_t unused = Query(database_, "PRAGMA freelist_count").only();
        if (unused > Query(database_, "PRAGMA page_count").only() / 4)
            database_.run("VACUUM");
    }
    if (status.ok())
        status = database_.take();
    rollBack();
    database_.setPatience(untilReadersAreGone);
    database_.run("PRAGMA wal_checkpoint(TRUNCATE)");
    database_.setPatience(Database::usualPatience);
    Status emptied = database_.take();
    return status.ok() ? emptied : status;
}

} // namespace ov::catalogue::loaded
