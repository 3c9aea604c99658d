// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/sqlite/tables.h"

#include "catalogue/kept_columns.h"
#include "catalogue/sql/tables_version.h"

#include <cerrno>
#include <string>

namespace ov::catalogue::loaded {

namespace {

// "OVSe": what tells our files from those of others.
constexpr std::int64_t applicationId = 0x4F565365;

// The version is a number of ours, and no value of anybody.
std::string tables() {
    std::string columns;
    for (const KeptColumn& column : keptColumns())
        columns.append(", ").append(column.name);
    return "CREATE TABLE stores (id INTEGER PRIMARY KEY, root BLOB NOT NULL UNIQUE,"
           " as_of INTEGER NOT NULL, begun INTEGER NOT NULL);"
           "CREATE TABLE folders (id INTEGER PRIMARY KEY, store INTEGER NOT NULL,"
           " path BLOB NOT NULL, upper BLOB NOT NULL, depth INTEGER NOT NULL,"
           " place INTEGER NOT NULL, device INTEGER NOT NULL, file INTEGER NOT NULL,"
           " modified INTEGER NOT NULL, changed INTEGER NOT NULL, first_seen INTEGER NOT NULL,"
           " settled INTEGER NOT NULL, digest INTEGER NOT NULL,"
           " dictations INTEGER NOT NULL, skipped INTEGER NOT NULL,"
           " problem BLOB NOT NULL);"
           "CREATE UNIQUE INDEX folders_by_place ON folders (store, place);"
           "CREATE TABLE dictations (id INTEGER PRIMARY KEY" +
           columns +
           ");"
           "CREATE TABLE names (id INTEGER PRIMARY KEY, name BLOB NOT NULL);"
           "CREATE TABLE texts (field INTEGER NOT NULL, upper BLOB NOT NULL, text BLOB NOT NULL,"
           " number INTEGER NOT NULL, PRIMARY KEY (field, upper, text)) WITHOUT ROWID;"
           "CREATE TABLE due (removed INTEGER NOT NULL);"
           "INSERT INTO due VALUES (0);"
           "PRAGMA application_id = " +
           std::to_string(applicationId) +
           ";"
           "PRAGMA user_version = " +
           std::to_string(tablesVersion) + ";";
}

} // namespace

platform::Status prepareTables(Database& database, const std::string& native, bool mayMake) {
    const auto ask = [&database](const char* sql) { return Query(database, sql).only(); };
    const auto isEmpty = [&ask] { return ask("SELECT count(*) FROM sqlite_schema") == 0; };
    const auto isMarked = [&ask] { return ask("PRAGMA application_id") == applicationId; };
    database.setMayBeRemoved(isMarked());
    if (mayMake && isEmpty()) { // else whoever is just updating it would have to be waited for
        // What is written in order is quicker in large pages.
        database.run("PRAGMA page_size = 16384");
        database.run("BEGIN IMMEDIATE");
        if (isEmpty() && !database.failed())
            database.run(tables().c_str());
        database.run("COMMIT");
    }
    const bool isOurs = isMarked();
    const std::int64_t version = ask("PRAGMA user_version");
    const bool isUnused = isEmpty();
    if (platform::Status error = database.take(); !error.ok())
        return error;
    if (isUnused)
        return {ENOENT, native, "is an empty catalogue; \"ovsearch catalogue update\" fills it"};
    return isOurs && version == tablesVersion
               ? platform::Status()
               : sql::otherVersion(native, isOurs ? version : 0, tablesVersion);
}

// That of the authors with the priority, which is asked for with them: then the table is not looked
// at. In the others it would tempt the planner to look for a priority alone.
void makeIndexes(Database& database) {
    database.run("CREATE INDEX IF NOT EXISTS folders_by_path ON folders (store, path)");
    database.run("CREATE INDEX IF NOT EXISTS folders_by_depth ON folders (store, depth)");
    database.run("CREATE INDEX IF NOT EXISTS folders_left_out ON folders (store)"
                 " WHERE skipped > 0 OR length(problem) > 0");
    for (const KeptColumn& column : keptColumns())
        if (column.hasIndex) {
            const std::string name(column.name);
            const bool isAuthor = column.field == modDictation::field_id::author;
            database.run(("CREATE INDEX IF NOT EXISTS dictations_by_" + name + " ON dictations (" +
                          name + (isAuthor ? ", priority)" : ")"))
                             .c_str());
        }
}

} // namespace ov::catalogue::loaded
