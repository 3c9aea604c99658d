// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/postgres/older_tables.h"

#include <cerrno>

namespace ov::catalogue::loaded {

void putOlderTablesAside(Connection& connection) {
    const bool isUpdated =
        connection
            .ask("SELECT count(*) FROM pg_locks l JOIN pg_database d ON d.oid = l.database WHERE"
                 " d.datname = current_database() AND l.locktype = 'advisory' AND"
                 " l.classid = 1331057509 AND l.objid <> 0 AND l.pid <> pg_backend_pid()")
            .only() != 0;
    if (isUpdated)
        connection.fail(EBUSY, "another program is updating it; try again when that is through");
    connection.run("ALTER TABLE ovsearch.stores RENAME TO older_stores;"
                   "ALTER TABLE ovsearch.wards RENAME TO older_wards;"
                   "ALTER TABLE ovsearch.ward_readers RENAME TO older_readers;"
                   "DROP TABLE ovsearch.about, ovsearch.folders, ovsearch.dictations,"
                   " ovsearch.texts CASCADE;"
                   "DROP SEQUENCE ovsearch.folder_ids, ovsearch.text_numbers;"
                   "DROP FUNCTION IF EXISTS ovsearch.open_to_readers(),"
                   " ovsearch.updater_of(integer), ovsearch.hold(integer)");
}

void takeOverOlderTables(Connection& connection) {
    connection.run("INSERT INTO ovsearch.stores (id, root, as_of, begun, removed)"
                   " OVERRIDING SYSTEM VALUE SELECT id, root, 0, 0, 0 FROM ovsearch.older_stores;"
                   "INSERT INTO ovsearch.wards (id, store, directory)"
                   " OVERRIDING SYSTEM VALUE SELECT id, store, directory FROM ovsearch.older_wards;"
                   "INSERT INTO ovsearch.ward_readers (reader, ward)"
                   " SELECT reader, ward FROM ovsearch.older_readers;"
                   "SELECT setval(pg_get_serial_sequence('ovsearch.stores', 'id'),"
                   " (SELECT COALESCE(max(id), 0) + 1 FROM ovsearch.stores), false),"
                   " setval(pg_get_serial_sequence('ovsearch.wards', 'id'),"
                   " (SELECT COALESCE(max(id), 0) + 1 FROM ovsearch.wards), false);"
                   "DROP TABLE ovsearch.older_stores, ovsearch.older_wards,"
                   " ovsearch.older_readers CASCADE");
}

} // namespace ov::catalogue::loaded
