-- The role that the desks of a clinic log in with: it may read and write the rows that a desk needs, and nothing else.
--
--   psql -v desk=clinic_desk -f desk-role.sql 'postgresql://postgres@server/clinic'
--
-- Run it as a superuser or as an owner of database and tables who may create roles, after the tables were made (desk --make)
-- and again after an update that makes new tables. The role gets no password here: give it one with \password clinic_desk.

\set ON_ERROR_STOP on
\if :{?desk}
\else
    \set desk clinic_desk
\endif

BEGIN;

-- A role that is there and was locked out (NOLOGIN) stays so.
SELECT format('CREATE ROLE %I LOGIN', :'desk') WHERE NOT EXISTS (SELECT FROM pg_roles WHERE rolname = :'desk') \gexec
ALTER ROLE :"desk" NOCREATEDB NOCREATEROLE NOINHERIT;

-- Nobody comes in by being anybody, and nobody makes tables, not even temporary ones, by being in.
SELECT format('REVOKE ALL ON DATABASE %I FROM PUBLIC, %I', current_database(), :'desk') \gexec
SELECT format('GRANT CONNECT ON DATABASE %I TO %I', current_database(), :'desk') \gexec
REVOKE ALL ON SCHEMA public FROM PUBLIC, :"desk";
GRANT USAGE ON SCHEMA public TO :"desk";

-- LIKE as the clinic's statements mean it.
REVOKE ALL ON SCHEMA clinic_like FROM PUBLIC, :"desk";
GRANT USAGE ON SCHEMA clinic_like TO :"desk";
GRANT EXECUTE ON ALL FUNCTIONS IN SCHEMA clinic_like TO :"desk";

-- New keys come from the tables' own sequences, which need no right of their own. A desk can write every column but those
-- keys: one that it made up would stand in the counter's way.
REVOKE ALL ON ALL TABLES IN SCHEMA public FROM PUBLIC, :"desk";
REVOKE ALL ON ALL SEQUENCES IN SCHEMA public FROM PUBLIC, :"desk";
GRANT SELECT, DELETE
    ON tPSProductMaster, tPSCompanyMaster, tPSIncoming, tPSOrderMaster, tPSOrderDetail, tPSTransaction TO :"desk";
GRANT SELECT ON tPSProperties, t_HospSetup TO :"desk";
SELECT format('GRANT INSERT (%1$s), UPDATE (%1$s) ON %2$s TO %3$I', string_agg(quote_ident(attname), ', '), attrelid::regclass,
              :'desk')
    FROM pg_attribute
    WHERE attrelid IN ('tPSProductMaster'::regclass, 'tPSCompanyMaster'::regclass, 'tPSIncoming'::regclass,
                       'tPSOrderMaster'::regclass, 'tPSOrderDetail'::regclass, 'tPSTransaction'::regclass,
                       'tPSProperties'::regclass, 't_HospSetup'::regclass)
        AND attnum > 0 AND NOT attisdropped AND attidentity = ''
    GROUP BY attrelid \gexec
GRANT SELECT ON Customer, Receipt TO :"desk";
-- The schema's version; a database of an earlier program has none yet.
SELECT format('GRANT SELECT ON t_DeskSchema TO %I', :'desk') WHERE to_regclass('t_deskschema') IS NOT NULL \gexec

-- What the desks did: the database itself writes it down, whatever the role.
SELECT format('GRANT SELECT ON t_DeskJournal TO %I', :'desk') WHERE to_regclass('t_deskjournal') IS NOT NULL \gexec

-- Large objects are files in the database that anybody could fill.
REVOKE EXECUTE ON FUNCTION lo_create(oid), lo_creat(integer), lo_from_bytea(oid, bytea) FROM PUBLIC;

COMMIT;
