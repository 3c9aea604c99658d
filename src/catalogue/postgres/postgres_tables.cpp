// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/postgres/postgres_tables.h"

#include "catalogue/kept_columns.h"
#include "catalogue/postgres/older_tables.h"
#include "catalogue/sql/tables_version.h"

#include <cerrno>

namespace ov::catalogue::loaded {

namespace {

// All texts compare by their bytes, whatever the server's country.
const char* typeOf(Keeping keeping) noexcept {
    switch (keeping) {
    case Keeping::ownText:
        return R"( text COLLATE "C")";
    case Keeping::text:
        return " integer NOT NULL";
    default:
        return " bigint NOT NULL";
    }
}

constexpr const char* smallTables = R"(
CREATE TABLE ovsearch.about (version integer NOT NULL);
CREATE TABLE ovsearch.stores (
    id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    root bytea NOT NULL UNIQUE,
    as_of bigint NOT NULL,
    begun bigint NOT NULL,
    removed bigint NOT NULL,
    updater integer,
    mark integer);
CREATE TABLE ovsearch.wards (
    id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    store integer NOT NULL,
    directory bytea NOT NULL UNIQUE);
CREATE TABLE ovsearch.ward_readers (reader name, ward integer, PRIMARY KEY (reader, ward));
CREATE SEQUENCE ovsearch.folder_ids AS integer;
CREATE TABLE ovsearch.folders (
    id integer PRIMARY KEY, store integer NOT NULL, ward integer NOT NULL, path bytea NOT NULL,
    upper bytea NOT NULL, depth integer NOT NULL, place bigint NOT NULL, device bigint NOT NULL,
    file bigint NOT NULL, modified bigint NOT NULL, changed bigint NOT NULL,
    first_seen bigint NOT NULL, settled integer NOT NULL, digest bigint NOT NULL,
    dictations bigint NOT NULL, skipped bigint NOT NULL, problem bytea NOT NULL);
CREATE INDEX folders_by_place ON ovsearch.folders (store, place);
CREATE SEQUENCE ovsearch.text_numbers AS integer MINVALUE 4;
CREATE TABLE ovsearch.texts (
    ward integer, field integer, upper text COLLATE "C", text text COLLATE "C",
    number integer NOT NULL, PRIMARY KEY (ward, field, upper, text));
)";

// A store is held by who has the lock that its row tells of. Everybody may take locks of any
// number, so that the number is drawn anew each time, and counts only with the process that was
// written.
constexpr const char* holding = R"(
CREATE FUNCTION ovsearch.updater_of(asked integer) RETURNS integer
LANGUAGE plpgsql SET search_path = pg_catalog AS $$
DECLARE
    held record;
    holder integer;
BEGIN
    SELECT updater, mark INTO held FROM ovsearch.stores WHERE id = asked FOR UPDATE;
    FOR i IN 1..20 LOOP
        SELECT l.pid INTO holder FROM pg_locks l JOIN pg_database d ON d.oid = l.database
            WHERE d.datname = current_database() AND l.locktype = 'advisory' AND l.granted
            AND l.objsubid = 2 AND l.classid = 1331057509 AND l.objid = held.mark::oid
            AND l.pid = held.updater;
        EXIT WHEN holder IS NULL OR holder = pg_backend_pid();
        PERFORM pg_sleep(0.05);
    END LOOP;
    RETURN holder;
END $$;
CREATE FUNCTION ovsearch.hold(asked integer) RETURNS boolean
LANGUAGE plpgsql SET search_path = pg_catalog AS $$
DECLARE
    now_by integer := ovsearch.updater_of(asked);
    fresh integer := 1 + floor(random() * 2147483646);
BEGIN
    IF now_by IS NULL THEN
        PERFORM pg_advisory_lock(1331057509, fresh);
        UPDATE ovsearch.stores SET updater = pg_backend_pid(), mark = fresh WHERE id = asked;
    END IF;
    RETURN COALESCE(now_by = pg_backend_pid(), true);
END $$;
)";

// The roles may be made later; their script opens the tables to them then.
constexpr const char* policies = R"(
ALTER TABLE ovsearch.ward_readers ENABLE ROW LEVEL SECURITY;
ALTER TABLE ovsearch.wards ENABLE ROW LEVEL SECURITY;
ALTER TABLE ovsearch.stores ENABLE ROW LEVEL SECURITY;
ALTER TABLE ovsearch.folders ENABLE ROW LEVEL SECURITY;
ALTER TABLE ovsearch.dictations ENABLE ROW LEVEL SECURITY;
ALTER TABLE ovsearch.texts ENABLE ROW LEVEL SECURITY;
CREATE POLICY own ON ovsearch.ward_readers FOR SELECT
    USING (reader IN (SELECT rolname FROM pg_roles WHERE pg_has_role(oid, 'MEMBER')));
CREATE POLICY own ON ovsearch.wards FOR SELECT
    USING (id = ANY (ARRAY(SELECT ward FROM ovsearch.ward_readers)));
CREATE POLICY own ON ovsearch.stores FOR SELECT
    USING (id = ANY (ARRAY(SELECT store FROM ovsearch.wards)));
CREATE POLICY own ON ovsearch.folders FOR SELECT
    USING (ward = ANY (ARRAY(SELECT id FROM ovsearch.wards)));
CREATE POLICY own ON ovsearch.dictations FOR SELECT
    USING (ward = ANY (ARRAY(SELECT id FROM ovsearch.wards)));
CREATE POLICY own ON ovsearch.texts FOR SELECT
    USING (ward = ANY (ARRAY(SELECT id FROM ovsearch.wards)));
CREATE FUNCTION ovsearch.open_to_readers() RETURNS void
LANGUAGE plpgsql SET search_path = pg_catalog AS $$
DECLARE
    one text;
BEGIN
    IF to_regrole('ovsearch_reader') IS NOT NULL THEN
        GRANT USAGE ON SCHEMA ovsearch TO ovsearch_reader;
        GRANT SELECT ON ALL TABLES IN SCHEMA ovsearch TO ovsearch_reader;
    END IF;
    IF to_regrole('ovsearch_reader_of_all') IS NOT NULL THEN
        FOREACH one IN ARRAY ARRAY['wards', 'stores', 'folders', 'dictations', 'texts'] LOOP
            EXECUTE format('DROP POLICY IF EXISTS every ON ovsearch.%1$I;'
                           ' CREATE POLICY every ON ovsearch.%1$I FOR SELECT'
                           ' TO ovsearch_reader_of_all USING (true)', one);
        END LOOP;
    END IF;
END $$;
SELECT ovsearch.open_to_readers();
)";

// "Contains" answers without it too, only slower; not every server has it or lets us.
constexpr const char* trigrams = R"(
DO $$
DECLARE
    home text;
BEGIN
    CREATE EXTENSION IF NOT EXISTS pg_trgm;
    SELECT n.nspname INTO home FROM pg_extension e JOIN pg_namespace n ON n.oid = e.extnamespace
        WHERE e.extname = 'pg_trgm';
    EXECUTE format('CREATE INDEX IF NOT EXISTS texts_by_trigram ON ovsearch.texts'
                   ' USING gin (upper %I.gin_trgm_ops)', home);
    EXECUTE format('CREATE INDEX IF NOT EXISTS dictations_by_number ON ovsearch.dictations'
                   ' USING gin (number %I.gin_trgm_ops)', home);
EXCEPTION WHEN insufficient_privilege OR undefined_file OR feature_not_supported OR undefined_object
    OR invalid_schema_name OR unique_violation THEN
    NULL;
END $$;
)";

std::string tables() {
    std::string columns;
    for (const KeptColumn& column : keptColumns())
        columns.append(", ").append(column.name).append(typeOf(column.keeping));
    return smallTables +
           std::string("CREATE TABLE ovsearch.dictations (folder integer, position integer,"
                       " ward integer NOT NULL") +
           columns + ", name bytea NOT NULL, PRIMARY KEY (folder, position));" + holding +
           policies + "INSERT INTO ovsearch.about VALUES (" + std::to_string(serverTablesVersion) +
           ");";
}

bool areThere(Connection& connection) {
    return connection
               .ask("SELECT count(*) FROM pg_catalog.pg_class WHERE relname = 'about' AND"
                    " relnamespace = to_regnamespace('ovsearch')")
               .only() > 0;
}

std::int64_t versionOf(Connection& connection) {
    return connection.ask("SELECT max(version) FROM ovsearch.about").only();
}

bool isOlder(std::int64_t version) {
    return version > 0 && version < serverTablesVersion;
}

std::string encodingOf(Connection& connection) {
    Answer answer = connection.ask("SELECT pg_catalog.getdatabaseencoding()");
    return answer.step() ? std::string(answer.bytes(0)) : std::string();
}

// Two that begin at once: one waits. The schema may be there already, made for us.
void make(Connection& connection) {
    connection.run("BEGIN; SELECT pg_advisory_xact_lock(1331057509, 0);");
    if (const std::string encoding = encodingOf(connection); encoding != "UTF8")
        connection.fail(EPROTO, "a catalogue needs a database of the encoding UTF8; this one has " +
                                    encoding);
    if (connection.ask("SELECT to_regnamespace('ovsearch') IS NULL").only() != 0)
        connection.run("CREATE SCHEMA ovsearch");
    const bool areMade = areThere(connection);
    if (areMade) {
        connection.run("LOCK TABLE ovsearch.about");
        if (!isOlder(versionOf(connection)))
            return endTransaction(connection);
        putOlderTablesAside(connection);
    }
    connection.run(tables());
    if (areMade)
        takeOverOlderTables(connection);
    endTransaction(connection);
}

} // namespace

void endTransaction(Connection& connection) {
    const platform::Status error = connection.take();
    connection.run(error.ok() ? "COMMIT" : "ROLLBACK");
    if (error.ok())
        return;
    static_cast<void>(connection.take());
    connection.fail(error.number(), error.text());
}

// What is not ours comes from the system's own schema alone. Whoever may, writes as the role that
// has the tables, so that they are not one person's. The last moments before a failure of the
// server's power may be lost to the catalogue; the next update brings them back.
std::string setUpOf(bool isForUpdate) {
    std::string setUp =
        "SET search_path = ovsearch; SET client_min_messages = error; SET jit = off;"
        " SET work_mem = '64MB';";
    if (isForUpdate)
        setUp.append("SET synchronous_commit = off; SET tcp_keepalives_idle = 60;"
                     "SELECT set_config('role', r.rolname, false) FROM pg_catalog.pg_roles r"
                     " JOIN pg_catalog.pg_namespace n ON n.nspowner = r.oid"
                     " WHERE n.nspname = 'ovsearch' AND r.rolname = 'ovsearch_updater'"
                     " AND pg_has_role(r.oid, 'MEMBER');");
    else
        setUp.append("SET default_transaction_read_only = on;");
    return setUp;
}

platform::Status prepareServerTables(Connection& connection, bool mayMake) {
    const auto isUsable = [&connection] {
        return areThere(connection) && !isOlder(versionOf(connection));
    };
    if (mayMake && !isUsable() && !connection.failed())
        make(connection);
    const bool areMade = areThere(connection);
    const std::int64_t version = areMade ? versionOf(connection) : 0;
    if (platform::Status error = connection.take(); !error.ok())
        return error;
    if (!areMade)
        return {ENOENT, connection.name(),
                "has no catalogue; \"ovsearch catalogue update DIR --to SERVER\" makes one"};
    return version == serverTablesVersion
               ? platform::Status()
               : sql::otherVersion(connection.name(), version, serverTablesVersion,
                                   "the next update brings it up to date");
}

// That of the subjects is what makes the trigrams of their texts worth it; that of the authors has
// what they are mostly asked with. Each by itself, so that those who write wait for one only; of
// two programs that make them one waits.
void makeServerIndexes(Connection& connection) {
    namespace id = modDictation::field_id;
    const auto makeAlone = [&connection](const std::string& sql) {
        connection.run("BEGIN; LOCK TABLE ovsearch.about IN SHARE ROW EXCLUSIVE MODE; " + sql);
        endTransaction(connection);
    };
    for (const KeptColumn& column : keptColumns())
        if (column.hasIndex || column.field == id::subject) {
            const std::string name(column.name);
            const bool isAuthor = column.field == id::author;
            makeAlone("CREATE INDEX IF NOT EXISTS dictations_by_" + name +
                      " ON ovsearch.dictations (" + name +
                      (isAuthor ? ", priority, dictated)" : ")"));
        }
    makeAlone("CREATE INDEX IF NOT EXISTS folders_by_ward ON ovsearch.folders (ward)");
    makeAlone("CREATE INDEX IF NOT EXISTS folders_by_depth ON ovsearch.folders (store, depth)");
    makeAlone("CREATE INDEX IF NOT EXISTS folders_left_out ON ovsearch.folders (store)"
              " WHERE skipped > 0 OR length(problem) > 0");
    makeAlone("CREATE INDEX IF NOT EXISTS folders_by_path ON ovsearch.folders"
              " (store, substr(path, 1, " +
              std::to_string(mostIndexedBytes) + "))");
    makeAlone(trigrams);
}

} // namespace ov::catalogue::loaded
