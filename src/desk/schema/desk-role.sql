-- The role that the desks of a clinic log in with: it may read and write the rows that a desk needs, and nothing else.
--
--   psql -v desk=clinic_desk -f desk-role.sql 'postgresql://postgres@server/clinic'
--
-- Run it as a superuser or as an owner of the tables who may create roles, after the tables were made (desk --make, desk
-- --upgrade, or an installer of the clinic's own) and again after an update that makes new tables. Whoever made them, and in
-- whatever schema they are found. The role gets no password here: give it one with \password clinic_desk.
--
-- What other roles and programs may do in the database stays as it is. With -v lock_down=1 it is locked up as well: nobody
-- connects, makes tables, reads or writes by being anybody. That is for a server that holds the clinic and nothing else.

\set ON_ERROR_STOP on
\if :{?desk}
\else
    \set desk clinic_desk
\endif

BEGIN;

-- A role that is there and was locked out (NOLOGIN) stays so.
SELECT format('CREATE ROLE %I LOGIN', :'desk') WHERE NOT EXISTS (SELECT FROM pg_roles WHERE rolname = :'desk') \gexec
ALTER ROLE :"desk" NOCREATEDB NOCREATEROLE NOINHERIT;

CREATE TEMP TABLE clinic_table ON COMMIT DROP AS
SELECT named, to_regclass(named) AS relation, kind
FROM (VALUES ('tPSProductMaster', 'rows'), ('tPSCompanyMaster', 'rows'), ('tPSIncoming', 'rows'), ('tPSOrderMaster', 'rows'),
             ('tPSOrderDetail', 'rows'), ('tPSTransaction', 'rows'), ('tPSProperties', 'settings'),
             ('t_HospSetup', 'settings'), ('Customer', 'read'), ('Receipt', 'read'), ('t_DeskSchema', 'made'),
             ('t_DeskJournal', 'made'), ('t_CentralState', 'links'), ('t_CentralLink', 'links')) AS asked (named, kind);
DO $body$ DECLARE missing text; BEGIN
    SELECT string_agg(named, ', ') INTO missing FROM clinic_table WHERE relation IS NULL AND kind NOT IN ('made', 'links');
    IF missing IS NOT NULL THEN
        RAISE EXCEPTION 'tables that are not found on the search path: %', missing;
    END IF;
END $body$;
CREATE TEMP VIEW clinic_schema AS
SELECT DISTINCT n.nspname FROM clinic_table t JOIN pg_class c ON c.oid = t.relation JOIN pg_namespace n ON n.oid = c.relnamespace;

\if :{?lock_down}
    -- Nobody comes in by being anybody, and nobody makes tables, not even temporary ones, by being in.
    SELECT format('REVOKE ALL ON DATABASE %I FROM PUBLIC, %I', current_database(), :'desk') \gexec
    SELECT format('REVOKE ALL ON SCHEMA %1$I FROM PUBLIC; REVOKE ALL ON ALL TABLES IN SCHEMA %1$I FROM PUBLIC; '
                  'REVOKE ALL ON ALL SEQUENCES IN SCHEMA %1$I FROM PUBLIC', nspname)
        FROM (SELECT nspname FROM clinic_schema UNION SELECT 'public') AS closed
        WHERE to_regnamespace(quote_ident(nspname)) IS NOT NULL \gexec
    SELECT 'REVOKE ALL ON SCHEMA clinic_like FROM PUBLIC' WHERE to_regnamespace('clinic_like') IS NOT NULL \gexec
    -- Large objects are files in the database that anybody could fill.
    REVOKE EXECUTE ON FUNCTION lo_create(oid), lo_creat(integer), lo_from_bytea(oid, bytea) FROM PUBLIC;
\endif

-- By name, so that it can still connect when nobody else may any more.
SELECT format('GRANT CONNECT ON DATABASE %I TO %I', datname, :'desk')
    FROM pg_database WHERE datname = current_database() AND CASE WHEN pg_has_role(datdba, 'USAGE') THEN NOT EXISTS
        (SELECT FROM aclexplode(datacl) WHERE privilege_type = 'CONNECT'
            AND grantee = (SELECT oid FROM pg_roles WHERE rolname = :'desk'))
        ELSE NOT has_database_privilege(:'desk', datname, 'CONNECT') END \gexec
SELECT format('REVOKE ALL ON SCHEMA %1$I FROM %2$I; GRANT USAGE ON SCHEMA %1$I TO %2$I', nspname, :'desk')
    FROM clinic_schema \gexec

-- LIKE as the clinic's statements mean it, where desk --make or --upgrade has made it.
SELECT format('GRANT USAGE ON SCHEMA clinic_like TO %1$I; GRANT EXECUTE ON ALL FUNCTIONS IN SCHEMA clinic_like TO %1$I',
              :'desk')
    WHERE to_regnamespace('clinic_like') IS NOT NULL \gexec

-- A desk seals the journal; what writes it is the tables' own affair.
SELECT format('REVOKE EXECUTE ON ALL FUNCTIONS IN SCHEMA clinic_journal FROM PUBLIC, %1$I; GRANT USAGE ON SCHEMA clinic_journal '
              'TO %1$I; GRANT EXECUTE ON FUNCTION clinic_journal.seal() TO %1$I', :'desk')
    WHERE to_regprocedure('clinic_journal.seal()') IS NOT NULL \gexec

-- Whatever the role had before goes first. A desk can write every column but those that the database counts: a key that it
-- made up would stand in the counter's way. A counter that is no identity asks for a right of its own.
SELECT format('REVOKE ALL ON ALL TABLES IN SCHEMA %1$I FROM %2$I; REVOKE ALL ON ALL SEQUENCES IN SCHEMA %1$I FROM %2$I',
              nspname, :'desk')
    FROM clinic_schema \gexec
SELECT format('GRANT SELECT%s ON %s TO %I', CASE WHEN kind IN ('rows', 'links') THEN ', DELETE' ELSE '' END, relation, :'desk')
    FROM clinic_table WHERE relation IS NOT NULL \gexec
CREATE TEMP VIEW clinic_counter AS
SELECT d.adrelid, d.adnum, s.refobjid::regclass AS counter
FROM pg_attrdef d JOIN pg_depend s ON s.classid = 'pg_attrdef'::regclass AND s.objid = d.oid AND s.refclassid =
    'pg_class'::regclass JOIN pg_class c ON c.oid = s.refobjid AND c.relkind = 'S'
WHERE d.adrelid IN (SELECT relation FROM clinic_table WHERE kind IN ('rows', 'settings'));
SELECT format('GRANT INSERT (%1$s), UPDATE (%1$s) ON %2$s TO %3$I', string_agg(quote_ident(a.attname), ', '),
              a.attrelid::regclass, :'desk')
    FROM clinic_table t JOIN pg_attribute a ON a.attrelid = t.relation
    WHERE t.kind IN ('rows', 'settings', 'links') AND a.attnum > 0 AND NOT a.attisdropped AND a.attidentity = ''
        AND NOT EXISTS (SELECT FROM clinic_counter c WHERE c.adrelid = a.attrelid AND c.adnum = a.attnum)
    GROUP BY a.attrelid \gexec
SELECT format('GRANT USAGE ON SEQUENCE %s TO %I', counter, :'desk') FROM clinic_counter \gexec

COMMIT;
