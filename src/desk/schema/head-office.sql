-- What the head office of a chain needs to look at its clinics: foreign tables over each clinic's server, and what they sold,
-- took and have, a row a day. The sums are made at the clinics; only they come over.
--
--   psql -v desk=head_desk -f head-office.sql 'postgresql://postgres@localhost/head_office'
--
-- Run it as a superuser in a database of PostgreSQL 15 or later that desk --make has made, and again after an update; clinics
-- that are known stay known. Then each clinic once, with a role of its own there that may read the five tables:
--
--   SELECT chain.add_clinic('강남점', 'gangnam.chain.example', 5432, 'clinic', 'chain_reader', 'its password');
--   SELECT chain.drop_clinic('강남점');
--
-- The role `desk` may ask chain.trade and chain.stock, which is what the report does; passwords are shown to it nowhere.

\set ON_ERROR_STOP on
\if :{?desk}
\else
    \set desk clinic_desk
\endif

BEGIN;
SET LOCAL client_min_messages = warning;

CREATE EXTENSION IF NOT EXISTS postgres_fdw;
CREATE SCHEMA IF NOT EXISTS chain;
CREATE TABLE IF NOT EXISTS chain.clinic (
    number integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    name text NOT NULL UNIQUE
);

-- As its owner, as all that asks the clinics: one role alone holds the ways to them. A clinic that does not answer is given up after two seconds, or three where its server answers and then goes silent.
CREATE OR REPLACE FUNCTION chain.add_clinic(name text, host text, port integer, dbname text, role text,
                                            password text DEFAULT NULL, sslmode text DEFAULT 'verify-full',
                                            schema text DEFAULT 'public')
RETURNS integer LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $body$
DECLARE
    number integer;
    place text;
    definition text[];
BEGIN
    INSERT INTO chain.clinic (name) VALUES (add_clinic.name) RETURNING clinic.number INTO number;
    place := 'chain_' || number;
    EXECUTE format('CREATE SERVER %I FOREIGN DATA WRAPPER postgres_fdw OPTIONS (host %L, port %L, dbname %L, '
                   'sslmode %L, connect_timeout ''2'', tcp_user_timeout ''3000'', keepalives_idle ''1'', '
                   'keepalives_interval ''1'', '
                   'keepalives_count ''2'', fetch_size ''10000'', application_name ''head office'')',
                   place, host, port::text, dbname, sslmode);
    EXECUTE format('CREATE USER MAPPING FOR CURRENT_USER SERVER %I OPTIONS (user %L%s)', place, role,
                   CASE WHEN password IS NULL THEN '' ELSE format(', password %L', password) END);
    EXECUTE format('CREATE SCHEMA %I', place);
    FOREACH definition SLICE 1 IN ARRAY ARRAY[
        ['tpsordermaster', 'ordm_pk integer, ordm_date date, ordm_misugum numeric'],
        ['tpsorderdetail', 'ordm_pk integer, pm_pk integer, ordd_unitprice numeric, ordd_halinunit numeric, '
                           'ordd_count smallint'],
        ['tpstransaction', 'tpstrans_date date, tpstrans_operator smallint, tpstrans_money integer, tpstrans_method text'],
        ['tpsproductmaster', 'pm_pk integer, pm_name text'],
        ['tpsincoming', 'pm_pk integer, in_date date, in_count double precision, in_unitprice numeric']] LOOP
        EXECUTE format('CREATE FOREIGN TABLE %I.%I (%s) SERVER %I OPTIONS (schema_name %L)', place, definition[1],
                       definition[2], place, schema);
    END LOOP;
    PERFORM chain.make_views(place);
    RETURN number;
END
$body$;

CREATE OR REPLACE FUNCTION chain.drop_clinic(name text) RETURNS void LANGUAGE plpgsql SECURITY DEFINER
SET search_path = pg_catalog, pg_temp AS $body$
DECLARE
    gone integer;
BEGIN
    DELETE FROM chain.clinic WHERE clinic.name = drop_clinic.name RETURNING number INTO gone;
    IF gone IS NULL THEN
        RAISE EXCEPTION 'no such clinic: %', name;
    END IF;
    EXECUTE format('DROP SCHEMA %I CASCADE', 'chain_' || gone);
    EXECUTE format('DROP SERVER %I CASCADE', 'chain_' || gone);
END
$body$;

-- Every sum is one that the clinic's server can make: FILTER, no COALESCE. An empty sum is NULL, which is 0 to who reads.
CREATE OR REPLACE FUNCTION chain.make_views(place text) RETURNS void LANGUAGE plpgsql
SET search_path = pg_catalog, pg_temp AS $body$
DECLARE
    definition text[];
BEGIN
    FOREACH definition SLICE 1 IN ARRAY ARRAY[
        -- Orders of the day and what they still owe.
        ['orders_day', 'SELECT ordm_date AS day, count(*) AS orders, sum(ordm_misugum) AS outstanding
            FROM %1$I.tpsordermaster GROUP BY ordm_date'],
        -- Their lines: what was sold, the discount on it, and what came back, less the discount that it was sold with.
        ['sales_day', 'SELECT o.ordm_date AS day,
                sum(d.ordd_unitprice * d.ordd_count) FILTER (WHERE d.ordd_count > 0) AS sold,
                sum(d.ordd_halinunit * d.ordd_count) FILTER (WHERE d.ordd_count > 0) AS discount,
                sum(d.ordd_unitprice * d.ordd_count) FILTER (WHERE d.ordd_count < 0) AS returned,
                sum(d.ordd_halinunit * d.ordd_count) FILTER (WHERE d.ordd_count < 0) AS returned_discount
            FROM %1$I.tpsordermaster o JOIN %1$I.tpsorderdetail d ON d.ordm_pk = o.ordm_pk GROUP BY o.ordm_date'],
        -- Money of the day, whenever its order was. The last sign of the method tells the medium.
        ['money_day', 'SELECT tpstrans_date AS day,
                sum(tpstrans_money) FILTER (WHERE tpstrans_operator = 3) AS taken,
                sum(tpstrans_money) FILTER (WHERE tpstrans_operator = 3 AND "right"(tpstrans_method, 1) = ''1'') AS card,
                sum(tpstrans_money) FILTER (WHERE tpstrans_operator = 3 AND "right"(tpstrans_method, 1) = ''2'') AS bank,
                sum(tpstrans_money) FILTER (WHERE tpstrans_operator = 4) AS refunded,
                sum(tpstrans_money) FILTER (WHERE tpstrans_operator = 2) AS discounts,
                sum(tpstrans_money) FILTER (WHERE tpstrans_operator = 1) AS cuts
            FROM %1$I.tpstransaction GROUP BY tpstrans_date'],
        -- Pieces bought and gone by product, and the price of a piece at the last purchase; the highest where a day saw several.
        ['bought', 'SELECT pm_pk, sum(in_count) AS pieces,
                (array_agg(in_unitprice ORDER BY in_date DESC NULLS LAST, in_unitprice DESC NULLS LAST))[1] AS price
            FROM %1$I.tpsincoming GROUP BY pm_pk'],
        ['gone', 'SELECT pm_pk, sum(ordd_count) AS pieces FROM %1$I.tpsorderdetail GROUP BY pm_pk'],
        ['products', 'SELECT pm_pk FROM %1$I.tpsproductmaster'],
        ['stock', 'SELECT p.pm_pk, coalesce(b.pieces, 0)::numeric - coalesce(g.pieces, 0) AS pieces, b.price
            FROM %1$I.products p LEFT JOIN %1$I.bought b ON b.pm_pk = p.pm_pk LEFT JOIN %1$I.gone g ON g.pm_pk = p.pm_pk']]
    LOOP
        EXECUTE format('CREATE OR REPLACE VIEW %I.%I AS ' || format(definition[2], place), place, definition[1]);
    END LOOP;
END
$body$;

-- One row of a clinic's day has one kind of figures only; `trouble` tells why a clinic has no rows.
DO $body$ BEGIN
    IF to_regtype('chain.trade_row') IS NULL THEN
        CREATE TYPE chain.trade_row AS (
            clinic integer, day date, orders numeric, outstanding numeric, sold numeric, discount numeric,
            returned numeric, returned_discount numeric, taken numeric, card numeric, bank numeric, refunded numeric,
            discounts numeric, cuts numeric, trouble text);
        CREATE TYPE chain.stock_row AS (clinic integer, products numeric, pieces numeric, worth numeric, short numeric,
                                        trouble text);
    END IF;
END $body$;

-- A clinic that could not be reached is not asked again by this session for half a minute, so that it is waited for once.
CREATE OR REPLACE FUNCTION chain.is_away(number integer) RETURNS boolean LANGUAGE sql
SET search_path = pg_catalog, pg_temp AS $body$
    SELECT coalesce(nullif(current_setting('chain.away_' || number, true), '')::timestamptz
                    BETWEEN clock_timestamp() - interval '30 seconds' AND clock_timestamp(), false)
$body$;
CREATE OR REPLACE FUNCTION chain.note_away(number integer) RETURNS void LANGUAGE sql
SET search_path = pg_catalog, pg_temp AS $body$
    SELECT set_config('chain.away_' || number, clock_timestamp()::text, false)
$body$;

-- A statement that this server gives up ends the report; one that the clinic's gives up is that clinic's trouble.
CREATE OR REPLACE FUNCTION chain.is_ours(state text, whence text) RETURNS boolean LANGUAGE sql
SET search_path = pg_catalog, pg_temp AS $body$
    SELECT state = '57014' AND whence NOT LIKE '%remote SQL command%'
$body$;

CREATE OR REPLACE FUNCTION chain.trade(first_clinic integer, last_clinic integer, first_day date, last_day date)
RETURNS SETOF chain.trade_row LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $body$
DECLARE
    known integer;
    found chain.trade_row[];
    whence text;
BEGIN
    FOR known IN SELECT number FROM chain.clinic WHERE number BETWEEN first_clinic AND last_clinic ORDER BY number LOOP
        BEGIN
            IF chain.is_away(known) THEN
                RAISE EXCEPTION 'away' USING ERRCODE = '08001';
            END IF;
            EXECUTE format($query$SELECT array_agg(r::chain.trade_row) FROM (
                SELECT %2$s, day, orders::numeric, outstanding, NULL::numeric, NULL::numeric, NULL::numeric, NULL::numeric,
                    NULL::numeric, NULL::numeric, NULL::numeric, NULL::numeric, NULL::numeric, NULL::numeric, NULL::text
                FROM %1$I.orders_day WHERE day BETWEEN $1 AND $2
                UNION ALL SELECT %2$s, day, NULL, NULL, sold, discount, returned, returned_discount,
                    NULL, NULL, NULL, NULL, NULL, NULL, NULL FROM %1$I.sales_day WHERE day BETWEEN $1 AND $2
                UNION ALL SELECT %2$s, day, NULL, NULL, NULL, NULL, NULL, NULL, taken, card, bank, refunded, discounts,
                    cuts, NULL FROM %1$I.money_day WHERE day BETWEEN $1 AND $2) AS r$query$, 'chain_' || known, known)
                INTO found USING first_day, last_day;
            RETURN QUERY SELECT * FROM unnest(found);
        EXCEPTION WHEN OTHERS OR query_canceled THEN
            GET STACKED DIAGNOSTICS whence = PG_EXCEPTION_CONTEXT;
            IF chain.is_ours(SQLSTATE, whence) THEN
                RAISE;
            END IF;
            IF SQLSTATE LIKE '08%' AND NOT chain.is_away(known) THEN
                PERFORM chain.note_away(known);
            END IF;
            RETURN NEXT ROW(known, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
                            SQLSTATE || ' ' || SQLERRM)::chain.trade_row;
        END;
    END LOOP;
END
$body$;

-- As the shelves are now: pieces and what they cost at the last purchase, and products of which less than nothing is left.
CREATE OR REPLACE FUNCTION chain.stock(first_clinic integer, last_clinic integer)
RETURNS SETOF chain.stock_row LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $body$
DECLARE
    known integer;
    found chain.stock_row;
    whence text;
BEGIN
    FOR known IN SELECT number FROM chain.clinic WHERE number BETWEEN first_clinic AND last_clinic ORDER BY number LOOP
        BEGIN
            IF chain.is_away(known) THEN
                RAISE EXCEPTION 'away' USING ERRCODE = '08001';
            END IF;
            EXECUTE format('SELECT %2$s, count(*) FILTER (WHERE pieces > 0), sum(pieces) FILTER (WHERE pieces > 0), '
                           'sum(trunc(pieces) * price) FILTER (WHERE pieces > 0), count(*) FILTER (WHERE pieces < 0), NULL '
                           'FROM %1$I.stock', 'chain_' || known, known) INTO found;
            RETURN NEXT found;
        EXCEPTION WHEN OTHERS OR query_canceled THEN
            GET STACKED DIAGNOSTICS whence = PG_EXCEPTION_CONTEXT;
            IF chain.is_ours(SQLSTATE, whence) THEN
                RAISE;
            END IF;
            IF SQLSTATE LIKE '08%' AND NOT chain.is_away(known) THEN
                PERFORM chain.note_away(known);
            END IF;
            RETURN NEXT ROW(known, NULL, NULL, NULL, NULL, SQLSTATE || ' ' || SQLERRM)::chain.stock_row;
        END;
    END LOOP;
END
$body$;

-- Clinics that were added before an update get the views of this one.
DO $body$ BEGIN PERFORM chain.make_views('chain_' || number) FROM chain.clinic; END $body$;

REVOKE ALL ON SCHEMA chain FROM PUBLIC;
REVOKE ALL ON ALL FUNCTIONS IN SCHEMA chain FROM PUBLIC;
SELECT format('GRANT USAGE ON SCHEMA chain TO %1$I; GRANT SELECT ON chain.clinic TO %1$I; '
              'GRANT EXECUTE ON FUNCTION chain.trade(integer, integer, date, date), chain.stock(integer, integer) TO %1$I',
              :'desk')
    WHERE EXISTS (SELECT FROM pg_roles WHERE rolname = :'desk') \gexec

COMMIT;
