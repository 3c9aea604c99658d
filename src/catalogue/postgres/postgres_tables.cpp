// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/postgres/postgres_tables.h"

#include "catalogue/kept_columns.h"
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
    removed bigint NOT NULL);
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
DO $$
DECLARE
    one text;
BEGIN
    IF EXISTS (SELECT FROM pg_roles WHERE rolname = 'ovsearch_reader') THEN
        GRANT USAGE ON SCHEMA ovsearch TO ovsearch_reader;
        GRANT SELECT ON ALL TABLES IN SCHEMA ovsearch TO ovsearch_reader;
    END IF;
    IF EXISTS (SELECT FROM pg_roles WHERE rolname = 'ovsearch_reader_of_all') THEN
        FOREACH one IN ARRAY ARRAY['wards', 'stores', 'folders', 'dictations', 'texts'] LOOP
            EXECUTE format('CREATE POLICY every ON ovsearch.%I FOR SELECT'
                           ' TO ovsearch_reader_of_all USING (true)', one);
        END LOOP;
    END IF;
END $$;
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
    OR invalid_schema_name THEN
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
           columns + ", name bytea NOT NULL, PRIMARY KEY (folder, position));" + policies +
           "INSERT INTO ovsearch.about VALUES (" + std::to_string(serverTablesVersion) + ");";
}

bool areThere(Connection& connection) {
    return connection
               .ask("SELECT count(*) FROM pg_catalog.pg_class WHERE relname = 'about' AND"
                    " relnamespace = to_regnamespace('ovsearch')")
               .only() > 0;
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
    if (!areThere(connection))
        connection.run(tables());
    const platform::Status error = connection.take();
    connection.run(error.ok() ? "COMMIT" : "ROLLBACK");
    if (!error.ok())
        connection.fail(error.number(), error.text());
}

} // namespace

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
        setUp.append("SET default_transaction_read_only = on;"
                     " SET cursor_tuple_fraction = 0.001;"); // the first are waited for
    return setUp;
}

platform::Status prepareServerTables(Connection& connection, bool mayMake) {
    if (mayMake && !areThere(connection))
        make(connection);
    const bool areMade = areThere(connection);
    const std::int64_t version =
        areMade ? connection.ask("SELECT max(version) FROM about").only() : 0;
    if (platform::Status error = connection.take(); !error.ok())
        return error;
    if (!areMade)
        return {ENOENT, connection.name(),
                "has no catalogue; \"ovsearch catalogue update DIR --to SERVER\" makes one"};
    return version == serverTablesVersion
               ? platform::Status()
               : sql::otherVersion(connection.name(), version, serverTablesVersion);
}

// That of the subjects is what makes the trigrams of their texts worth it.
void makeServerIndexes(Connection& connection) {
    namespace id = modDictation::field_id;
    for (const KeptColumn& column : keptColumns())
        if (column.hasIndex || column.field == id::subject) {
            const std::string name(column.name);
            const bool isAuthor = column.field == id::author;
            connection.run("CREATE INDEX IF NOT EXISTS dictations_by_" + name +
                           " ON ovsearch.dictations (" + name + (isAuthor ? ", priority)" : ")"));
        }
    connection.run("CREATE INDEX IF NOT EXISTS folders_by_ward ON ovsearch.folders (ward)");
    connection.run("CREATE INDEX IF NOT EXISTS folders_by_path ON ovsearch.folders"
                   " (store, substr(path, 1, " +
                   std::to_string(mostIndexedBytes) + "))");
    connection.run(trigrams);
}

} // namespace ov::catalogue::loaded
