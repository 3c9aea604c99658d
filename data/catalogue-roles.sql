-- SPDX-FileCopyrightText: The OVSearch developers
-- SPDX-License-Identifier: MIT
--
-- Who may do what with a catalogue on a PostgreSQL server. An administrator of the server runs this
-- once in the database, before the first "ovsearch catalogue update":
--
--     psql --dbname=DATABASE --file=catalogue-roles.sql
--
-- and then gives the roles to people and programs:
--
--     GRANT ovsearch_updater TO watcher;      -- writes the catalogue
--     GRANT ovsearch_reader_of_all TO chief;  -- sees all of it
--     GRANT ovsearch_reader TO anna;          -- sees nothing, but for
--     SELECT ovsearch.let_see('anna', '/srv/dictations/St Mary/Ward 3');
--
-- Whoever sees a directory sees all below it. A directory that is named for the first time leaves what
-- lies around it to be read anew by the next update; until then searches say that not all is there.
-- So begin the first update, end it with Ctrl-C, name the directories, and update again.
-- SELECT ovsearch.forbid('anna', '/srv/dictations/St Mary/Ward 3') takes it back at once.

DO $$
DECLARE
    one text;
BEGIN
    FOREACH one IN ARRAY ARRAY['ovsearch_updater', 'ovsearch_reader', 'ovsearch_reader_of_all'] LOOP
        IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = one) THEN
            EXECUTE format('CREATE ROLE %I NOLOGIN', one);
        END IF;
    END LOOP;
END $$;
GRANT ovsearch_reader TO ovsearch_reader_of_all;

CREATE SCHEMA IF NOT EXISTS ovsearch AUTHORIZATION ovsearch_updater;
GRANT USAGE ON SCHEMA ovsearch TO ovsearch_reader;

-- Without this "contains" is slower.
DO $$
BEGIN
    CREATE EXTENSION IF NOT EXISTS pg_trgm;
EXCEPTION WHEN OTHERS THEN
    RAISE NOTICE 'no pg_trgm here; install postgresql-contrib for quicker searches';
END $$;

-- "\a\b\" of "/a/b", as catalogues have it.
CREATE OR REPLACE FUNCTION ovsearch.directory_text(directory text) RETURNS bytea
LANGUAGE sql STABLE SET search_path = pg_catalog
RETURN convert_to(replace(rtrim(directory, '/'), '/', E'\\') || E'\\', 'UTF8');

-- Makes the directory a ward, if it is none yet, and returns its number. Those who saw it before
-- go on seeing it.
CREATE OR REPLACE FUNCTION ovsearch.ward_of(directory text) RETURNS integer
LANGUAGE plpgsql SET search_path = pg_catalog SET lock_timeout = '3s' AS $$
DECLARE
    wanted bytea := ovsearch.directory_text(directory);
    around record;
    made integer;
BEGIN
    SELECT * INTO around FROM ovsearch.wards w
        WHERE substring(wanted FROM 1 FOR length(w.directory)) = w.directory
        ORDER BY length(w.directory) DESC LIMIT 1;
    IF around.directory = wanted THEN
        RETURN around.id;
    END IF;
    PERFORM FROM ovsearch.folders f WHERE f.store = around.store AND f.path = wanted;
    IF NOT FOUND THEN
        RAISE EXCEPTION '% is no directory of the catalogue; write it in full, as a search shows it,'
            ' or update the catalogue first', directory;
    END IF;
    BEGIN
        PERFORM pg_advisory_xact_lock(1331057509, around.store);
    EXCEPTION WHEN lock_not_available THEN
        RAISE EXCEPTION 'the store is just being updated; try again when that is through';
    END;
    INSERT INTO ovsearch.wards (store, directory) VALUES (around.store, wanted)
        RETURNING id INTO made;
    INSERT INTO ovsearch.ward_readers
        SELECT reader, made FROM ovsearch.ward_readers WHERE ward = around.id;
    -- What the two had together tells of both.
    DELETE FROM ovsearch.dictations WHERE ward = around.id;
    DELETE FROM ovsearch.texts WHERE ward = around.id;
    UPDATE ovsearch.folders SET settled = 0, digest = 0, first_seen = 0, dictations = 0, ward =
        CASE WHEN substring(path FROM 1 FOR length(wanted)) = wanted THEN made ELSE ward END
        WHERE ward = around.id;
    UPDATE ovsearch.stores SET as_of = 0 WHERE id = around.store;
    RETURN made;
END $$;

-- The role sees the directory and all below it.
CREATE OR REPLACE FUNCTION ovsearch.let_see(who name, directory text) RETURNS void
LANGUAGE plpgsql SET search_path = pg_catalog AS $$
DECLARE
    made integer;
BEGIN
    IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = who) THEN
        RAISE EXCEPTION 'there is no role %', who;
    END IF;
    made := ovsearch.ward_of(directory);
    INSERT INTO ovsearch.ward_readers
        SELECT who, w.id FROM ovsearch.wards w, ovsearch.wards top WHERE top.id = made
            AND substring(w.directory FROM 1 FOR length(top.directory)) = top.directory
        ON CONFLICT DO NOTHING;
END $$;

-- The role sees the directory and what is below it no more. It need not be there any more itself: a
-- later one of the same name would see what it saw.
CREATE OR REPLACE FUNCTION ovsearch.forbid(who name, directory text) RETURNS void
LANGUAGE plpgsql SET search_path = pg_catalog AS $$
DECLARE
    made integer := ovsearch.ward_of(directory);
BEGIN
    DELETE FROM ovsearch.ward_readers r USING ovsearch.wards w, ovsearch.wards top
        WHERE r.reader = who AND r.ward = w.id AND top.id = made
            AND substring(w.directory FROM 1 FOR length(top.directory)) = top.directory;
    IF NOT FOUND THEN
        RAISE EXCEPTION '% was not let see %', who, directory;
    END IF;
END $$;

REVOKE ALL ON FUNCTION ovsearch.directory_text, ovsearch.ward_of, ovsearch.let_see, ovsearch.forbid
    FROM PUBLIC;
GRANT EXECUTE ON FUNCTION ovsearch.directory_text, ovsearch.ward_of, ovsearch.let_see,
    ovsearch.forbid TO ovsearch_updater;
