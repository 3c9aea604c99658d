-- SPDX-FileCopyrightText: The OVSearch developers
-- SPDX-License-Identifier: MIT
--
-- Who may do what with a catalogue on a PostgreSQL server. An administrator of the server runs this
-- once in the database, best before the first "ovsearch catalogue update"; what is there already is
-- handed over to the roles:
--
--     psql --set=ON_ERROR_STOP=1 --dbname=DATABASE --file=catalogue-roles.sql
--
-- and then gives the roles to people and programs:
--
--     GRANT ovsearch_updater TO watcher;      -- writes the catalogue
--     GRANT ovsearch_reader_of_all TO chief;  -- sees all of it
--     GRANT ovsearch_reader TO anna;          -- sees nothing, but for
--     SELECT ovsearch.let_see('anna', '/srv/dictations/St Mary/Ward 3');
--
-- Whoever sees a directory sees all below it. It must be in the catalogue, so update that before, and
-- must be named while no update runs; the first time takes a look at all dictations around it.
-- SELECT ovsearch.forbid('anna', '/srv/dictations/St Mary/Ward 3') takes it back at once.

BEGIN; -- all or nothing

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

-- What a stranger has prepared could do in the name of those who use it what he may not.
DO $$
DECLARE
    holder pg_roles;
BEGIN
    SELECT r.* INTO holder FROM pg_namespace n JOIN pg_roles r ON r.oid = n.nspowner
        WHERE n.nspname = 'ovsearch';
    IF NOT FOUND THEN
        CREATE SCHEMA ovsearch;
    ELSIF NOT holder.rolsuper AND holder.rolname NOT IN ('ovsearch_updater', current_user) THEN
        RAISE EXCEPTION 'the schema ovsearch belongs to %; if you trust what is in it, run "ALTER'
            ' SCHEMA ovsearch OWNER TO ovsearch_updater" before, else remove it', holder.rolname;
    END IF;
    ALTER SCHEMA ovsearch OWNER TO ovsearch_updater;
END $$;
GRANT USAGE ON SCHEMA ovsearch TO ovsearch_reader;

-- Tables that a first update made without the roles. Those of columns go with their tables.
DO $$
DECLARE
    one regclass;
BEGIN
    FOR one IN SELECT c.oid FROM pg_class c WHERE c.relnamespace = to_regnamespace('ovsearch')
        AND c.relkind IN ('r', 'S') AND c.relowner <> to_regrole('ovsearch_updater')
        AND NOT EXISTS (SELECT FROM pg_depend d WHERE d.classid = to_regclass('pg_class')
            AND d.objid = c.oid AND d.deptype = 'i') LOOP
        EXECUTE format('ALTER TABLE %s OWNER TO ovsearch_updater', one);
    END LOOP;
    IF to_regprocedure('ovsearch.open_to_readers()') IS NOT NULL THEN
        PERFORM ovsearch.open_to_readers();
    END IF;
END $$;

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

-- A list of the columns of dictations that have numbers of texts, each written by the pattern.
CREATE OR REPLACE FUNCTION ovsearch.text_columns(pattern text, separator text) RETURNS text
LANGUAGE sql STABLE SET search_path = pg_catalog
RETURN (SELECT string_agg(format(pattern, attname), separator) FROM pg_attribute
    WHERE attrelid = to_regclass('ovsearch.dictations') AND atttypid = 'integer'::regtype
        AND attnum > 0 AND attname NOT IN ('folder', 'position', 'ward'));

-- Those numbers in the folders of a ward.
CREATE OR REPLACE FUNCTION ovsearch.text_numbers_of(ward integer) RETURNS SETOF integer
LANGUAGE plpgsql STABLE SET search_path = pg_catalog AS $$
BEGIN
    RETURN QUERY EXECUTE 'SELECT DISTINCT u.number FROM ovsearch.dictations d'
        ' JOIN ovsearch.folders f ON f.id = d.folder CROSS JOIN LATERAL unnest(ARRAY['
        || ovsearch.text_columns('d.%I', ', ') || ']) u (number) WHERE f.ward = $1' USING ward;
END $$;

-- The dictations in folders of the ward "made" come into it from the ward "around". Who sees a ward
-- sees its texts, so each has those of its own dictations and no others. The server knows nothing yet
-- of how many texts "made" has, and would look through all of them for each dictation.
CREATE OR REPLACE FUNCTION ovsearch.divide(around integer, made integer) RETURNS void
LANGUAGE plpgsql SET search_path = pg_catalog SET enable_nestloop = off AS $$
BEGIN
    INSERT INTO ovsearch.texts (ward, field, upper, text, number)
        SELECT made, t.field, t.upper, t.text, nextval('ovsearch.text_numbers')
        FROM ovsearch.texts t JOIN ovsearch.text_numbers_of(made) n ON n = t.number
        WHERE t.ward = around;
    EXECUTE 'WITH moved AS MATERIALIZED (SELECT o.number AS before, n.number AS after'
        ' FROM ovsearch.texts o JOIN ovsearch.texts n USING (field, upper, text)'
        ' WHERE o.ward = $1 AND n.ward = $2)'
        ' UPDATE ovsearch.dictations d SET ward = $2, '
        || ovsearch.text_columns('%1$I = COALESCE(m_%1$s.after, s.%1$I)', ', ')
        || ' FROM ovsearch.dictations s JOIN ovsearch.folders f ON f.id = s.folder '
        || ovsearch.text_columns('LEFT JOIN moved m_%1$s ON m_%1$s.before = s.%1$I', ' ')
        || ' WHERE f.ward = $2 AND d.folder = s.folder AND d.position = s.position'
        USING around, made;
    DELETE FROM ovsearch.texts t WHERE t.ward = around
        AND NOT EXISTS (SELECT FROM ovsearch.text_numbers_of(around) n WHERE n = t.number);
END $$;

-- Makes the directory a ward, if it is none yet, and returns its number. Those who saw it before
-- go on seeing it.
CREATE OR REPLACE FUNCTION ovsearch.ward_of(directory text) RETURNS integer
LANGUAGE plpgsql SET search_path = pg_catalog SET lock_timeout = '3s' AS $$
DECLARE
    wanted bytea := ovsearch.directory_text(directory);
    around record;
    is_alone boolean := false;
    made integer;
BEGIN
    LOOP
        SELECT * INTO around FROM ovsearch.wards w
            WHERE substring(wanted FROM 1 FOR length(w.directory)) = w.directory
            ORDER BY length(w.directory) DESC LIMIT 1;
        IF around.directory = wanted THEN
            RETURN around.id;
        END IF;
        EXIT WHEN is_alone; -- before, another one may have been quicker
        PERFORM FROM ovsearch.folders f WHERE f.store = around.store AND f.path = wanted;
        IF NOT FOUND THEN
            RAISE EXCEPTION '% is no directory of the catalogue; write it in full, as a search'
                ' shows it, or update the catalogue first', directory;
        END IF;
        BEGIN
            IF ovsearch.updater_of(around.store) IS NOT NULL THEN
                RAISE lock_not_available;
            END IF;
        EXCEPTION WHEN lock_not_available THEN
            RAISE EXCEPTION 'the store is just being updated; try again when that is through';
        END;
        is_alone := true;
    END LOOP;
    INSERT INTO ovsearch.wards (store, directory) VALUES (around.store, wanted)
        RETURNING id INTO made;
    INSERT INTO ovsearch.ward_readers
        SELECT reader, made FROM ovsearch.ward_readers WHERE ward = around.id;
    UPDATE ovsearch.folders SET ward = made
        WHERE ward = around.id AND substring(path FROM 1 FOR length(wanted)) = wanted;
    PERFORM ovsearch.divide(around.id, made);
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

-- The role sees the directory and what is below it no more, unless another role of which it is a
-- member does; then a warning says so. It need not be there any more itself: a later one of the same
-- name would see what it saw.
CREATE OR REPLACE FUNCTION ovsearch.forbid(who name, directory text) RETURNS void
LANGUAGE plpgsql SET search_path = pg_catalog AS $$
DECLARE
    made integer := ovsearch.ward_of(directory);
    below integer[] := ARRAY(SELECT w.id FROM ovsearch.wards w, ovsearch.wards top
        WHERE top.id = made
            AND substring(w.directory FROM 1 FOR length(top.directory)) = top.directory);
    others text;
BEGIN
    DELETE FROM ovsearch.ward_readers WHERE reader = who AND ward = ANY (below);
    IF NOT FOUND THEN
        RAISE EXCEPTION '% was not let see %', who, directory;
    END IF;
    SELECT string_agg(r.rolname, ', ' ORDER BY r.rolname) INTO others FROM pg_roles r
        JOIN pg_roles own ON own.rolname = who AND pg_has_role(own.oid, r.oid, 'MEMBER')
        WHERE r.rolname IN ('ovsearch_updater', 'ovsearch_reader_of_all')
            OR r.rolname IN (SELECT reader FROM ovsearch.ward_readers WHERE ward = ANY (below));
    IF others IS NOT NULL THEN
        RAISE WARNING '% still sees % or a part of it, as a member of %', who, directory, others;
    END IF;
END $$;

REVOKE ALL ON FUNCTION ovsearch.directory_text, ovsearch.text_columns, ovsearch.text_numbers_of,
    ovsearch.divide, ovsearch.ward_of, ovsearch.let_see, ovsearch.forbid FROM PUBLIC;
GRANT EXECUTE ON FUNCTION ovsearch.directory_text, ovsearch.text_columns, ovsearch.text_numbers_of,
    ovsearch.divide, ovsearch.ward_of, ovsearch.let_see, ovsearch.forbid TO ovsearch_updater;

COMMIT;
